#include "views/main_window.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/slots.h"
#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/gadget.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/message_table.h"
#include "gooey/program_windows.h"
#include "gooey/pull_down.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "materials/material_definitions.h"
#include "platform/desktop_place.h"
#include "platform/events.h"
#include "platform/windows.h"
#include "store/pools.h"
#include "store/storage.h"
#include "textures/texture_definition.h"
#include "views/capabilities.h"
#include "views/hooks.h"
#include "views/kept_drawings.h"
#include "views/markers.h"
#include "views/rendering_state.h"
#include "views/status_line.h"
#include "views/tool_bar.h"
#include "views/viewports.h"

#include <algorithm>
#include <string>

int MainX, MainY, MainW, MainH;
int MainWindowOpened;
int MainWindowFitted;
int MainFreeX, MainFreeY, MainFreeW, MainFreeH;
int FloatOnDesktop, MainPlacedByHand;

int EditMode;

MainWindowSlots TheMainWindowSlots;

namespace {

constexpr int FirstWidth = 750, FirstHeight = 525;
constexpr int SmallestWidth = 225, SmallestHeight = 150;
constexpr int AspectX = 3, AspectY = 2;
// Of the strip above and the status line below, which the aspect does not count.
constexpr int BandHeight = 60;
constexpr int StatusHeight = 25;
// The inner side of a viewport's border.
constexpr int Border = 4;

constexpr int ModeButtonsY = -31, EditSceneY = -27;

// What the strip holds while no tool has it; each null when there is none.
struct StripGadgets {
    Gadget* SceneMenu[3];
    Gadget* ObjectMenu[3];
    Gadget* ModeButtons;
    Gadget* EditScene;
    // Where the two lie in a window that is wide enough, and where the last of them ends; what is right of the scene's
    // menus there.
    int ModeButtonsX, EditSceneX, Right, SceneMenuEnd;
};

StripGadgets Strip;
// What the "Edit scene" box shows.
int SceneMode;
// WorkSaved as the title shows it; -1: unknown.
int ShownSaved = -1;

void Show(Gadget* gadget, bool shown) {
    if (gadget)
        gadget->Visible = shown;
}

void AddBar(Gadget* (&bar)[3], Gadget* (*addMenu)()) {
    bar[0] = AddMenuChopStart();
    bar[1] = addMenu ? addMenu() : nullptr;
    bar[2] = AddMenuChopEnd();
}

void ChooseMode() {
    CallSlot(ButtonChoice == 0 ? TheMainWindowSlots.SetPolygonMode : TheMainWindowSlots.SetVertexMode);
}

void ChangeMode(GadgetArg) {
    CallSlot(TheMainWindowSlots.ChangeObjectIsolation);
    SceneMode = !ObjectIsolated;
}

void AddStrip() {
    AddBar(Strip.SceneMenu, TheMainWindowSlots.AddSceneModeMenu);
    Strip.SceneMenuEnd = GooeyRight;
    AddBar(Strip.ObjectMenu, TheMainWindowSlots.AddSingleObjectMenu);
    static constexpr const char* modes[] = {"Polygon", "Vertex"};
    Strip.ModeButtonsX = GooeyRight;
    Strip.ModeButtons =
        AddButtons(GooeyRight, ModeButtonsY, 0, ButtonsSmallFont, 2, modes, ChooseMode, &EditMode, nullptr);
    Strip.EditSceneX = GooeyRight;
    Strip.EditScene =
        AddCheckBox(GooeyRight, EditSceneY, 0, CheckSmallFont, nullptr, "Edit scene", ChangeMode, &SceneMode);
    Strip.Right = GooeyRight;
    if (Strip.SceneMenu[1])
        ReserveRightOfBar(Strip.SceneMenu[1], Strip.Right - Strip.EditSceneX);
}

// In a narrow window the menus move together, and the mode controls follow them and become narrower.
void PlaceModeControls() {
    if (!Strip.ModeButtons)
        return;
    int saved = 0, shift = 0;
    if (Gadget* menu = Strip.ObjectMenu[1]) {
        const int reserve = Strip.Right - Strip.ModeButtonsX;
        ReserveRightOfBar(menu, reserve);
        saved = SetButtonsNarrow(Strip.ModeButtons, !PullDownBarFits(menu));
        ReserveRightOfBar(menu, reserve - saved);
        shift = PullDownBarShift(menu);
    }
    MoveButtons(Strip.ModeButtons, Strip.ModeButtonsX - shift);
    int boxX = Strip.EditSceneX - shift - saved;
    // Without the buttons there is more room.
    if (Gadget* menu = SceneMode ? Strip.SceneMenu[1] : nullptr)
        boxX = std::max(std::min(boxX, CurrentWindow->Width - (Strip.Right - Strip.EditSceneX)),
                        Strip.SceneMenuEnd - PullDownBarShift(menu));
    GadgetData<CheckBox>(Strip.EditScene).X = boxX;
}

void ClearStrip() {
    SetColour(BackgroundOf(CurrentWindow));
    DrawBox(0, CurrentWindow->Height - PullDownBarHeight, CurrentWindow->Width, PullDownBarHeight, ShadeFull);
}

void PrepareStrip() {
    const bool shown = !SystemBusy() && !ToolBarActive();
    SceneMode = !ObjectIsolated;
    for (Gadget* gadget : Strip.SceneMenu)
        Show(gadget, shown && SceneMode);
    for (Gadget* gadget : Strip.ObjectMenu)
        Show(gadget, shown && !SceneMode);
    Show(Strip.ModeButtons, shown && !SceneMode);
    Show(Strip.EditScene, shown);
    if (shown) {
        PlaceModeControls();
    } else {
        ClearStrip();
        PlaceToolBarButtons();
    }
}

// Where the viewport's border goes, in pixels of the main window.
gl::WindowRectangle ViewportPlace(int number) {
    const int width = CurrentWindow->Width, height = CurrentWindow->Height;
    if (NoViewports == 1)
        return {0, StatusHeight, width, height - BandHeight};
    const int left = 2 * width / 3, low = (height - BandHeight) / 2;
    switch (number) {
    case 0:
        return {0, StatusHeight, left, height - BandHeight};
    case 1:
        return {left, low + StatusHeight, width - left, height - low - BandHeight};
    default:
        return {left, StatusHeight, width - left, low};
    }
}

void PlaceViewports() {
    SetColour(White);
    for (int number = 0; number < NoViewports; ++number) {
        const auto [x, y, width, height] = ViewportPlace(number);
        if (Viewport[number])
            SetViewPos(Viewport[number], x + Border, y + Border, width - 2 * Border, height - 2 * Border);
        DrawLoweredBorder(x, y, width, height);
    }
}

// Where the window opens: a fitted one where it goes back to.
void ChoosePlace() {
    if (!MainWindowOpened) {
        // The layer puts a first window where the eye falls: in the middle, a little above it.
        NoViewports = 1;
        gl::prefsize(FirstWidth, FirstHeight);
    } else if (MainWindowFitted) {
        gl::prefposition(MainFreeX, MainFreeX + MainFreeW - 1, MainFreeY, MainFreeY + MainFreeH - 1);
    } else {
        gl::prefposition(MainX, MainX + MainW - 1, MainY, MainY + MainH - 1);
    }
}

bool FillsDesktop() {
    return !FloatOnDesktop && gl::ScreenIsOnDesktop();
}

// A remembered window may be larger than the screen that it comes back on.
void FitOnScreen() {
    gl::FillWhenFitted(MainWindow->Gid, FillsDesktop());
    if (MainWindowFitted || (FillsDesktop() && !MainPlacedByHand) || MainWindow->Width > hres + 1 ||
        MainWindow->Height > vres + 1)
        gl::ToggleFit(MainWindow->Gid);
}

void RememberPlace() {
    UpdateWindowGeometry();
    MainX = MainWindow->X;
    MainY = MainWindow->Y;
    MainW = MainWindow->Width;
    MainH = MainWindow->Height;
    MainWindowOpened = 1;
    gl::WindowRectangle free;
    MainWindowFitted = gl::PlaceBeforeFit(MainWindow->Gid, free);
    if (FillsDesktop())
        MainPlacedByHand = !MainWindowFitted;
    if (!MainWindowFitted)
        return;
    MainFreeX = free.X;
    MainFreeY = free.Y;
    MainFreeW = free.Width;
    MainFreeH = free.Height;
}

void SetConstraints() {
    gl::minsize(SmallestWidth, SmallestHeight);
    gl::fudge(0, BandHeight);
    gl::keepaspect(AspectX, AspectY);
    gl::winconstraints();
}

void SetTitle(const char* title) {
    WindowScope scope(MainWindow);
    gl::wintitle(title);
}

/// Keys typed with the pointer on the menus or the tool bar: whoever has pressed a button there goes on typing.
void TypeInLargeView(int device, short value) {
    if ((device != gl::KEYBD && device != gl::TABKEY) || !Viewport[0] || Viewport[0]->Disabled)
        return;
    WindowScope scope(Viewport[0]);
    CheckView(device, value);
}

} // namespace

