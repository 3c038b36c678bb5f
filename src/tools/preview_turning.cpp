#include "tools/preview_turning.h"

#include "gooey/drag.h"
#include "gooey/pointer.h"
#include "interaction/manipulator.h"
#include "platform/events.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double RollFrom = 0.75; // of the half width
constexpr double DegreesPerPixel = 1 / 3.0;
constexpr double PanDivisor = 2.5;

/// Where the drag counts from; again whenever another button joins or leaves.
struct Turning {
    Matrix* Model;
    GadgetBox Area;
    void (*Reset)();
    Manipulator Buttons;
    Matrix Start;
    double X, Y; // the pointer from the middle of the area
    bool Rolls;
};

Turning TheTurning;

double FromMiddleX() {
    return MouseX - (TheTurning.Area.X + TheTurning.Area.Width / 2.0);
}

double FromMiddleY() {
    return MouseY - (TheTurning.Area.Y + TheTurning.Area.Height / 2.0);
}

void StartTurning(View*) {
    TheTurning.Start = *TheTurning.Model;
    TheTurning.X = FromMiddleX();
    TheTurning.Y = FromMiddleY();
    TheTurning.Rolls = std::hypot(TheTurning.X, TheTurning.Y) > RollFrom * TheTurning.Area.Width / 2;
}

void ResetTurning(View*) {
    TheTurning.Reset();
}

/// Turns the model where it is.
void TurnModel(const Matrix& rotation) {
    Matrix& model = *TheTurning.Model;
    double place[3];
    std::copy_n(model[3], 3, place);
    MultMatrix(model, rotation, model);
    std::copy_n(place, 3, model[3]);
}

class TurningDrag : public Drag {
  public:
    explicit TurningDrag(void (*show)()) : Drag(gl::MIDDLEMOUSE), ShowModel(show) {}

  private:
    bool Event(int device, short value) override {
        UpdateManipulator(nullptr, device, value, TheTurning.Buttons);
        return true;
    }

    bool Step() override {
        if (TheTurning.Buttons.Active)
            return true;
        const double dx = FromMiddleX() - TheTurning.X, dy = FromMiddleY() - TheTurning.Y;
        const double half = TheTurning.Area.Width / 2.0;
        Matrix& model = *TheTurning.Model;
        model = TheTurning.Start;
        double* place = model[3];
        if (TheTurning.Buttons.LeftDown) {
            place[0] += dx * place[1] / (PanDivisor * half);
            place[2] += dy * place[1] / (PanDivisor * half);
        } else if (TheTurning.Buttons.RightDown) {
            place[1] = std::max(place[1] * (1 - dy / half), LeastPreviewDistance);
        } else if (TheTurning.Rolls) {
            const double before = std::atan2(TheTurning.Y, TheTurning.X),
                         now = std::atan2(FromMiddleY(), FromMiddleX());
            TurnModel(RollMatrix((before - now) * RadiansToDegrees));
        } else {
            TurnModel(YawMatrix(dx * DegreesPerPixel));
            TurnModel(PitchMatrix(-dy * DegreesPerPixel));
        }
        return true;
    }

    void Show() override { ShowModel(); }

    void (*const ShowModel)();
};

} // namespace

void ManipulateMatrix(Matrix& matrix, const GadgetBox& area, void (*reset)(), void (*show)()) {
    TheTurning.Model = &matrix;
    TheTurning.Area = area;
    TheTurning.Reset = reset;
    StartTurning(nullptr);
    SetManipulator(TheTurning.Buttons, ResetTurning, StartTurning, StartTurning);
    TurningDrag(show).Run();
    show();
}
