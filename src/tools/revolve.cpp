#include "tools/revolve.h"

#include "geometry/matrices.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/inc_dec.h"
#include "gooey/label.h"
#include "gooey/manual.h"
#include "gooey/menu_session.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/pull_down.h"
#include "gooey/redraw.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "interaction/curve_editing.h"
#include "platform/drawing.h"
#include "platform/events.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "tools/curve_menus.h"
#include "tools/preview_turning.h"
#include "tools/profile_editor.h"
#include "tools/sweep.h"
#include "tools/sweep_adding.h"
#include "tools/sweep_drawing.h"
#include "tools/sweep_options.h"
#include "views/display_flags.h"
#include "views/grid.h"
#include "views/pixel_scope.h"
#include "views/rendering_state.h"
#include "views/viewports.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>

// It lives until the end of the program, which comes after that of the graphics layer.
Sweep& RevolveSweep = *new Sweep;
Window* Revolve;
int RevolveX, RevolveY, RevolveW, RevolveH, RevolveOpened;

namespace {

constexpr const char ManualPage[] = "R_Revolve";
constexpr int InsideOutLabel = 183, DoubleSidedLabel = 184, CapEndsLabel = 186, StretchLabel = 187;
constexpr int FirstSides = 16;

enum RevolveItem : std::int16_t { NewRevolveItem = 1, AddItem = 2, ManualItem = 3 };

constexpr int NewRevolveKey = 265;

/// The width that the gadgets need; half of it is the height of editor and preview.
constexpr int LeastWidth = 640, Margin = 8, RightColumn = 328;
constexpr int BandHeight = PullDownBarHeight + 4 * SweepOptionRow + 8;

constexpr int FieldOfView = 400; // tenths of degrees
constexpr double Nearest = 0.1, Farthest = 1000;
constexpr double FirstDistance = 14, FirstPitch = 20; // squares of the profile, degrees

ProfileView Shown = {FirstProfileZoom, 0, 0, 0};
Matrix PreviewMatrix = IdentityMatrix;
/// RevolveSweep has been set up.
bool Initialised;

GadgetBox EditorPlace() {
    const int height = std::max(1, CurrentWindow->Height - BandHeight);
    return {0, CurrentWindow->Height - PullDownBarHeight - height, std::max(1, CurrentWindow->Width / 2), height};
}

GadgetBox PreviewPlace() {
    const GadgetBox editor = EditorPlace();
    return {editor.Width, editor.Y, CurrentWindow->Width - editor.Width, editor.Height};
}

void ShowRevolve() {
    if (Revolve)
        RedrawWindow(Revolve);
}

void MarkDirty() {
    DirtyToolWindow(RevolveWindow);
}

const ProfileEditor Editor = {&RevolveSweep, &Shown, EditorPlace, ShowRevolve,
                              "Click to draw the profile, from the top down"};
const SweepOptions Options = {&RevolveSweep, &Revolve, ShowRevolve, &Shown.Snap, StretchLabel, 1};

void ResetPreview() {
    MultMatrix(PitchMatrix(FirstPitch), TranslationMatrix(0, FirstDistance, 0), PreviewMatrix);
}

// ---- The preview

void DrawPreview(Gadget*) {
    const GadgetBox box = PreviewPlace();
    gl::cpack(0);
    gl::rectfi(box.X, box.Y, box.X + box.Width - 1, box.Y + box.Height - 1);
    {
        const PixelScope saved;
        gl::viewport(box.X, box.X + box.Width - 1, box.Y, box.Y + box.Height - 1);
        gl::perspective(FieldOfView, static_cast<double>(box.Width) / box.Height, Nearest, Farthest);
        LoadGLMatrix(IdentityMatrix);
        SetLighting();
        gl::zbuffer(true);
        gl::scrmask(box.X, box.X + box.Width - 1, box.Y, box.Y + box.Height - 1);
        gl::zclear();
        LoadGLMatrix(p90);
        MultGLMatrix(PreviewMatrix);
        // A square of the profile is a unit here, however large it is to be.
        const double size = 1 / GridSquare(RevolveSweep.GridIndex);
        gl::scale(size, size, size);
        Blending(1);
        DrawSweepMesh(RevolveSweep);
        Blending(0);
        gl::zbuffer(false);
    }
    char text[40];
    std::snprintf(text, sizeof text, "%d Polygons", RevolveSweep.PolygonCount);
    SmallText(box.X + Margin, box.Y + Margin, text, White);
}

void TurnPreview() {
    const GadgetBox box = PreviewPlace();
    if (MouseInGadgetBox(box))
        ManipulateMatrix(PreviewMatrix, box, ResetPreview, ShowRevolve);
}

/// Brings the solid nearer, or takes it away.
int TurnPreviewWheel(Gadget*, int, int turnY) {
    constexpr double notchFactor = 1.2;
    if (!MouseInGadgetBox(PreviewPlace()))
        return 0;
    double& distance = PreviewMatrix[3][1];
    distance = std::clamp(distance * std::pow(notchFactor, -static_cast<double>(turnY) / gl::WHEELNOTCH),
                          LeastPreviewDistance, Farthest);
    MarkDirty();
    return 1;
}

void DescribePreview(const Gadget*, GadgetDescription& description) {
    description.Label = "Preview";
    description.Box = PreviewPlace();
}

constexpr GadgetKind PreviewKind = {"custom", DescribePreview, TurnPreviewWheel, nullptr};

// ---- What can be done

void AddRevolveToModel() {
    const double square = OneGridSquare();
    Matrix placement;
    MultMatrix(ScaleMatrix(square, square, square), ViewOfViewport(0)->GridMatrix, placement);
    AddSweepToModel(RevolveSweep, &placement);
}

void RevolveKey(int key) {
    if (ProfileKey(Editor, key))
        return;
    if (key == ' ') {
        AddRevolveToModel();
    } else if (key == '?') {
        OpenManual(ManualPage);
    } else if (key == NewRevolveKey) {
        ResetElist(RevolveSweep.Profile);
        SweepChanged(RevolveSweep);
        MarkDirty();
    }
}

Elist& TheProfile() {
    return RevolveSweep.Profile;
}

using ProfileEntries = CurveMenu<TheProfile>;

constexpr MenuEntry ProfileMenu[] = {
    {"Profile", MenuEntryTitle, 0, 0, nullptr, nullptr}, ProfileEntries::PointEntry, ProfileEntries::DeleteEntry,
    ProfileEntries::CloseEntry("Close profile"),         ProfileEntries::BasisEntry, ProfileEntries::SmoothnessEntry,
};

constexpr MenuEntry RevolveMenu[] = {
    {"Revolve", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"New revolve", MenuEntryItem, NewRevolveItem, 0, nullptr, nullptr},
    {"Add revolve to model", MenuEntryLast, AddItem, ' ', nullptr, nullptr},
};

constexpr MenuEntry HelpMenu[] = {
    {"Help", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Read manual", MenuEntryLast, ManualItem, '?', nullptr, nullptr},
};

const MenuEntry Popup[] = {
    {"Revolve", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Add to model", MenuEntryItem, AddItem, ' ', nullptr, nullptr},
    {"Read Manual", MenuEntryLast, ManualItem, '?', nullptr, nullptr},
};

void Choose(int item) {
    switch (item) {
    case NewRevolveItem:
        return RevolveKey(NewRevolveKey);
    case AddItem:
        return RevolveKey(' ');
    case ManualItem:
        return RevolveKey('?');
    default:
        return RevolveKey(KeyOfCurveItem(item));
    }
}

// ---- The window

void ChangeSides(GadgetArg, int) {
    RevolveSweep.Sides = std::clamp(RevolveSweep.Sides, LeastRevolveSides, MostRevolveSides);
    SweepChanged(RevolveSweep);
    ShowRevolve(); // while the button is held
}

void BuildRevolve() {
    static const MenuEntry* const menus[] = {ProfileMenu, RevolveMenu, HelpMenu, nullptr};
    constexpr int sidesWidth = 100;
    AddBackdrop();
    AddProfileEditor(Editor);
    AddGadget(DrawPreview, nullptr, 0)->Kind = &PreviewKind;
    int y = BandHeight - PullDownBarHeight - SweepOptionRow;
    AddSquareOptions(Options, Margin, y);
    if (TextureAvailable)
        AddTextureOptions(Options, Margin, y - SweepOptionRow, RightColumn - 3 * Margin);
    AddText(RightColumn, y + 8, "Sides = ", 0);
    AddIncDec(GooeyRight, y, sidesWidth, nullptr, nullptr, ChangeSides, &RevolveSweep.Sides);

    const struct {
        int Label;
        int* Flag;
    } checks[] = {{InsideOutLabel, &RevolveSweep.InsideOut},
                  {DoubleSidedLabel, &RevolveSweep.DoubleSided},
                  {CapEndsLabel, &RevolveSweep.CapEnds}};

    for (const auto& check : checks)
        AddSweepCheck(Options, RightColumn, y -= SweepOptionRow, check.Label, check.Flag);
    AddPullDownMenu(menus, Choose);
}

void RevolveEvent(int device, short value) {
    if (device == gl::RIGHTMOUSE && value)
        Choose(DoPopup(Popup));
    else if (device == gl::MIDDLEMOUSE && value && !ManipulateProfile(Editor))
        TurnPreview();
    else if (device == gl::KEYBD)
        RevolveKey(std::tolower(value));
}

void InitRevolve() {
    if (Initialised)
        return;
    Initialised = true;
    InitialiseSweep(RevolveSweep);
    RevolveSweep.Revolve = 1;
    RevolveSweep.Sides = FirstSides;
    RevolveSweep.CapEnds = 0;
    RevolveSweep.Profile.Basis = BSpline;
    ResetPreview();
}

} // namespace

const ToolWindow RevolveWindow = {
    .Title = " Solid of revolution",
    .Handle = &Revolve,
    .Width = LeastWidth,
    .Height = LeastWidth / 2 + BandHeight,
    .Rules = {.LeastWidth = LeastWidth,
              .LeastHeight = LeastWidth / 2 + BandHeight,
              .AspectX = 2,
              .AspectY = 1,
              .FudgeY = BandHeight},
    .Place = {.Opened = &RevolveOpened, .X = &RevolveX, .Y = &RevolveY, .Width = &RevolveW, .Height = &RevolveH},
    .DisabledByTools = true,
    .Build = BuildRevolve,
    .Event = RevolveEvent,
};

void DoRevolve() {
    InitRevolve();
    OpenToolWindow(RevolveWindow);
}

void RemakeRevolve() {
    SweepChanged(RevolveSweep);
    MarkDirty();
}

void FreeRevolve() {
    FreeSweepMesh(RevolveSweep);
    ResetElist(RevolveSweep.Profile);
    Initialised = false;
}
