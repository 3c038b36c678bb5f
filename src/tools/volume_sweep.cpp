#include "tools/volume_sweep.h"

#include "geometry/planes.h"
#include "gooey/check_box.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/program_windows.h"
#include "gooey/pull_down.h"
#include "gooey/redraw.h"
#include "gooey/text_input.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "interaction/curve_editing.h"
#include "interaction/grid_gizmo.h"
#include "interaction/selection_sets.h"
#include "interaction/tool_protocol.h"
#include "interaction/view_menus.h"
#include "platform/events.h"
#include "platform/state.h"
#include "tools/creation_guards.h"
#include "tools/curve_menus.h"
#include "tools/grid_points.h"
#include "tools/profile_editor.h"
#include "tools/sweep.h"
#include "tools/sweep_adding.h"
#include "tools/sweep_drawing.h"
#include "tools/sweep_options.h"
#include "views/display_flags.h"
#include "views/labels.h"
#include "views/moves.h"
#include "views/pixel_scope.h"
#include "views/rendering_state.h"
#include "views/view_transform.h"
#include "views/viewports.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>

// It lives until the end of the program, which comes after that of the graphics layer.
Sweep& VolumeSweep = *new Sweep;
Window* Sweeper;
int SweeperX, SweeperY, SweeperW, SweeperH, SweeperOpened;

