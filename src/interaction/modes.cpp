#include "interaction/modes.h"

#include "interaction/grid_gizmo.h"
#include "interaction/selection_sets.h"
#include "store/storage.h"
#include "views/hooks.h"
#include "views/main_window.h"
#include "views/viewports.h"

int WorkMode;

void SetVertexMode() {
    if (WorkMode == 0) {
        SelectVerticesFromPolygons();
        DeselectAllPolygons();
    }
    WorkMode = EditMode = 1;
    DirtyModelWindows();
}

void SetPolygonMode() {
    if (WorkMode == 1) {
        SelectPolygonsFromVertices();
        DeselectAllVertices();
    }
    WorkMode = EditMode = 0;
    DirtyModelWindows();
}

void ChangeObjectIsolation() {
    if (SystemBusy())
        return;
    ObjectIsolated = !ObjectIsolated;
    DirtyModelWindows();
    DirtyGrid();
}
