#include "views/structure_preview.h"

#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/label.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/text_filters.h"
#include "gooey/text_input.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "platform/events.h"
#include "platform/windows.h"

#include <algorithm>
#include <vector>

namespace {

enum EntryKind { ObjectEntry, NodeEntry, LodEntry, SubObjectEntry, EntryKindCount };

struct KindLook {
    std::uint32_t Box, Text;
};

constexpr std::uint32_t White = 0xFFFFFF, Black = 0;
constexpr KindLook Looks[EntryKindCount] = {{0xFF, White}, {0xFFFFFF, Black}, {0xFF4444, White}, {0x44FF44, Black}};

/// One box of the tree. A child's boxes hang below it.
struct Entry {
    EntryKind Kind;
    const char* Name;
    std::vector<Entry> Children;
    int X = 0, Depth = 0; // left edge from the tree's, generations below the root
};

Entry Demonstration() {
    const auto subObject = [](const char* name) { return Entry{SubObjectEntry, name, {}}; };
    const Entry near = {LodEntry, "Near", {subObject("Driver"), subObject("Dash")}};
    const Entry far = {LodEntry, "Far", {subObject("Driver")}};
    const Entry levels = {NodeEntry, "Node", {near, far}};
    const Entry parts = {NodeEntry, "Node", {subObject("Body"), subObject("Wheels"), subObject("Glass")}};
    return {ObjectEntry, "Car", {levels, parts}};
}

constexpr int WindowLeft = 200, WindowRight = 700, WindowBottom = 600, WindowTop = 950;
constexpr int LeastWidth = 300, LeastHeight = 250;
constexpr int TreeBottom = 120;
constexpr int BoxWidth = 60, BoxHeight = 25, SiblingStep = 70, GenerationStep = 45;
constexpr int Margin = 12, ScrollStep = 20;

/// The open window; all of it goes when it is shut.
struct Preview {
    Window* Target = nullptr;
    Gadget* Scroll = nullptr;
    Entry Tree;
    int Columns = 0, Generations = 0;
    std::vector<Gadget*> Fields[EntryKindCount];
    Gadget* NameInputs[EntryKindCount] = {};
};

Preview Shown;

// What the fields edit; nobody reads it.
char NameTexts[EntryKindCount][64], SoundText[64], DistanceText[32];
int BillboardFlag, BackfaceFlag;

/// Gives every box its place: leaves side by side, the others in the middle above their children.
void LayOut(Entry& entry, int depth) {
    entry.Depth = depth;
    Shown.Generations = std::max(Shown.Generations, depth + 1);
    if (entry.Children.empty()) {
        entry.X = SiblingStep * Shown.Columns++;
        return;
    }
    for (Entry& child : entry.Children)
        LayOut(child, depth + 1);
    entry.X = (entry.Children.front().X + entry.Children.back().X) / 2;
}

int ContentWidth() {
    return Shown.Columns * SiblingStep - (SiblingStep - BoxWidth) + 2 * Margin;
}

int ContentHeight() {
    return (Shown.Generations - 1) * GenerationStep + BoxHeight + 2 * Margin;
}

/// The lower left corner of the whole content in the window, the scrolling taken into account.
struct Origin {
    int X, Top;

    int Left(const Entry& entry) const { return X + Margin + entry.X; }