namespace {

constexpr int StretchLabel = 158, InsideOutLabel = 183, DoubleSidedLabel = 184, CapEndsLabel = 186;
constexpr int CancelCode = 153;
constexpr double ClickTolerance = 8; // pixels

// Codes of the tool's own that only menus type.
constexpr int ChangedKey = 256, NewSweepKey = 257, NewPathKey = 258, NewProfileKey = 259;

enum SweepItem : std::int16_t { NewSweepItem = 326, NewPathItem = 327, NewProfileItem = 328, FirstPresetItem = 336 };

constexpr int EditorWidth = 309;
constexpr int Margin = 8;

ProfileView Shown = {FirstProfileZoom, 0, 0, 0};

/// The window's height that the editor does not have: the menu bar and the rows below.
const int BandHeight = InputHeight(TextSmallFont) + 157;

GadgetBox EditorPlace() {
    const int size = std::max(1, std::min(CurrentWindow->Width, CurrentWindow->Height - BandHeight));
    return {0, CurrentWindow->Height - PullDownBarHeight - size, size, size};
}

/// The surface has to be made anew and shown.
void ShowSweep() {
    if (Sweeper)
        DirtyWindow(Sweeper);
    RedrawModelWindowsBeside();
}

void ProfileChanged() {
    RedrawWindow(Sweeper);
    RedrawModelWindowsBeside();
}

const ProfileEditor Editor = {&VolumeSweep, &Shown, EditorPlace, ProfileChanged,
                              "Click to draw a profile, or choose a preset"};
const SweepOptions Options = {&VolumeSweep, &Sweeper, ShowSweep, &Shown.Snap, StretchLabel, 2};

void PathChanged() {
    SweepChanged(VolumeSweep);
    ShowSweep();
}

// ---- The path, in the views

/// The grid goes along its normal until it passes through the point.
void MoveGridTo(View* view, const double* point) {
    double plane[4];
    GetPlaneFromTransformation(view->GridMatrix, plane);
    const double distance = DistanceFromPointToPlane(point, plane);
    for (int axis = 0; axis < 3; ++axis)
        view->GridMatrix[3][axis] += distance * view->GridMatrix[2][axis];
}

void MarkChanged() {
    SweepChanged(VolumeSweep);
}

void PathLeft(View* view) {
    Elist& path = VolumeSweep.Path;
    if (LeftShift || RightShift) {
        if (Ebead* bead = ElistBeadClick(view, path, nullptr, ClickTolerance)) {
            bead->CurvePoint = !bead->CurvePoint;
            PathChanged();
        }
        return;
    }
    double point[3];
    if (!GridPointUnderPointer(view, point))
        return;
    const int length = ElistLength(path);
    ElistClick(view, path, point, ClickTolerance);
    if (length == 1 && ElistLength(path) == 2) {
        std::copy_n(view->GridMatrix[2], 3, VolumeSweep.Up);
        VolumeSweep.HasUp = 1;
    }
    if (view->Perspective)
        MoveGridTo(view, path.Current->Position);
    MarkChanged();
    DragCoordAroundGrid(view, path.Current->Position, gl::LEFTMOUSE, MarkChanged);
    PathChanged();
}

int SweepKey(View*, int key) {
    bool changed = false;
    if (ElistKey(VolumeSweep.Path, key, changed)) {
        if (changed)
            PathChanged();
        return 1;
    }
    if (key < ChangedKey || key > NewProfileKey)
        return 0;
    if (key == NewSweepKey || key == NewPathKey)
        ResetElist(VolumeSweep.Path);
    if (key == NewSweepKey || key == NewProfileKey)
        ResetElist(VolumeSweep.Profile);
    PathChanged();
    return 1;
}

// ---- Menus

Elist& ThePath() {
    return VolumeSweep.Path;
}

Elist& TheProfile() {
    return VolumeSweep.Profile;
}

using PathEntries = CurveMenu<ThePath>;
using ProfileEntries = CurveMenu<TheProfile>;

constexpr MenuEntry PathMenu[] = {
    {"Path", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"New path", MenuEntrySeparated, NewPathItem, 0, nullptr, nullptr},
    PathEntries::PointEntry,
    PathEntries::DeleteEntry,
    PathEntries::CloseEntry("Close path"),
    PathEntries::BasisEntry,
    PathEntries::SmoothnessEntry,
};

constexpr MenuEntry SweepMenu[] = {
    {"Sweep", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"New sweep", MenuEntryLast, NewSweepItem, 0, nullptr, nullptr},
};

constexpr MenuEntry ProfileMenu[] = {
    {"Profile", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"New profile", MenuEntrySeparated, NewProfileItem, 0, nullptr, nullptr},
    ProfileEntries::PointEntry,
    ProfileEntries::DeleteEntry,
    ProfileEntries::CloseEntry("Close profile"),
    ProfileEntries::BasisEntry,
    ProfileEntries::SmoothnessEntry,
};

constexpr MenuEntry PresetMenu[] = {
    {"Presets", MenuEntryTitle, 0, 0, nullptr, nullptr},
    {"Wall", MenuEntryItem, FirstPresetItem, 0, nullptr, nullptr},
    {"Road", MenuEntryItem, FirstPresetItem + 1, 0, nullptr, nullptr},
    {"Bevel", MenuEntryItem, FirstPresetItem + 2, 0, nullptr, nullptr},
    {"Circle", MenuEntryLast, FirstPresetItem + 3, 0, nullptr, nullptr},
};

const MenuEntry Popup[] = {
    {"Volume Sweep", MenuEntryTitle, 0, 0, nullptr, nullptr},     GridControlEntry, MaterialsEntry,
    {"Textures", MenuEntrySeparated, 105, 'E', nullptr, nullptr}, ViewEntry,        LastSettingsEntry,
};

void ChooseOfTool(int item) {
    const int key = item == NewSweepItem ? NewSweepKey : item == NewPathItem ? NewPathKey : KeyOfCurveItem(item);
    SendToolKey(nullptr, key);
}

void ChooseOfWindow(int item) {
    if (item == NewProfileItem)
        SendToolKey(nullptr, NewProfileKey);
    else
        ProfileKey(Editor, item >= FirstPresetItem ? item - FirstPresetItem + FirstPresetKey : KeyOfCurveItem(item));
}

// ---- The tool bar

void OptionChanged(GadgetArg) {
    PathChanged();
}

void BuildBar() {
    static const MenuEntry* const menus[] = {PathMenu, SweepMenu, nullptr};
    constexpr int checksX = 190, checkY = -27, gap = 8;
    AddMenuChopStart();
    AddPullDownMenu(menus, ChooseOfTool);
    AddMenuChopEnd();
    GooeyRight = std::max(GooeyRight, checksX);

    const struct {
        int Label;
        int* Flag;
    } checks[] = {{InsideOutLabel, &VolumeSweep.InsideOut},
                  {DoubleSidedLabel, &VolumeSweep.DoubleSided},
                  {CapEndsLabel, &VolumeSweep.CapEnds}};

    for (const auto& check : checks)
        AddIntCheck(GooeyRight + gap, checkY, 0, CheckSmallFont, nullptr, check.Label, OptionChanged, check.Flag);
}

constexpr std::int16_t Status[] = {88, 90, 98, 100, 99, 0};

void AddTheSweep() {
    AddSweepToModel(VolumeSweep, nullptr);
}

void LeaveSweep() {
    CloseToolWindow(SweeperWindow);
}

const Tool SweepTool = {
    .Left = PathLeft,
    .Menu = Popup,
    .Key = SweepKey,
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .BuildBar = BuildBar,
    .CancelCode = CancelCode,
    .ManualPage = "R_VolumeSweep",
    .Done = AddTheSweep,
    .Leave = LeaveSweep,
};

// ---- The window

void BuildSweeper() {
    static const MenuEntry* const menus[] = {ProfileMenu, PresetMenu, nullptr};
    AddBackdrop();
    AddProfileEditor(Editor);
    int y = BandHeight - PullDownBarHeight - SweepOptionRow;
    AddSquareOptions(Options, Margin, y);
    if (TextureAvailable)
        AddTextureOptions(Options, Margin, y - SweepOptionRow, EditorWidth - 2 * Margin);
    AddPullDownMenu(menus, ChooseOfWindow);
}

void SweeperEvent(int device, short value) {
    if (device == gl::MIDDLEMOUSE && value)
        ManipulateProfile(Editor);
    else if (device == gl::KEYBD && !ProfileKey(Editor, std::tolower(value)))
        SendToolKey(nullptr, value);
}

void SweeperClosed() {
    if (ToolRuns(SweepTool))
        ClearControl();
}

// ---- What the views show

void WritePolygonCount() {
    constexpr int fromEdge = 10, fromTop = 20;
    char text[40];
    std::snprintf(text, sizeof text, "Polygons = %d", VolumeSweep.PolygonCount);
    const PixelScope pixels;
    SmallText(CurrentWindow->Width - SmallWidth(text) - fromEdge, CurrentWindow->Height - fromTop, text, White);
}

void LabelCurrentBead(View* view) {
    const Ebead* bead = VolumeSweep.Path.Current;
    if (!Moving || !bead)
        return;
    double eye[3];
    TransformPoint(bead->Position, view->Transform, eye);
    const float place[3] = {static_cast<float>(eye[0]), static_cast<float>(eye[1]), static_cast<float>(eye[2])};
    char text[120];
    std::snprintf(text, sizeof text, "(%.1f, %.1f, %.1f)", bead->Position[0], bead->Position[1], bead->Position[2]);
    LabelPoint(view, place, text);
}

} // namespace

