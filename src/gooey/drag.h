#pragma once

#include "platform/events.h"

struct Window;

// The one loop of everything that is dragged: what follows the pointer while a button is held.

/// A drag. Derive from it, say what a step changes and how that is shown, and Run it from the event function that saw
/// the press. While the pointer rests and nothing happens the loop sleeps and draws nothing; otherwise frames come as
/// fast as they can be drawn. The window that is current at the start stays current in every function below.
class Drag {
  public:
    explicit Drag(int button = gl::LEFTMOUSE) : Button(button) {}

    virtual ~Drag() = default;
    Drag(const Drag&) = delete;
    Drag& operator=(const Drag&) = delete;

    /// Follows the button until it is released, and commits; Escape cancels where Cancel can. The program's end, and
    /// that of the window, count as release. True when it was committed.
    bool Run();

  protected:
    /// Before the first step, and after the last one and Commit or Cancel.
    virtual void Begin() {}

    virtual void End() {}

    /// A step: the pointer has been read (MouseX, MouseY) or an event has come. False when nothing looks different for
    /// it. The step at the release is not shown: what Commit leaves is.
    virtual bool Step() = 0;
    /// Shows what the last step changed. By default the current window is drawn.
    virtual void Show();
    /// Any other event; the step that follows may act on it. Returns false to end the drag as if by its release.
    virtual bool Event(int device, short value);
    /// Whether an event ends the drag; by default the release of its button.
    virtual bool Ends(int device, short value);

    /// Whether steps follow although nothing happens: what moves by itself. Such a step must return false while the
    /// clock stands.
    virtual bool Animated() const { return false; }

    /// Goes back to how everything was before the drag. False when it cannot: then Escape is an event like others.
    virtual bool Cancel() { return false; }

    virtual void Commit() {}

    const int Button;

  private:
    enum class State { Goes, Ended, Cancelled };

    State TakeEvents(Window* target, bool& happened);
};

/// A drag made of functions, for owners that need no class. `step` as Drag::Step, returning whether something looks
/// different; `show` as Drag::Show.
template <class StepFunction, class ShowFunction>
class FunctionDrag : public Drag {
  public:
    FunctionDrag(int button, StepFunction step, ShowFunction show) : Drag(button), TheStep(step), TheShow(show) {}

  protected:
    bool Step() override { return TheStep(); }

    void Show() override { TheShow(); }

  private:
    StepFunction TheStep;
    ShowFunction TheShow;
};
