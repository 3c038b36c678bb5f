#include "gooey/button.h"

#include "gooey/draw.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/misuse.h"
#include "gooey/redraw.h"
#include "gooey/window.h"

#include "base/memory.h"

#include "platform/drawing.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <string>

int ButtonChoice = 0;
int ButtonX = 0, ButtonY = 0, ButtonW = 0, ButtonH = 0;

namespace {

constexpr int LayoutBits = 3;
constexpr int GapBetweenButtons = 8;
/// Clock ticks until a held button acts again for the first time, and from then on.
constexpr int FirstRepeat = 33, NextRepeats = 5;

const GadgetFont& FontFor(int flags) {
    return FontOf((flags & ButtonsSmallFont) != 0);
}

/// How far a right-anchored group's buttons lie from where they were added.
int AnchorX(const ButtonGroup& group) {
    return group.RightAnchor ? std::max(CurrentWindow->Width + group.RightAnchor, group.MinX) : 0;
}

GadgetBox BoxOf(const Button& button) {
    int x = button.Group->RightAnchor ? AnchorX(*button.Group) + button.BaseX : button.X;
    return {x, AnchoredY(button.Y), button.W, button.H};
}

bool HasDrawnFace(const Button& button) {
    return !button.Label && (button.Flags & LayoutBits) == ButtonsOfGivenBoxes;
}

void DrawFaceByOwner(const Button& button, const GadgetBox& box, std::uint32_t textColour) {
    if (!button.Group->Callback)
        return;
    ButtonChoice = -1 - button.Index;
    ButtonX = box.X;
    ButtonY = box.Y;
    ButtonW = box.Width;
    ButtonH = box.Height;
    gl::cpack(textColour);
    button.Group->Callback();
}

void DrawButton(Gadget* member) {
    const Button& button = GadgetData<Button>(member);
    GadgetBox box = BoxOf(button);
    DrawButtonFace(box, button.On ? Red : button.Colour, button.Pressed);
    std::uint32_t textColour = ButtonTextColour(button.On, button.Pressed);
    if (HasDrawnFace(button))
        DrawFaceByOwner(button, box, textColour);
    else if (button.Label)
        FontFor(button.Flags)
            .Draw(box.X + button.TextX - button.X, box.Y + button.TextY - button.Y, button.Label, textColour);
}

void DrawGroup(Gadget* head) {
    const ButtonGroup& group = GadgetData<ButtonGroup>(head);
    for (Gadget* member = head->Next; member; member = member->Next) {
        Button& button = GadgetData<Button>(member);
        button.On = group.Selected && *group.Selected == button.Index;
    }
}

int CallGroup(Gadget* head, int index) {
    const ButtonGroup& group = GadgetData<ButtonGroup>(head);
    if (!group.Callback)
        return 1;
    return CallOwner(head, [&] {
        ButtonChoice = index;
        group.Callback();
    });
}

void TrackButton(Gadget* head, Gadget* member) {
    const ButtonGroup& group = GadgetData<ButtonGroup>(head);
    Button& button = GadgetData<Button>(member);
    bool repeats = group.Flags & ButtonsAutoRepeat;
    RepeatClock clock(FirstRepeat, NextRepeats);
    int remains = 1;
    int released = TrackPress(
        BoxOf(button),
        [&](bool pressed) {
            button.Pressed = pressed;
            if (remains)
                DrawButton(member);
        },
        [&] {
            if (repeats && remains && clock.Due())
                remains = CallGroup(head, button.Index);
        });
    button.Pressed = 0;
    if (!released || !remains)
        return;
    if (group.Selected)
        *group.Selected = button.Index;
    if (!repeats)
        remains = CallGroup(head, button.Index);
    if (remains)
        DrawInFront(head, [head] { RedrawGooey(head); });
}

int ClickGroup(Gadget* head) {
    for (Gadget* member = head->Next; member && member->Visible; member = member->Next)
        if (MouseInGadgetBox(BoxOf(GadgetData<Button>(member)))) {
            TrackButton(head, member);
            return 1;
        }
    return 0;
}

void PressButton(Gadget* member) {
    const Button& button = GadgetData<Button>(member);
    const ButtonGroup& group = *button.Group;
    if (group.Selected)
        *group.Selected = button.Index;
    if (!group.Callback)
        return;
    const int remains = CallOwner(member, [&] {
        ButtonChoice = button.Index;
        group.Callback();
    });
    if (remains)
        RedrawCurrentWindow();
}

void FreeButton(Gadget* member) {
    FreeOwnedText(GadgetData<Button>(member).Label);
}

void DescribeButton(const Gadget* member, GadgetDescription& description) {
    const Button& button = GadgetData<Button>(member);
    if (button.Label)
        description.Label = button.Label;
    description.Box = BoxOf(button);
    description.On = button.Group->Selected && *button.Group->Selected == button.Index;
}

/// The head of a group is no button; its members tell of themselves.
constexpr GadgetKind GroupKind = {"button", nullptr, nullptr, nullptr};
constexpr GadgetKind ButtonKind = {
    .Name = "button", .Describe = DescribeButton, .Wheel = nullptr, .ThumbY = nullptr, .Press = PressButton};

/// Where the buttons of a group go: the first one's place and the step from one to the next.
struct Row {
    int X, Y, ButtonWidth, StepX, StepY;
};

[[noreturn]] void EndForWidth(int count, const char* const* labels) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += std::string(labels[i]) + " ";
    EndForMisuse("Buttons too wide: (Text=%s)\a\n", text.c_str());
}