Gadget* AddMainDrawing() {
    return Kirvo_AddGadget(DrawMain, nullptr);
}

void OpenMainWindow() {
    WindowInit = InitGraphics;
    ChoosePlace();
    MainWindow = OpenWindow("Kirvo", WindowDoubleBuffered | WindowConfirmsShut, 0, nullptr, nullptr, TypeInLargeView,
                            CloseMainWindow, 0, nullptr);
    SetTitle("Loading file...");
    ShownSaved = -1;
    SetConstraints();
    FitOnScreen();
    InitMaterials();
    CallSlot(TheMainWindowSlots.InitSpheres);
    SussGraphicsStuff();
    AddMainDrawing();
    AddStrip();
    for (int number = 0; number < NoViewports; ++number)
        OpenViewport(number);
}

void DrawMain() {
    PrepareStrip();
    PlaceViewports();
    DrawStatusLine();
}

void CloseMainWindow() {
    WindowScope scope(MainWindow);
    RememberPlace();
    DoToolClear();
    Strip = {};
    MainWindow = nullptr;
    ReleaseKeptDrawings();
    ReleaseKeptMarkers();
    FreeClippingBeads();
    FreeBoundTextures();
    FreeMaterials();
    CallSlot(TheMainWindowSlots.FreeTools);
}

