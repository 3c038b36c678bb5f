#include "tools/sweep_surface.h"

#include "geometry/axes.h"
#include "geometry/vectors.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/work_polygons.h"
#include "tools/sweep.h"

#include <cmath>
#include <cstring>
#include <functional>

namespace {

constexpr double CosineOf85 = 0.087155742747658166;

void FacetNormal(Sweep& sweep, int row, int column) {
    const double* corners[4];
    CornersOf(sweep, row, column, corners);
    double normal[3] = {};
    for (int corner = 0; corner < 4; ++corner)
        AddNewellEdge(corners[corner], corners[(corner + 1) % 4], normal);
    Normalise(normal);
    for (int axis = 0; axis < 3; ++axis)
        CellOf(sweep, row, column).Normal[axis] = static_cast<float>(sweep.InsideOut ? -normal[axis] : normal[axis]);
}

/// The curve turns by more than 85 degrees at one of its points.
bool TurnsSharply(const std::vector<FlatPoint>& points, int k) {
    double before[3], after[3];
    for (int axis = 0; axis < 3; ++axis) {
        before[axis] = points[k][axis] - points[k - 1][axis];
        after[axis] = points[k + 1][axis] - points[k][axis];
    }
    return Dot(before, after) < CosineOf85 * LengthOfVector(before) * LengthOfVector(after);
}

void MarkCreases(Sweep& sweep) {
    for (int row = 1; row <= RowsOf(sweep) + 1; ++row)
        if (TurnsSharply(sweep.ProfilePoints, row))
            for (int column = 1; column <= ColumnsOf(sweep); ++column)
                CellOf(sweep, row, column).Crease |= ProfileCrease;
    for (int column = 1; column <= ColumnsOf(sweep) + 1; ++column)
        if (TurnsSharply(sweep.PathPoints, column))
            for (int row = 1; row <= RowsOf(sweep); ++row)
                CellOf(sweep, row, column).Crease |= PathCrease;
}

/// Sums the facet normals round each corner, as far as there is no crease between.
class CornerNormals {
  public:
    explicit CornerNormals(Sweep& sweep) : Swept(sweep), Rows(RowsOf(sweep)), Columns(ColumnsOf(sweep)) {}

    void Make() {
        for (int row = 1; row <= Rows; ++row)
            for (int column = 1; column <= Columns; ++column)
                for (int corner = 0; corner < 4; ++corner) {
                    const bool nextRow = corner == NextStartCorner || corner == NextEndCorner;
                    const bool nextColumn = corner == NextEndCorner || corner == EndCorner;
                    MakeCorner(row, column, nextRow, nextColumn, CellOf(Swept, row, column).Corners[corner]);
                }
    }

  private:
    void MakeCorner(int row, int column, bool nextRow, bool nextColumn, float* normal) {
        const int otherRow = Beyond(row, nextRow, Rows, Swept.Profile.Closed != 0);
        const int otherColumn = Beyond(column, nextColumn, Columns, PathIsClosed(Swept));
        const bool acrossRow = otherRow && !(CellOf(Swept, row + nextRow, 1).Crease & ProfileCrease);
        const bool acrossColumn = otherColumn && !(CellOf(Swept, 1, column + nextColumn).Crease & PathCrease);
        Add(row, column, normal);
        if (acrossRow)
            Add(otherRow, column, normal);
        if (acrossColumn)
            Add(row, otherColumn, normal);
        if (acrossRow && acrossColumn)
            Add(otherRow, otherColumn, normal);
        Normalisef(normal);
    }

    /// The row or column on the other side; 0: there is none.
    static int Beyond(int place, bool next, int last, bool closed) {
        const int other = next ? place + 1 : place - 1;
        if (other >= 1 && other <= last)
            return other;
        if (!closed)
            return 0;
        return other < 1 ? last : 1;
    }

    void Add(int row, int column, float* sum) const {
        for (int axis = 0; axis < 3; ++axis)
            sum[axis] += CellOf(Swept, row, column).Normal[axis];
    }

    Sweep& Swept;
    const int Rows, Columns;
};

double EdgeLength(const std::vector<FlatPoint>& points, int k) {
    return DistanceBetweenCoords(points[k - 1].data(), points[k].data());
}

/// Texture coordinates of a length of the profile.
double TextureScale(const Sweep& sweep) {
    double length = 0;
    for (int row = 2; row <= RowsOf(sweep) + 1; ++row)
        length += EdgeLength(sweep.ProfilePoints, row);
    return length > 0 ? sweep.Repeat / length : 0;
}

class CapMaker {
  public:
    explicit CapMaker(Sweep& sweep) : Swept(sweep), Scale(SweepIsTextured(sweep) ? TextureScale(sweep) : 0) {}

