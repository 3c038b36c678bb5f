#include "shell/slots.h"

#include "files/file_slots.h"
#include "store/accessors.h"
#include "store/scene.h"
#include "store/storage.h"
#include "views/scene_views.h"

#include <gtest/gtest.h>

TEST(Slots, AResetLeavesNoSceneViewOfTheModelBefore) {
    FillSlots();
    SceneView[1].Valid = DefaultScene3D.Valid = DefaultScene2D[4].Valid = SceneWorkArea.Valid = 1;
    ResetStorage();
    EXPECT_EQ(SceneView[1].Valid, 0);
    EXPECT_EQ(DefaultScene3D.Valid, 0);
    EXPECT_EQ(DefaultScene2D[4].Valid, 0);
    EXPECT_EQ(SceneWorkArea.Valid, 0);
    TheSceneSlots = {};
    TheStorageSlots = {};
    TheFileSlots = {};
}
