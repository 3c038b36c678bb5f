#include "views/hooks.h"

#include "views/status_line.h"

ClickHook LeftCOGFunc, RightCOGFunc;
KeyHook COGKeyFunc;
ClickHook LeftGridFunc, MiddleGridFunc, RightGridFunc;
KeyHook GridKeyFunc;
ClickHook WorkAreaLeftFunc, WorkAreaRightFunc;
KeyHook WorkAreaKeyFunc;
ClickHook LeftClickFunc, RightClickFunc;
ConsumingClickHook MiddleClickFunc;
KeyHook KeyCheckFunc;

void DummyClickFunc(View*) {}

int SystemBusy() {
    return LeftClickFunc || MiddleClickFunc || RightClickFunc || LeftGridFunc || MiddleGridFunc || RightGridFunc ||
           KeyCheckFunc || GridKeyFunc || StatusList || GridStatus;
}
