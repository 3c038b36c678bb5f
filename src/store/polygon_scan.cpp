#include "store/polygon_scan.h"

#include "base/slots.h"
#include "store/objects.h"
#include "store/storage.h"

void FreeUndoCopies() {
    for (Object* object : EveryObject(*CurrentFile))
        if (object->UndoCopy) {
            FreeObject(object->UndoCopy);
            object->UndoCopy = nullptr;
        }
}

void DiscardHiddenPolygons() {
    FreeUndoCopies();
    CallSlot(TheStorageSlots.FreePolygonPaste);
}

void ScanEverySinglePolygonEver(void (*function)(Polygon*)) {
    ForEverySinglePolygonEver(function);
}
