#include "shell/undo_remarks.h"

#include "store/accessors.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/undo.h"
#include "views/hooks.h"
#include "views/status_line.h"

#include <string>

namespace {

/// What the snapshot at hand takes back; "" for changes that no command began.
struct UndoneAction {
    std::string Name;
    bool Undone = false;
};

UndoneAction OfObject, OfScene;
std::string Current;
bool CarryingOut;

/// A change made from a window of its own belongs to no command.
UndoneAction ActionAtHand() {
    return {CarryingOut || SystemBusy() ? Current : "", false};
}

void Remark(UndoneAction& action, bool possible) {
    if (!possible) {
        ShowRemark("There is nothing to undo.");
        return;
    }
    action.Undone = !action.Undone;
    const std::string what = action.Name.empty() ? "the last change" : "\"" + action.Name + "\"";
    ShowRemark(action.Undone ? "Undone: " + what + ".  Undo once more does it again." : "Done again: " + what + ".");
}

} // namespace

void BeginAction(const char* name) {
    Current = name;
    CarryingOut = true;
}

void EndAction() {
    CarryingOut = false;
}

void NoteObjectSnapshot() {
    OfObject = ActionAtHand();
}

void NoteSceneSnapshot() {
    OfScene = ActionAtHand();
}

void UndoObjectAction() {
    const bool possible = CurrentObject()->UndoCopy != nullptr;
    Undo();
    Remark(OfObject, possible);
}

void UndoSceneAction() {
    const bool possible = SceneUndo != nullptr;
    UndoScene();
    Remark(OfScene, possible);
}
