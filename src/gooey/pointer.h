#pragma once

struct Window;

/// The pointer in pixels of the current window and of the screen, as of the last button event or ReadMousePos.
extern int MouseX, MouseY;
extern int MouseABSX, MouseABSY;

/// Reads where the pointer is now.
void ReadMousePos();

/// 1 when the pointer lies inside the box, its edges not included.
int MouseInBox(int x, int y, int width, int height);
/// 1 when the pointer is less than `radius` away from the point.
int MouseInCircle(double x, double y, double radius);

/// Places the next window so that it is centred on the pointer and within the screen. It cannot be resized.
void WindowAroundMouse(int width, int height);

/// Keeps the pointer within the window, except while the left Ctrl key is down.
void LockMouseToWindow(Window* window);
void ClearWindowLock();
/// Enforces the lock; runs before every event is read.
void UpdateWindowLock();
/// Ends the lock on a window that is being freed. For ShutWindow.
void ForgetLockedWindow(const Window* window);
