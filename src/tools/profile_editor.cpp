#include "tools/profile_editor.h"

#include "geometry/numbers.h"
#include "gooey/drag.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/gadget.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "interaction/curve_editing.h"
#include "interaction/manipulator.h"
#include "platform/drawing.h"
#include "platform/events.h"
#include "platform/state.h"
#include "store/curve_flattening.h"
#include "tools/sweep.h"
#include "views/rendering_state.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>

namespace {

constexpr int BorderWidth = 4;
constexpr std::uint32_t Background = 0x202020, DotColour = 0xB0B0B0, AxisColour = 0x707070, EdgeColour = 0x909090;
/// Squares from one cross of the plane to the next.
constexpr int CrossStep = 5;
/// Dots that are closer than this, pixels, are left out but for every fifth, and so on.
constexpr double LeastDotDistance = 6;
constexpr double Tolerance = 8 * 1.414; // pixels
constexpr double NotchFactor = 1.2;
constexpr double LeastZoom = 1e-3, MostZoom = 1e3;
constexpr double MarkerSize = 5, CircleSize = 9;
constexpr int HintMargin = 8;

struct PresetPoint {
    double X, Y;
    int Curve;
};

constexpr PresetPoint Wall[] = {{0, 0, 0}, {0, 3, 0}, {0.25, 3, 0}, {0.25, 0, 0}};
constexpr PresetPoint Road[] = {{-1, 0, 0}, {1, 0, 0}};
constexpr PresetPoint Bevel[] = {{0, 2, 0}, {1, 1, 1}, {0, 0, 0}};
constexpr PresetPoint Circle[] = {{-1, -1, 1}, {-1, 1, 1}, {1, 1, 1}, {1, -1, 1}};

struct Preset {
    std::span<const PresetPoint> Points;
    int Closed;
};

constexpr Preset Presets[PresetCount] = {{Wall, 0}, {Road, 0}, {Bevel, 0}, {Circle, 1}};

/// From places in the profile to pixels of the window and back, as the editor lies now.
struct Mapping {
    explicit Mapping(const ProfileEditor& editor) : Shown(*editor.Shown) {
        const GadgetBox box = editor.Place();
        Inner = {box.X + BorderWidth, box.Y + BorderWidth, box.Width - 2 * BorderWidth, box.Height - 2 * BorderWidth};
        MiddleX = Inner.X + Inner.Width / 2.0;
        MiddleY = Inner.Y + Inner.Height / 2.0;
        PixelsPerSquare = Shown.Zoom * Inner.Width / 2;
    }

    double X(double x) const { return MiddleX + (x - Shown.PanX) * PixelsPerSquare; }

    double Y(double y) const { return MiddleY + (y - Shown.PanY) * PixelsPerSquare; }

    double SquaresX(double pixel) const { return (pixel - MiddleX) / PixelsPerSquare + Shown.PanX; }

    double SquaresY(double pixel) const { return (pixel - MiddleY) / PixelsPerSquare + Shown.PanY; }

    bool Holds(int x, int y) const {
        return x >= Inner.X && y >= Inner.Y && x < Inner.X + Inner.Width && y < Inner.Y + Inner.Height;
    }