void FollowFloatOnDesktop() {
    if (!MainWindow || !gl::ScreenIsOnDesktop())
        return;
    gl::WindowRectangle free;
    if (gl::PlaceBeforeFit(MainWindow->Gid, free))
        gl::ToggleFit(MainWindow->Gid);
    gl::FillWhenFitted(MainWindow->Gid, !FloatOnDesktop);
    if (!FloatOnDesktop)
        gl::ToggleFit(MainWindow->Gid);
}

void ChangeWindowTitle() {
    ShownSaved = -1;
    if (!MainWindow)
        return;
    const std::string name = FileName[0] ? FileName : std::string("Kirvo - ") + msg(MsgVersion);
    SetTitle((name + (WorkSaved ? "" : "*")).c_str());
}

void UpdateWindowTitle() {
    if (WorkSaved == ShownSaved)
        return;
    ChangeWindowTitle();
    ShownSaved = WorkSaved;
}

void UpdateStatusLine() {
    ForgetOldStatusNote();
    const int number = ViewportNumber(CurrentWindow);
    if (number < 0 || number >= NoViewports)
        return;
    if (const View* view = ViewOfViewport(number); view->Valid)
        NoteFocusedView(view->Perspective);
}

void ChangeWindow() {
    CallSlot(TheMainWindowSlots.InputWindowChanged);
    NoteInputWindow(CurrentWindow && (CurrentWindow == MainWindow || ViewportNumber(CurrentWindow) >= 0));
}

void HandleSpecialEvents(short value) {
    if (value == ToolBarClearEvent)
        HandleToolBarEvent();
}
