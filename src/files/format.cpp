#include "files/format.h"

#include "store/accessors.h"
#include "views/scene_views.h"

View* ViewPlace(int identifier) {
    const auto within = [identifier](int first, int count) {
        return identifier >= first && identifier - first < count;
    };
    if (identifier == ViewDefaultObject3D)
        return &DefaultObject3D();
    if (identifier == ViewDefaultScene3D)
        return &DefaultScene3D;
    if (within(ViewDefaultObject2D, DefaultView2DCount))
        return &DefaultObject2D(identifier - ViewDefaultObject2D);
    if (within(ViewObject, ViewportLimit))
        return &ObjectView(identifier - ViewObject);
    if (within(ViewDefaultScene2D, DefaultView2DCount))
        return &DefaultScene2D[identifier - ViewDefaultScene2D];
    if (within(ViewScene, ViewportLimit))
        return &SceneView[identifier - ViewScene];
    return nullptr;
}
