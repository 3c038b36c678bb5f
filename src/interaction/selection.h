#pragma once

#include "interaction/quad_strips.h"
#include "interaction/scene_selection.h"
#include "interaction/selection_sets.h"
#include "store/records.h"

// Selecting in the model views. What is under the pointer is what the views' traversal shows there.

/// What a selection looks for.
enum SelectKind { SelectKindPolygons = 0, SelectKindVertices = 1, SelectKindScene = 2 };

/// Flags, preferences: selections of polygons keep to the current material, to the current texture.
extern int MaskPolygonSelections, MaskTextureSelections;

/// The branch under the last pick of a scene object, and its transform.
extern Branch* ClickedBranch;
extern Matrixf ClickedBranchMatrix;

/// The left button's action in a view: a click or a box, by the modifier keys.
void SelectThings(View* view, int kind);
/// SelectThings for vertices, clearing instead of setting.
void DeselectVertices(View* view);

/// The vertex nearest to the pointer, within 10 pixels; in scene mode a scratch record that holds its place. Null when
/// there is none.
Vertex* SelectSingleVertex(View* view);
/// The polygon under the pointer, or null.
Polygon* SelectSinglePolygon(View* view);
/// The placed object under the pointer, with ClickedBranch, or null.
Object* SelectSingleObject(View* view);
/// The polygon of a placed object under the pointer, in scene space, or null. It stays until FreeSceneSelectPoly.
WorkPoly* SelectScenePolygon(View* view);
void FreeSceneSelectPoly();

/// Sets the polygon's Mark to 1 when it shows its back (or nothing) in this view, else to 0.
void BackfaceCheck(View* view, Polygon* polygon);