    int Bottom(const Entry& entry) const { return Top - Margin - entry.Depth * GenerationStep - BoxHeight; }
};

Origin OriginOfTree() {
    const ScrollWindow& s = ScrollOf(Shown.Scroll);
    return {s.InnerX - s.HOffset, s.InnerY + s.InnerH + s.VOffset};
}

void DrawBranches(const Entry& entry, const Origin& origin) {
    if (entry.Children.empty())
        return;
    const auto middle = [&](const Entry& box) { return origin.Left(box) + BoxWidth / 2; };
    const int bar = origin.Bottom(entry) - (GenerationStep - BoxHeight) / 2;
    SetColour(White);
    DrawLine(middle(entry), origin.Bottom(entry), middle(entry), bar, ShadeFull);
    DrawLine(middle(entry.Children.front()), bar, middle(entry.Children.back()), bar, ShadeFull);
    for (const Entry& child : entry.Children)
        DrawLine(middle(child), bar, middle(child), origin.Bottom(child) + BoxHeight, ShadeFull);
}

void DrawEntry(const Entry& entry, const Origin& origin) {
    DrawBranches(entry, origin);
    const int x = origin.Left(entry), y = origin.Bottom(entry);
    SetColour(Looks[entry.Kind].Box);
    DrawRaisedBox(x, y, BoxWidth, BoxHeight);
    SmallText(x + (BoxWidth - SmallWidth(entry.Name)) / 2, y + 8, entry.Name, Looks[entry.Kind].Text);
    for (const Entry& child : entry.Children)
        DrawEntry(child, origin);
}

void DrawTree(int x, int y, int width, int height, int, int) {
    ClipScope clip(x, y, width, height);
    SetColour(White);
    DrawBox(x, y, width, height, ShadeLowered);
    DrawEntry(Shown.Tree, OriginOfTree());
}

void ConfigureTree(Gadget* gadget) {
    ConfigureScroll(gadget, 0, TreeBottom, CurrentWindow->Width, CurrentWindow->Height - TreeBottom, ContentWidth(),
                    ContentHeight());
}

const Entry* EntryUnderPointer(const Entry& entry, const Origin& origin) {
    if (MouseInBox(origin.Left(entry) - 1, origin.Bottom(entry) - 1, BoxWidth + 1, BoxHeight + 1))
        return &entry;
    for (const Entry& child : entry.Children)
        if (const Entry* found = EntryUnderPointer(child, origin))
            return found;
    return nullptr;
}

void ShowFields(const Entry& entry) {
    for (int kind = 0; kind < EntryKindCount; ++kind)
        for (Gadget* gadget : Shown.Fields[kind])
            gadget->Visible = kind == entry.Kind;
    for (Gadget* input : Shown.NameInputs)
        if (input)
            DeactivateText(input);
    if (Gadget* input = Shown.NameInputs[entry.Kind])
        ChangeText(input, entry.Name);
    DirtyCurrentWindow();
}

Gadget* AddField(int y, int width, const char* label, const char* initial, char* buffer, int size, TextFilter filter) {
    Gadget* gadget = AddTextInput({.X = Margin,
                                   .Y = y,
                                   .Width = width,
                                   .Flags = TextSmallFont,
                                   .Label = label,
                                   .Text = initial,
                                   .Buffer = buffer,
                                   .Size = size,
                                   .Filter = filter});
    DeactivateText(gadget);
    return gadget;
}

Gadget* AddNameField(EntryKind kind, const char* label) {
    Shown.NameInputs[kind] = AddField(82, 300, label, nullptr, NameTexts[kind], sizeof NameTexts[kind], nullptr);
    return Shown.NameInputs[kind];
}

/// The example fields of all kinds, hidden until a box is clicked.
void AddFields() {
    Shown.Fields[ObjectEntry] = {
        AddNameField(ObjectEntry, "Object"),
        AddField(48, 300, "Emits sound", "EngineNoise.aiff", SoundText, sizeof SoundText, nullptr),
    };
    Shown.Fields[NodeEntry] = {AddText(Margin, 94, "Node attributes:", 0)};
    Shown.Fields[LodEntry] = {
        AddNameField(LodEntry, "Lod"),
        AddText(Margin, 60, "contains 1234 polygons", 0),
        AddField(20, 300, "Lod switches at", "1000.0", DistanceText, sizeof DistanceText, FPFilter),
    };
    Shown.Fields[SubObjectEntry] = {
        AddNameField(SubObjectEntry, "Sub object"),
        AddText(Margin, 60, "contains 1234 polygons", 0),
        AddText(Margin, 28, "Attributes:", 0),
        AddCheckBox(100, 28, 0, CheckSmallFont, nullptr, "Billboard", nullptr, &BillboardFlag),
        AddCheckBox(210, 28, 0, CheckSmallFont, nullptr, "Backface", nullptr, &BackfaceFlag),
    };
    for (const std::vector<Gadget*>& fields : Shown.Fields)
        for (Gadget* gadget : fields)
            gadget->Visible = 0;
}

void PreviewEvent(int device, short value) {
    if (device == gl::KEYBD && value == EscapeCharacter)
        CloseCurrentWindow();
    if (device != gl::LEFTMOUSE || !value)
        return;
    const ScrollWindow& s = ScrollOf(Shown.Scroll);
    if (!MouseInBox(s.InnerX - 1, s.InnerY - 1, s.InnerW + 1, s.InnerH + 1))
        return;
    if (const Entry* entry = EntryUnderPointer(Shown.Tree, OriginOfTree()))
        ShowFields(*entry);
}

void ForgetPreview() {
    Shown = {};
}

} // namespace

void OpenStructurePreview() {
    if (Shown.Target) {
        WindowScope scope(Shown.Target);
        gl::winpop();
        return;
    }
    PushWindow();
    gl::prefposition(WindowLeft, WindowRight, WindowBottom, WindowTop);
    Shown.Target = OpenWindow("The future of the object structure / scene builder...", WindowDoubleBuffered, 0, nullptr,
                              nullptr, PreviewEvent, ForgetPreview, 0, MainWindow);
    gl::minsize(LeastWidth, LeastHeight);
    gl::winconstraints();
    Shown.Tree = Demonstration();
    LayOut(Shown.Tree, 0);
    AddBackdrop();
    Shown.Scroll = AddScrollWindow({.X = 0,
                                    .Y = TreeBottom,
                                    .Width = CurrentWindow->Width,
                                    .Height = CurrentWindow->Height - TreeBottom,
                                    .Flags = ScrollHorizontal | ScrollVertical,
                                    .ContentWidth = ContentWidth(),
                                    .ContentHeight = ContentHeight(),
                                    .StepX = ScrollStep,
                                    .StepY = ScrollStep,
                                    .Configure = ConfigureTree,
                                    .Draw = DrawTree});
    AddFields();
    PopWindow();
}
