#include "interaction/scene_selection.h"

#include "base/slots.h"
#include "store/accessors.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/walks.h"
#include "views/traversal.h"
#include "views/viewports.h"

void SelectScene(Branch* branch) {
    for (Branch* each : EveryBranch(Scene()))
        each->Selected = 0;
    if (branch) {
        branch->Selected = 1;
        for (Branch* each : EveryBranch(branch->FirstChild))
            each->Selected = 1;
    }
    if (Mergeing)
        return;
    SelectedBranch() = branch;
    NoSceneSelection = branch == nullptr;
    DirtyModelWindows();
    CallSlot(TheSceneSlots.DirtySceneBuilder);
}

int AnySceneSelected() {
    for (const Branch* branch : EveryBranch(Scene()))
        if (branch->Selected)
            return 1;
    return 0;
}