    /// The profile where the path ends.
    void AddEnd(bool last) {
        WorkPoly* cap = NewWorkPoly();
        const int rows = RowsOf(Swept), column = last ? ColumnsOf(Swept) : 1;
        for (int row = 1; row <= rows + (Swept.Profile.Closed ? 0 : 1); ++row) {
            const SweepCell& cell = CellOf(Swept, row, column);
            WorkPolyBead* bead = AddToWorkPoly(cap, last ? cell.End : cell.Start);
            for (const int axis : {0, 1})
                bead->TexCoord[axis] = static_cast<float>(Swept.ProfilePoints[row][axis] * Scale);
        }
        Finish(cap, last == (Swept.InsideOut != 0));
    }

    /// The way of an end of the profile.
    void AddRing(bool last) {
        WorkPoly* cap = NewWorkPoly();
        const int row = last ? RowsOf(Swept) + 1 : 1;
        for (int column = 1; column <= ColumnsOf(Swept); ++column)
            AddToWorkPoly(cap, CellOf(Swept, row, column).Start);
        if (CalcWorkPolyNormal(cap)) {
            double normal[3];
            for (int axis = 0; axis < 3; ++axis)
                normal[axis] = cap->Normal[axis];
            Matrix turn;
            const int along = RotateToAxis(normal, turn);
            for (WorkPolyBead* bead = cap->FirstBead; bead; bead = bead->Next) {
                double turned[3];
                TransformCoordinate(bead->Position, turn, turned);
                bead->TexCoord[0] = static_cast<float>(turned[along == 0 ? 1 : 0] * Scale);
                bead->TexCoord[1] = static_cast<float>(turned[along == 2 ? 1 : 2] * Scale);
            }
        }
        Finish(cap, last != (Swept.InsideOut != 0));
    }

  private:
    void Finish(WorkPoly* cap, bool reversed) {
        if (!CalcWorkPolyNormal(cap)) {
            FreeWorkPoly(cap);
            return;
        }
        if (reversed)
            ReverseWorkPoly(cap);
        MakeWorkPolyConvex(cap);
        Swept.PolygonCount += PolysInWorkPoly(cap);
        cap->Next = Swept.Caps;
        if (Swept.Caps)
            Swept.Caps->Prev = cap;
        Swept.Caps = cap;
    }

    Sweep& Swept;
    const double Scale;
};

} // namespace

void SweepNormals(Sweep& sweep) {
    for (int row = 1; row <= RowsOf(sweep); ++row)
        for (int column = 1; column <= ColumnsOf(sweep); ++column)
            FacetNormal(sweep, row, column);
    MarkCreases(sweep);
    if (CurrentLighting == LightingSmooth)
        CornerNormals(sweep).Make();
}

void SweepTexture(Sweep& sweep) {
    const double scale = TextureScale(sweep), pathScale = scale / sweep.Stretch;
    std::vector<float> along = {0, 0};
    double walked = 0;
    for (int column = 2; column <= ColumnsOf(sweep) + 1; ++column)
        along.push_back(static_cast<float>((walked += EdgeLength(sweep.PathPoints, column)) * pathScale));
    walked = 0;
    for (int row = 1; row <= RowsOf(sweep) + 1; ++row) {
        if (row > 1)
            walked += EdgeLength(sweep.ProfilePoints, row);
        const auto across = static_cast<float>(walked * scale);
        for (int column = 1; column <= ColumnsOf(sweep) + 1; ++column) {
            SweepCell& cell = CellOf(sweep, row, column);
            cell.U = sweep.Sideways ? along[column] : across;
            cell.V = sweep.Sideways ? -across : along[column];
        }
    }
}

void TextureAtCorner(const Sweep& sweep, int row, int column, int corner, float* coordinates) {
    const SweepCell& cell = CellOf(sweep, row + (corner == NextStartCorner || corner == NextEndCorner),
                                   column + (corner == NextEndCorner || corner == EndCorner));
    coordinates[0] = cell.U;
    coordinates[1] = cell.V;
}

void SweepCaps(Sweep& sweep) {
    CapMaker maker(sweep);
    if (!PathIsClosed(sweep)) {
        maker.AddEnd(false);
        maker.AddEnd(true);
    } else if (sweep.Planar && !sweep.Profile.Closed) {
        maker.AddRing(false);
        maker.AddRing(true);
    }
}
