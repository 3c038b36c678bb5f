#pragma once

#include "store/records.h"
#include "store/walks.h"

#include <unordered_set>

// What a view shows. One traversal of the scene or of the current object decides which objects, levels, sub-objects,
// polygons and vertices are seen; what happens to them - they are drawn, picked, counted - is the business of the sink
// that it is given.

/// Flag: nothing in the scene is selected.
extern int NoSceneSelection;
/// Flag: the structure editor is open, whose choice of sub-objects counts in object mode while HideSubObjects is set.
extern int StructureEditorIsOpen;

// Of the object that the sink has:
/// Object-to-eye transform.
extern Matrixf BackfaceMatrix;
/// The branch that places it, null in object mode.
extern Branch* BranchBeingChecked;
/// Flag: the scene is being traversed for the 3D view.
extern int BackfaceWireFrame;

/// How an object is shown.
enum ShownMode { ShownSolid = 0, ShownWire = 1, ShownBox = 2, ShownMarkersOnly = 3 };

/// One object as a view shows it.
struct ShownObject {
    ::Object* Object; // current while the sink has it, and cleaned up
    ::Branch* Branch; // which places it; null in object mode
    ::View* View;
    int Mode;         // a ShownMode
    ::Lod* Lod;       // the level that is seen; null in object mode while none is selected: only vertices are seen
    Matrix Placement; // from model to scene space: the branch's transform, for a billboard with its turn to the eye; in
                      // object mode the identity
    Matrix ToEye;     // from model to eye space
};

/// What becomes of the objects that a view shows.
class TraversalSink {
  public:
    /// What the sink wants: Drawing has the modes of drawing; for the others every object is solid or, for vertices,
    /// nothing but its vertices.
    enum Purpose { Drawing, Polygons, Vertices };

    explicit TraversalSink(Purpose purpose) : Wants(purpose) {}

    virtual ~TraversalSink() = default;

    /// Called with each object, in the sequence of drawing. A selected placed object may come a second time, as a box.
    virtual void TakeObject(const ShownObject& shown) = 0;

    const Purpose Wants;
};

/// Passes to the sink what the view shows: the placed objects in scene mode, else the current object. The view has been
/// set up (SetUpView). The current object is as before afterwards.
void TraverseView(View* view, TraversalSink& sink);
/// The two halves of it. `mode` as drawing starts with; object mode adapts it to the selection.
void TraverseScene(View* view, TraversalSink& sink);
void TraverseObject(View* view, int mode, TraversalSink& sink);
/// One object, the current one, in the mode given; placed by the branch, which may be null.
void TraverseSingleObject(View* view, int mode, Branch* branch, const Matrix* transform, TraversalSink& sink);

/// 0 for a member that the structure editor hides.
int LodBeadIsShown(const LodBead* bead);

/// Calls function(SubObject*) with each sub-object that is seen, in the sequence of drawing; once, however often the
/// level of detail names it.
template <class Function>
void ForEachShownSubObject(const ShownObject& shown, Function function) {
    std::unordered_set<const SubObject*> seen;
    if (shown.Lod)
        for (const LodBead* bead : EveryLodBead(shown.Lod))
            if (LodBeadIsShown(bead) && seen.insert(bead->SubObject).second)
                function(bead->SubObject);
}

/// Calls function(Polygon*) with each polygon of a sub-object, each before its sub-polygons.
template <class Function>
void ForEachPolygonOf(const SubObject* subObject, Function function) {
    for (Polygon* polygon : EveryTopPolygon(subObject)) {
        function(polygon);
        for (Polygon* subPolygon : EverySubPolygon(polygon))
            function(subPolygon);
    }
}

/// Calls function(Polygon*) with each polygon that is seen.
template <class Function>
void ForEachShownPolygon(const ShownObject& shown, Function function) {
    ForEachShownSubObject(shown, [&](const SubObject* subObject) { ForEachPolygonOf(subObject, function); });
}

/// Sets Visible of the current object's sub-objects: 1 for the members of the selected level of detail that are shown.
void FlagVisibleSubObjects();
/// The same for a level (null: none) of the current object.
void FlagVisibleSubObjects(const Lod* lod);

/// 1 when a polygon of a sub-object flagged visible uses the vertex, or none at all. Needs valid connections.
inline int VertexIsShown(const Vertex* vertex) {
    if (!vertex->Uses)
        return 1;
    for (const PolygonBead* bead : EveryUse(vertex))
        if (bead->Polygon->SubObject->Visible)
            return 1;
    return 0;
}

/// Whether markers that stand for vertices are seen: not beyond the work area, nor behind the grid while HidingVertices
/// is set.
class VertexSight {
  public:
    explicit VertexSight(const ShownObject& shown);

    /// True when every vertex is seen.
    bool Unlimited() const { return !Area && !Side; }

    bool Sees(const Vertex* vertex) const;

  private:
    Matrix Placement, Marker; // to scene space, to where the marker is drawn (eye space)
    bool Area;
    double Plane[4]; // of the grid, eye space
    int Side;        // on which vertices are seen: 1 or -1; 0 both
};

/// From model to eye space for markers of the object, slightly before the surfaces that they mark.
void MarkerMatrix(const View* view, const Matrix& toEye, Matrix& out);

/// Calls function(Vertex*) with each vertex that a selection may find: those of visible sub-objects and the loose ones,
/// as far as they are seen.
template <class Function>
void ForEachShownVertex(const ShownObject& shown, Function function) {
    const VertexSight sight(shown);
    FlagVisibleSubObjects(shown.Lod);
    for (Vertex* vertex : EveryVertex(shown.Object))
        if (VertexIsShown(vertex) && (sight.Unlimited() || sight.Sees(vertex)))
            function(vertex);
}