    const ProfileView& Shown;
    GadgetBox Inner;
    double MiddleX, MiddleY, PixelsPerSquare;
};

void Put(double x, double y) {
    const double place[2] = {x, y};
    gl::v2d(place);
}

void Line(double x1, double y1, double x2, double y2) {
    gl::bgnline();
    Put(x1, y1);
    Put(x2, y2);
    gl::endline();
}

void DrawPlane(const Mapping& map) {
    int step = 1;
    while (step * map.PixelsPerSquare < LeastDotDistance)
        step *= CrossStep;
    const auto first = [&](double squares) { return static_cast<long>(std::ceil(squares / step)); };
    const auto last = [&](double squares) { return static_cast<long>(std::floor(squares / step)); };
    const GadgetBox& box = map.Inner;
    const long left = first(map.SquaresX(box.X)), right = last(map.SquaresX(box.X + box.Width));
    const long low = first(map.SquaresY(box.Y)), high = last(map.SquaresY(box.Y + box.Height));
    gl::cpack(AxisColour);
    Line(box.X, map.Y(0), box.X + box.Width, map.Y(0));
    Line(map.X(0), box.Y, map.X(0), box.Y + box.Height);
    gl::cpack(DotColour);
    for (long row = low; row <= high; ++row)
        for (long column = left; column <= right; ++column) {
            const double x = std::round(map.X(static_cast<double>(column * step))),
                         y = std::round(map.Y(static_cast<double>(row * step)));
            const double arm = column % CrossStep == 0 && row % CrossStep == 0 ? 3 : 0;
            if (arm != 0) {
                Line(x - arm, y, x + arm, y);
                Line(x, y - arm, x, y + arm);
            } else {
                gl::bgnpoint();
                Put(x, y);
                gl::endpoint();
            }
        }
}

void DrawCurve(const Mapping& map, const Elist& list) {
    const auto lineThrough = [&](const auto& points) {
        list.Closed ? gl::bgnclosedline() : gl::bgnline();
        for (const FlatPoint& point : points)
            Put(map.X(point[0]), map.Y(point[1]));
        list.Closed ? gl::endclosedline() : gl::endline();
    };
    std::vector<FlatPoint> polygon;
    ScanElist(list, [&](const double* p, bool) { polygon.push_back({p[0], p[1], p[2]}); });
    gl::cpack(EdgeColour);
    lineThrough(polygon);
    gl::cpack(White);
    gl::linewidth(2);
    lineThrough(FlattenElist(list));
    ScanElist(list, [&](const double* p, bool isCurrent) {
        const double x = map.X(p[0]), y = map.Y(p[1]);
        gl::cpack(White);
        Line(x - MarkerSize, y - MarkerSize, x + MarkerSize, y + MarkerSize);
        Line(x - MarkerSize, y + MarkerSize, x + MarkerSize, y - MarkerSize);
        if (isCurrent) {
            gl::cpack(Red);
            gl::circ(static_cast<float>(x), static_cast<float>(y), CircleSize);
        }
    });
    gl::linewidth(1);
}

const ProfileEditor& EditorOf(const Gadget* gadget) {
    return *GadgetData<const ProfileEditor*>(gadget);
}

void DrawEditor(Gadget* gadget) {
    const ProfileEditor& editor = EditorOf(gadget);
    const GadgetBox box = editor.Place();
    SetColour(GadgetColour());
    DrawLoweredBorder(box.X, box.Y, box.Width, box.Height);
    const Mapping map(editor);
    if (PushScrmask(map.Inner.X, map.Inner.Y, map.Inner.Width, map.Inner.Height)) {
        gl::cpack(Background);
        gl::rectfi(map.Inner.X, map.Inner.Y, map.Inner.X + map.Inner.Width - 1, map.Inner.Y + map.Inner.Height - 1);
        DrawPlane(map);
        DrawCurve(map, editor.Swept->Profile);
        if (!editor.Swept->Profile.First)
            FontOf(true).Draw(map.Inner.X + HintMargin, map.Inner.Y + HintMargin, editor.Hint, LightGrey);
    }
    PopScrmask();
}

void DescribeEditor(const Gadget* gadget, GadgetDescription& description) {
    const ProfileEditor& editor = EditorOf(gadget);
    description.Label = "Profile";
    description.Box = editor.Place();
    const Mapping map(editor);
    int number = 0;
    ScanElist(editor.Swept->Profile, [&](const double* p, bool isCurrent) {
        const int x = static_cast<int>(std::lround(map.X(p[0]))), y = static_cast<int>(std::lround(map.Y(p[1])));
        const std::string label = "point " + std::to_string(number++);
        constexpr int half = 3;
        if (map.Holds(x, y))
            description.Items.push_back({label, {x - half, y - half, 2 * half + 1, 2 * half + 1}, isCurrent});
    });
}

void TellChange(const ProfileEditor& editor) {
    SweepChanged(*editor.Swept);
    editor.Changed();
}

/// The place under the pointer in squares, with the snap when it is on.
void PointUnderPointer(const ProfileEditor& editor, double* point) {
    const Mapping map(editor);
    point[0] = map.SquaresX(MouseX);
    point[1] = map.SquaresY(MouseY);
    point[2] = 0;
    if (editor.Shown->Snap)
        for (const int axis : {0, 1})
            Snap(&point[axis], 1);
}

/// The current control point follows the pointer; Escape takes it back.
class PointDrag : public Drag {
  public:
    explicit PointDrag(const ProfileEditor& editor) : Editor(editor), Bead(*editor.Swept->Profile.Current) {
        std::copy_n(Bead.Position, 3, Before);
    }

  private:
    bool Step() override {
        double point[3];
        PointUnderPointer(Editor, point);
        if (std::equal(point, point + 3, Bead.Position))
            return false;
        std::copy_n(point, 3, Bead.Position);
        return true;
    }

    void Show() override { TellChange(Editor); }

    void Commit() override { TellChange(Editor); }

    bool Cancel() override {
        std::copy_n(Before, 3, Bead.Position);
        TellChange(Editor);
        return true;
    }

