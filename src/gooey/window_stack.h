#pragma once

struct Window;

/// Makes the window current for drawing, gadgets and pointer positions. Null: none is.
void SetWindow(Window* window);

/// Saves the current window. At most 32 at a time: one more ends the program with status 666.
void PushWindow();

/// Saves the current window and makes another current.
void PushToWindow(Window* window);

/// Makes the window saved last current again, or none if it has been shut meanwhile. Without one saved the program ends
/// with status 666.
void PopWindow();

/// A function and the window that it must run in.
struct WindowCallback {
    Window* Target;
    void (*Function)();
};

/// Calls the function with its window current, then goes back to the present one.
void WindowCall(const WindowCallback& callback);

/// Works in another window for the length of a scope.
class WindowScope {
  public:
    explicit WindowScope(Window* window) { PushToWindow(window); }

    ~WindowScope() { PopWindow(); }

    WindowScope(const WindowScope&) = delete;
    WindowScope& operator=(const WindowScope&) = delete;
};

/// Takes a window that is being freed out of the saved ones. For ShutWindow.
void ForgetStackedWindow(const Window* window);
