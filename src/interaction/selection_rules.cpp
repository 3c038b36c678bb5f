#include "interaction/selection_rules.h"

#include "gooey/event_loop.h"
#include "interaction/selection.h"
#include "store/accessors.h"
#include "store/walks.h"
#include "views/display_flags.h"

namespace {

/// The material that the polygon is shown in.
const Material* ShownMaterial(const Polygon* polygon) {
    return polygon->Texture && TextureOn ? polygon->TextureMaterial : polygon->Material;
}

} // namespace

int AnyModifierHeld() {
    return LeftShift || RightShift || LeftCtrl || RightCtrl || LeftAlt || RightAlt;
}

int ShiftAndCtrlHeld() {
    return (LeftShift && LeftCtrl) || (RightShift && RightCtrl);
}

int SelectionByModifiers(int selected) {
    if (LeftShift || RightShift)
        return !selected;
    return !(LeftAlt || RightAlt);
}

void ApplyPolygonRule(Polygon* polygon) {
    if (MaskPolygonSelections && ShownMaterial(polygon) != CurrentMaterial())
        return;
    if (MaskTextureSelections && polygon->Texture != CurrentTexture())
        return;
    SetPolygonSelected(CurrentObject(), polygon, SelectionByModifiers(polygon->Selected));
}

void ApplyVertexRule(Vertex* vertex) {
    SetVertexSelected(CurrentObject(), vertex, SelectionByModifiers(vertex->Selected));
}

void ApplyBranchRule(Branch* branch) {
    if (branch->Copied)
        return;
    branch->Copied = 1;
    branch->Selected = SelectionByModifiers(branch->Selected);
}

void ClearAllSceneFlags() {
    for (Branch* branch : EveryBranch(Scene()))
        branch->Copied = 0;
}
