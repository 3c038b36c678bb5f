#include "tools/tablet.h"

#include "base/debug.h"
#include "base/exit.h"
#include "base/slots.h"
#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/event_queue.h"
#include "gooey/gadget.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/messages.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/modes.h"
#include "platform/events.h"
#include "platform/system.h"
#include "store/accessors.h"
#include "store/connections.h"
#include "store/polygon_editing.h"
#include "store/storage.h"
#include "store/undo.h"
#include "store/walks.h"
#include "tools/tablet_alignment.h"
#include "tools/tablet_texts.h"
#include "views/default_views.h"
#include "views/viewports.h"

#include <cstdio>
#include <vector>

Window* TabletBase;
int TabletX, TabletY, TabletOpened;
int SoundEffects = 1;
int EnterMethodA = 1, EnterMethodB;
TabletSlots TheTabletSlots;

namespace {

constexpr int CancelLabel = 5, DoneLabel = 6, BeepsLabel = 9, MethodALabel = 10, MethodBLabel = 11;
constexpr int WindowWidth = 660, WindowHeight = 480, Margin = 8, ButtonsY = 10, ChecksY = 16;
constexpr int RotationsY = 60;

constexpr int PuckButtons[] = {gl::BPAD0, gl::BPAD1, gl::BPAD2, gl::BPAD3};

enum Phase { ChoosePhase, AlignPhase, EnterPhase, EnterNPhase, PhaseCount };

constexpr int LastAlignStep = 6;

int TabletPhase, TabletStep;
/// What was entered last on each view.
TabletPoint OnView1, OnView2;
/// The vertices entered since the window was opened, of the object that is current then.
std::vector<Vertex*> EnteredVertices;
bool SharedPointOnView2;

int WantedCount, DigitisedCount;
double DigitisedPoints[MostDigitisedPoints][3];
void (*Callback)(const double (*points)[3]);

/// The gadgets of each phase, the buttons of the rotation apart.
std::vector<Gadget*> GadgetsOf[PhaseCount];
Gadget* Rotations;

void RingBell() {
    if (SoundEffects)
        gl::ringbell();
}

void SetGooeyPhase(int phase) {
    TabletPhase = phase;
    TabletStep = 0;
    SharedPointOnView2 = false;
    for (int of = 0; of < PhaseCount; ++of)
        for (Gadget* gadget : GadgetsOf[of])
            gadget->Visible = of == phase;
    Rotations->Visible = 0;
    if (phase == ChoosePhase)
        ClearWindowLock();
    else
        LockMouseToWindow(TabletBase);
    if (phase == EnterPhase && !ObjectIsolated)
        ChangeObjectIsolation();
    DirtyToolWindow(TabletWindow);
}

// ---- Aligning

void AlignEvent(const TabletPoint& point) {
    static constexpr struct {
        int *X, *Y;
    } places[] = {{&AlignAX1, &AlignAY1}, {&AlignAX2, &AlignAY2}, {&AlignBX1, &AlignBY1},
                  {&AlignBX2, &AlignBY2}, {&AlignCX1, &AlignCY1}, {&AlignCX2, &AlignCY2}};

    if (TabletStep < LastAlignStep) {
        *places[TabletStep].X = point.X;
        *places[TabletStep].Y = point.Y;
        ++TabletStep;
    }
    Rotations->Visible = TabletStep == LastAlignStep;
}

void SetRotation() {
    TabletRotation = ButtonChoice;
    SetGooeyPhase(ChoosePhase);
    CallSlot(TheTabletSlots.WriteDefaults);
}

// ---- Entering vertices

void EnterVertex() {
    const TabletVertex place = CalcTabletXYZ(OnView1, OnView2);
    if (EnteredVertices.empty())
        CopyCurrentObject();
    EnteredVertices.push_back(AddVertex(place.X, place.Y, place.Z));
    ValidateView(0);
    BoxView(&ObjectView(0), ObjectRadius());
    DirtyModelWindows();
}

/// The user may have undone the vertex meanwhile, or made it a corner of something.
void DeleteLastVertex() {
    if (EnteredVertices.empty())
        return;
    Vertex* doomed = EnteredVertices.back();
    EnteredVertices.pop_back();
    for (const Vertex* vertex : EveryVertex(CurrentObject()))
        if (vertex == doomed) {
            MakeConnections();
            if (!doomed->Uses)
                DeleteVertex(doomed);
            DirtyModelWindows();
            return;
        }
}

void EnterEvent(int button, const TabletPoint& point) {
    if (button == 2) {
        DeleteLastVertex();
        TabletStep = 0;
    } else if (EnterMethodA) {
        if (button != 0)
            return;
        (TabletStep == 0 ? OnView1 : OnView2) = point;
        if (TabletStep == 1)
            EnterVertex();
        TabletStep = !TabletStep;
    } else if (button == 0) {
        if (TabletStep == 0)
            return; // there is no point yet that it could share
        (SharedPointOnView2 ? OnView1 : OnView2) = point;
        EnterVertex();
    } else {
        SharedPointOnView2 = button == 3;
        (SharedPointOnView2 ? OnView2 : OnView1) = point;
        TabletStep = 1;
    }
}

void FinishPoints(bool complete) {
    if (void (*callback)(const double(*)[3]) = Callback) {
        Callback = nullptr;
        callback(complete ? DigitisedPoints : nullptr);
    }
    CloseToolWindow(TabletWindow);
}

void EnterNEvent(const TabletPoint& point) {
    (TabletStep == 0 ? OnView1 : OnView2) = point;
    TabletStep = !TabletStep;
    if (TabletStep || DigitisedCount == WantedCount)
        return;
    const TabletVertex place = CalcTabletXYZ(OnView1, OnView2);
    double* stored = DigitisedPoints[DigitisedCount++];
    stored[0] = place.X;
    stored[1] = place.Y;
    stored[2] = place.Z;
    if (DigitisedCount == WantedCount)
        FinishPoints(true);
}

// ---- Events

/// The value of a valuator that is tied to the puck's buttons.
int TiedValue(int valuator, const char* name) {
    short value = 0;
    const int device = EventsPending() ? ReadEvent(value) : 0;
    if (device == valuator)
        return value;
    std::fprintf(stderr, "Bad queue, %s expected, got %ld\n", name, static_cast<long>(device));
    KillProgram(FatalEnd);
}

void TabletCancel() {
    switch (TabletPhase) {
    case AlignPhase:
        return SetGooeyPhase(ChoosePhase);
    case EnterNPhase:
        return FinishPoints(false);
    default:
        return CloseToolWindow(TabletWindow);
    }
}

void CheckTablet(int device, short value) {
    if (device == gl::KEYBD && value == ' ')
        return CloseToolWindow(TabletWindow);
    if (device < gl::BPAD0 || device > gl::BPAD3)
        return;
    const int x = TiedValue(gl::BPADX, "BPADX");
    const TabletPoint point = {x, TiedValue(gl::BPADY, "BPADY")};
    if (!value || TabletPhase == ChoosePhase)
        return;
    Trace("Tablet:%d,%d\n", point.X, point.Y);
    RingBell();
    if (TabletPhase == AlignPhase)
        AlignEvent(point);
    else if (TabletPhase == EnterPhase)
        EnterEvent(device - gl::BPAD0, point);
    else
        EnterNEvent(point);
    DirtyToolWindow(TabletWindow);
}

// ---- The window

const char* NextEntry() {
    if (EnterMethodA)
        return TabletStep ? "the vertex on the second view" : "the vertex on the first view";
    if (!TabletStep)
        return "a shared point";
    return SharedPointOnView2 ? "vertices on the first view" : "vertices on the second view";
}

void DrawTexts() {
    switch (TabletPhase) {
    case ChoosePhase:
        return DrawChooseText();
    case AlignPhase:
        return DrawAlignText(TabletStep);
    case EnterPhase:
        return DrawEnterText(static_cast<int>(EnteredVertices.size()), NextEntry());
    default:
        return DrawEnterNText(DigitisedCount);
    }
}

void ChangeTabletChoice() {
    if (ButtonChoice == 2)
        TabletCancel();
    else
        SetGooeyPhase(ButtonChoice == 0 ? AlignPhase : EnterPhase);
}

void ChangeMethodA(GadgetArg) {
    EnterMethodA = 1;
    EnterMethodB = 0;
    TabletStep = 0;
    DirtyToolWindow(TabletWindow);
}

void ChangeMethodB(GadgetArg) {
    EnterMethodA = 0;
    EnterMethodB = 1;
    TabletStep = 0;
    DirtyToolWindow(TabletWindow);
}

void BuildTablet() {
    static constexpr const char* choices[] = {"Align drawing", "Enter vertices", "Cancel"};
    static constexpr const char* rotations[] = {"Around X  (up and down)", "Around Y  (left to right)"};
    constexpr int methodBX = 140, beepsX = 280, buttonX = -128, buttonWidth = 120;
    AddBackdrop();
    Kirvo_AddGadget(DrawTexts, nullptr);
    for (auto& gadgets : GadgetsOf)
        gadgets.clear();
    GadgetsOf[ChoosePhase].push_back(
        AddButtons(0, ButtonsY, WindowWidth, 0, 3, choices, ChangeTabletChoice, nullptr, nullptr));
    Rotations = AddButtons(0, RotationsY, WindowWidth, 0, 2, rotations, SetRotation, nullptr, nullptr);
    for (const int phase : {AlignPhase, EnterPhase, EnterNPhase}) {
        auto& gadgets = GadgetsOf[phase];
        const int label = phase == EnterPhase ? DoneLabel : CancelLabel;
        gadgets.push_back(AddIntCheck(phase == EnterPhase ? beepsX : Margin, ChecksY, 0, 0, nullptr, BeepsLabel,
                                      nullptr, &SoundEffects));
        gadgets.push_back(AddIntButtons(buttonX, ButtonsY, buttonWidth, ButtonsOfGivenWidth, 1, &label, TabletCancel,
                                        nullptr, nullptr));
    }
    GadgetsOf[EnterPhase].push_back(
        AddIntCheck(Margin, ChecksY, 0, 0, nullptr, MethodALabel, ChangeMethodA, &EnterMethodA));
    GadgetsOf[EnterPhase].push_back(
        AddIntCheck(methodBX, ChecksY, 0, 0, nullptr, MethodBLabel, ChangeMethodB, &EnterMethodB));
    for (const int button : PuckButtons) {
        gl::qdevice(button);
        gl::tie(button, gl::BPADX, gl::BPADY);
    }
}

void FreeTablet() {
    ClearWindowLock();
    for (const int button : PuckButtons)
        gl::unqdevice(button);
    for (auto& gadgets : GadgetsOf)
        gadgets.clear();
    Rotations = nullptr;
    EnteredVertices.clear();
}

/// However the window was closed, who waits for points is told.
void TabletClosed() {
    if (void (*callback)(const double(*)[3]) = Callback) {
        Callback = nullptr;
        callback(nullptr);
    }
}

} // namespace

const ToolWindow TabletWindow = {
    .Title = "Digitiser",
    .Handle = &TabletBase,
    .Width = WindowWidth,
    .Height = WindowHeight,
    .Place = {.Opened = &TabletOpened, .X = &TabletX, .Y = &TabletY},
    .Build = BuildTablet,
    .Event = CheckTablet,
    .Close = FreeTablet,
    .Closed = TabletClosed,
    .ManualPage = "R_Digitising",
    .ManualName = "Digitising",
};

void DigitiseVertices(int count, void (*callback)(const double (*points)[3])) {
    if (count > MostDigitisedPoints) {
        ErrorMessage("Tried to digitise too many vertices...");
        KillProgram(FatalEnd);
    }
    const bool wasOpen = TabletBase != nullptr;
    if (!OpenToolWindow(TabletWindow) || wasOpen)
        return;
    EnteredVertices.clear();
    WantedCount = count;
    DigitisedCount = 0;
    Callback = callback;
    WindowScope scope(TabletBase);
    SetGooeyPhase(count ? EnterNPhase : ChoosePhase);
}
