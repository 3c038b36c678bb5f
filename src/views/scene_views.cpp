#include "views/scene_views.h"

#include "store/accessors.h"

View SceneView[ViewportLimit];
View DefaultScene3D;
View DefaultScene2D[DefaultView2DCount];
WorkAreaRecord SceneWorkArea;
std::int32_t SceneGridIndex = 1;
std::int32_t SceneGridSteps = 1;

namespace {

void Devalidate(View (&views)[ViewportLimit], View& default3D, View (&defaults2D)[DefaultView2DCount]) {
    for (View& view : views)
        view.Valid = 0;
    default3D.Valid = 0;
    for (View& view : defaults2D)
        view.Valid = 0;
}

} // namespace

void DevalidateSceneViews() {
    Devalidate(SceneView, DefaultScene3D, DefaultScene2D);
    SceneWorkArea.Valid = 0;
}

void DevalidateObjectViews() {
    Object* object = CurrentObject();
    Devalidate(object->View, object->DefaultObject3D, object->DefaultObject2D);
}