    const ProfileEditor& Editor;
    Ebead& Bead;
    double Before[3];
};

int ProfileClick(Gadget* gadget) {
    const ProfileEditor& editor = EditorOf(gadget);
    const Mapping map(editor);
    if (!map.Holds(MouseX, MouseY))
        return 0;
    const double exact[3] = {map.SquaresX(MouseX), map.SquaresY(MouseY), 0};
    const double tolerance = Tolerance / map.PixelsPerSquare;
    Elist& profile = editor.Swept->Profile;
    if (LeftShift || RightShift) {
        if (Ebead* bead = ElistBeadClick(nullptr, profile, exact, tolerance)) {
            bead->CurvePoint = !bead->CurvePoint;
            TellChange(editor);
        }
        return 1;
    }
    if (!ElistBeadClick(nullptr, profile, exact, tolerance)) {
        double point[3];
        PointUnderPointer(editor, point);
        ElistClick(nullptr, profile, point, tolerance);
    }
    TellChange(editor);
    PointDrag(editor).Run();
    return 1;
}

int TurnEditorWheel(Gadget* gadget, int, int turnY) {
    const ProfileEditor& editor = EditorOf(gadget);
    const Mapping map(editor);
    if (!map.Holds(MouseX, MouseY))
        return 0;
    // What is under the pointer stays there.
    ProfileView& shown = *editor.Shown;
    const double x = map.SquaresX(MouseX), y = map.SquaresY(MouseY);
    const double zoom = std::clamp(shown.Zoom * std::pow(NotchFactor, static_cast<double>(turnY) / gl::WHEELNOTCH),
                                   LeastZoom, MostZoom);
    const double change = shown.Zoom / zoom;
    shown.PanX = x + (shown.PanX - x) * change;
    shown.PanY = y + (shown.PanY - y) * change;
    shown.Zoom = zoom;
    DirtyCurrentWindow();
    return 1;
}

constexpr GadgetKind EditorKind = {"custom", DescribeEditor, TurnEditorWheel, nullptr};

/// Where a drag of the plane counts from; again whenever another button joins or leaves.
struct PlaneDragState {
    const ProfileEditor* Editor;
    Manipulator Buttons;
    ProfileView Start;
    int X, Y;
};

PlaneDragState ThePlaneDrag;

void StartPlane(View*) {
    ThePlaneDrag.Start = *ThePlaneDrag.Editor->Shown;
    ThePlaneDrag.X = MouseX;
    ThePlaneDrag.Y = MouseY;
}

void ResetPlane(View*) {
    ProfileView& shown = *ThePlaneDrag.Editor->Shown;
    shown.Zoom = FirstProfileZoom;
    shown.PanX = shown.PanY = 0;
}

class PlaneDrag : public Drag {
  public:
    PlaneDrag() : Drag(gl::MIDDLEMOUSE) {}

  private:
    bool Event(int device, short value) override {
        UpdateManipulator(nullptr, device, value, ThePlaneDrag.Buttons);
        return true;
    }

    bool Step() override {
        const PlaneDragState& drag = ThePlaneDrag;
        if (drag.Buttons.Active)
            return true;
        ProfileView& shown = *drag.Editor->Shown;
        const double width = Mapping(*drag.Editor).Inner.Width;
        if (drag.Buttons.RightDown) {
            const double f = (MouseY - drag.Y) * 2 / width;
            shown.Zoom = std::clamp(drag.Start.Zoom * (f >= 0 ? 3 * f + 1 : -1 / (f - 1)), LeastZoom, MostZoom);
        } else {
            const double squares = 2 / (drag.Start.Zoom * width);
            shown.PanX = drag.Start.PanX - (MouseX - drag.X) * squares;
            shown.PanY = drag.Start.PanY - (MouseY - drag.Y) * squares;
        }
        return true;
    }
};

} // namespace

Gadget* AddProfileEditor(const ProfileEditor& editor) {
    Gadget* gadget = CreateGadget<const ProfileEditor*>();
    GadgetData<const ProfileEditor*>(gadget) = &editor;
    gadget->DrawFn = DrawEditor;
    gadget->ClickFn = ProfileClick;
    gadget->Kind = &EditorKind;
    return gadget;
}

int ManipulateProfile(const ProfileEditor& editor) {
    if (!Mapping(editor).Holds(MouseX, MouseY))
        return 0;
    ThePlaneDrag.Editor = &editor;
    StartPlane(nullptr);
    SetManipulator(ThePlaneDrag.Buttons, ResetPlane, StartPlane, StartPlane);
    PlaneDrag().Run();
    DirtyCurrentWindow();
    return 1;
}

int ProfileKey(const ProfileEditor& editor, int key) {
    Elist& profile = editor.Swept->Profile;
    bool changed = false;
    if (key >= FirstPresetKey && key < FirstPresetKey + PresetCount) {
        const Preset& preset = Presets[key - FirstPresetKey];
        ResetElist(profile);
        profile.Basis = MSpline;
        profile.Closed = preset.Closed;
        for (const PresetPoint& point : preset.Points) {
            const double place[3] = {point.X, point.Y, 0};
            AppendEbead(profile, place)->CurvePoint = point.Curve;
        }
        changed = true;
    } else if (!ElistKey(profile, key, changed)) {
        return 0;
    }
    if (changed)
        TellChange(editor);
    return 1;
}
