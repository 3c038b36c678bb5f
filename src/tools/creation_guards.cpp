#include "tools/creation_guards.h"

#include "base/slots.h"
#include "gooey/messages.h"
#include "store/accessors.h"
#include "store/structure_editing.h"
#include "store/undo.h"
#include "views/viewports.h"

namespace {

constexpr int LodIsEmpty = 195;

} // namespace

int PolygonCreationAllowed() {
    if (!SelectedLod())
        SelectedLod() = FirstLod();
    if (!SelectedLod()->FirstBead) {
        TellUser(LodIsEmpty);
        return 0;
    }
    const SubObject* former = SelectedSubObject();
    SelectLod(SelectedLod());
    if (SelectedSubObject() == former)
        return 1;
    DirtyModelWindows();
    CallSlot(TheUndoSlots.DirtyStructureEditor);
    return 1;
}