const ToolWindow SweeperWindow = {
    .Title = " Volume sweeper",
    .Handle = &Sweeper,
    .Width = EditorWidth,
    .Height = EditorWidth + BandHeight,
    .Rules = {.LeastWidth = EditorWidth,
              .LeastHeight = EditorWidth + BandHeight,
              .AspectX = 1,
              .AspectY = 1,
              .FudgeY = BandHeight},
    .Place = {.Opened = &SweeperOpened, .X = &SweeperX, .Y = &SweeperY, .Width = &SweeperW, .Height = &SweeperH},
    .Build = BuildSweeper,
    .Event = SweeperEvent,
    .Closed = SweeperClosed,
    .ManualPage = "R_VolumeSweep",
    .ManualName = "Volume sweep",
};

void DoVolumeSweep() {
    if (!CreationInObjectMode())
        return;
    DeselectEverything();
    ShowVertices = 0;
    ShowGrid(1);
    SweepChanged(VolumeSweep);
    BeginTool(SweepTool);
    OpenToolWindow(SweeperWindow);
}

void DrawNewSweep(View* view) {
    if (!Sweeper)
        return;
    gl::zbuffer(true);
    Blending(1);
    DrawSweepMesh(VolumeSweep);
    Blending(0);
    gl::zbuffer(false); // points inside the surface can be taken as well
    DrawElist(view, VolumeSweep.Path);
    LabelCurrentBead(view);
    if (CurrentWindow == Viewport[0])
        WritePolygonCount();
}

void RemakeSweep() {
    SweepChanged(VolumeSweep);
    if (Sweeper)
        DirtyModelWindows();
}

void FreeSweeper() {
    FreeSweepMesh(VolumeSweep);
    ResetElist(VolumeSweep.Path);
    ResetElist(VolumeSweep.Profile);
}
