#pragma once

struct View;

// What a running tool takes over in the model views. Every slot is null while nobody wants it; a tool fills those that
// it needs and ClearControl empties them. Clicks are offered down the chain: picking a centre of rotation, the tools of
// the grid, setting the work area, the modelling tool, and last what a view does by itself. The view is that of the
// viewport concerned; tool bars pass null.

using ClickHook = void (*)(View* view);
/// Non-zero when the press was used.
using ConsumingClickHook = int (*)(View* view);
using KeyHook = void (*)(View* view, int character);

extern ClickHook LeftCOGFunc, RightCOGFunc;
extern KeyHook COGKeyFunc;

extern ClickHook LeftGridFunc, MiddleGridFunc, RightGridFunc;
extern KeyHook GridKeyFunc;

extern ClickHook WorkAreaLeftFunc, WorkAreaRightFunc;
extern KeyHook WorkAreaKeyFunc;

extern ClickHook LeftClickFunc, RightClickFunc;
extern ConsumingClickHook MiddleClickFunc;
extern KeyHook KeyCheckFunc;

/// A handler that swallows its button.
void DummyClickFunc(View* view);

/// 1 while a tool has a hook of the grid or of the modelling tools, or shows its status.
int SystemBusy();
