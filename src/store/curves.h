#pragma once

// Curves that the user edits: lists of control points with a basis and a smoothness. Lengths are in whatever unit the
// owner's points have.

/// A control point. Owned by its list.
struct Ebead {
    Ebead* Prev;
    Ebead* Next;
    double Position[3];
    double Screen[2]; // where it appeared when it was last looked for in a view, pixels
    double OffScreen; // -1 when it did not, else 0
    int CurvePoint;   // flag: approached smoothly, rather than a corner
};

enum CurveBasis { BSpline = 0, MSpline = 1 };

enum CurveSmoothness { LowSmoothness = 0, NormalSmoothness = 1, HighSmoothness = 2 };

/// A curve. While it has control points, one of them is current.
struct Elist {
    Ebead* First = nullptr;
    Ebead* Current = nullptr;
    int Closed = 0;
    int Basis = BSpline;
    int Smoothness = NormalSmoothness;

    Elist() = default;
    ~Elist();
    Elist(const Elist&) = delete;
    Elist& operator=(const Elist&) = delete;
};

/// Removes all control points; how the curve is drawn stays.
void ResetElist(Elist& list);

/// A corner at a position, in no list.
Ebead* NewEbead(const double* position);
/// Each adds a new control point, which becomes current.
Ebead* PrependEbead(Elist& list, const double* position);
Ebead* AppendEbead(Elist& list, const double* position);
/// A bead that is not in the list is reported on the standard error stream, and nothing is added: null.
Ebead* InsertEbeadAfter(Elist& list, Ebead* bead, const double* position);

/// Deletes the current control point; the next one becomes current, else the one before. Nothing in an empty list.
void ElistDelete(Elist& list);

int ElistLength(const Elist& list);
/// Null in an empty list.
Ebead* LastElistBead(const Elist& list);

/// Calls function(position, whether it is the current one) with every control point in order.
template <class Function>
void ScanElist(const Elist& list, Function function) {
    for (const Ebead* bead = list.First; bead; bead = bead->Next)
        function(bead->Position, bead == list.Current);
}