int WidestLabel(const GadgetFont& font, int count, const char* const* labels) {
    int widest = 0;
    for (int i = 0; i < count; ++i)
        widest = std::max(widest, font.Width(labels[i]));
    return widest;
}

int PaddingOf(int flags) {
    return flags & ButtonsNarrow ? 8 : 24;
}

Row LayOut(int x, int y, int width, int flags, int count, const char* const* labels, const int* geometry) {
    const GadgetFont& font = FontFor(flags);
    int padding = PaddingOf(flags);
    bool ofTextWidth = (flags & LayoutBits) == ButtonsOfTextWidth;
    int buttonWidth = ofTextWidth ? WidestLabel(font, count, labels) + padding : width;
    if (flags & ButtonsStacked)
        return {x + (width - buttonWidth) / 2, y, buttonWidth, 0, geometry ? geometry[0] : 2 * font.ButtonHeight};
    if (!ofTextWidth)
        return {x, y, buttonWidth, buttonWidth + padding, 0};
    if (width == 0)
        return {x, y, buttonWidth, buttonWidth + GapBetweenButtons, 0};
    int space = width - count * buttonWidth;
    int gap = space / std::max(count, 1);
    if (space < 0)
        EndForWidth(count, labels);
    return {x + gap / 2, y, buttonWidth, buttonWidth + gap, 0};
}

void PlaceInRow(Button& button, const Row& row, const GadgetFont& font) {
    button.X = row.X + button.Index * row.StepX;
    button.Y = row.Y + button.Index * row.StepY;
    button.W = row.ButtonWidth;
    button.H = font.ButtonHeight;
    button.TextX = button.X + (button.W - font.Width(button.Label)) / 2;
    button.TextY = button.Y + 8;
}

void PlaceInBox(Button& button, const int* box, const GadgetFont& font) {
    button.X = box[0];
    button.Y = box[1];
    button.W = box[2];
    button.H = box[3];
    button.TextX = button.X + (button.Label ? (button.W - font.Width(button.Label)) / 2 : 0);
    button.TextY = button.Y + (button.H - font.TextHeight) / 2 + 2;
}

} // namespace

Gadget* AddButtons(int x, int y, int width, int flags, int count, const char* const* labels, void (*callback)(),
                   int* selected, const int* geometry) {
    bool ofGivenBoxes = (flags & LayoutBits) == ButtonsOfGivenBoxes && geometry;
    const GadgetFont& font = FontFor(flags);
    Row row = ofGivenBoxes ? Row{} : LayOut(x, y, width, flags, count, labels, geometry);

    Gadget* head = CreateGadget<ButtonGroup>();
    ButtonGroup& group = GadgetData<ButtonGroup>(head);
    group = {flags, count, selected, callback, 0, INT_MIN};
    head->DrawFn = DrawGroup;
    head->ClickFn = ClickGroup;
    head->Kind = &GroupKind;
    int firstX = ofGivenBoxes ? geometry[0] : row.X;
    if (firstX < 0) {
        group.RightAnchor = firstX;
        bool geometryIsLimit = geometry && !ofGivenBoxes && !(flags & ButtonsStacked);
        if (geometryIsLimit)
            group.MinX = geometry[0];
    }

    Gadget** link = &head->Next;
    for (int i = 0; i < count; ++i) {
        Gadget* member = *link = NewGadget<Button>();
        link = &member->Next;
        member->DrawFn = DrawButton;
        member->FreeFn = FreeButton;
        member->Kind = &ButtonKind;
        Button& button = GadgetData<Button>(member);
        button.Flags = flags;
        button.Index = i;
        button.Group = &group;
        button.Colour = GadgetColour();
        if (labels && labels[i])
            button.Label = CopyOfString(labels[i]);
        if (ofGivenBoxes)
            PlaceInBox(button, geometry + 4 * i, font);
        else
            PlaceInRow(button, row, font);
        button.BaseX = button.X - firstX;
        button.BaseTextX = button.TextX - firstX;
        GooeyRight = button.X + button.W + 8;
    }
    return head;
}

void SetButtonsMinX(Gadget* head, int x) {
    GadgetData<ButtonGroup>(head).MinX = x;
}

void MoveButtons(Gadget* head, int x) {
    const int offset = head->Next ? x - GadgetData<Button>(head->Next).X : 0;
    for (Gadget* member = head->Next; member; member = member->Next) {
        GadgetData<Button>(member).X += offset;
        GadgetData<Button>(member).TextX += offset;
    }
}

int SetButtonsNarrow(Gadget* head, bool narrow) {
    ButtonGroup& group = GadgetData<ButtonGroup>(head);
    const int flags = (group.Flags & ~ButtonsNarrow) | (narrow ? ButtonsNarrow : 0);
    const int wider = PaddingOf(flags) - PaddingOf(group.Flags);
    group.Flags = flags;
    for (Gadget* member = head->Next; member; member = member->Next) {
        Button& button = GadgetData<Button>(member);
        const int offset = button.Index * wider;
        button.X += offset;
        button.BaseX += offset;
        button.TextX += offset + wider / 2;
        button.BaseTextX += offset + wider / 2;
        button.W += wider;
    }
    return group.Count * (PaddingOf(0) - PaddingOf(flags));
}
