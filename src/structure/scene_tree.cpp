#include "structure/scene_tree.h"

#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/pointer.h"
#include "gooey/program_pictures.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/window.h"
#include "interaction/scene_selection.h"
#include "store/accessors.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/walks.h"
#include "views/display_flags.h"
#include "views/traversal.h"
#include "views/viewports.h"

#include <algorithm>
#include <string>
#include <unordered_map>

int SceneHit;

namespace {

constexpr int FirstX = 8, FirstY = 33;
constexpr int BranchHeight = 22, RowStep = 26, ListGap = 13, ColumnGap = 16;
constexpr int RoomForEye = 30, RoomWithoutEye = 4;
constexpr int LabelMargin = 8, ExpandRoom = 22, ExpandSize = 17;
/// A selected branch has frames around its box as wide as this.
constexpr int FrameWidth = 3;
/// Left free below the last box and at the right.
constexpr int ContentMargin = 16;
constexpr int WidestLabel = 300;
constexpr std::size_t MostShownLabels = 50000;

constexpr std::uint32_t GroupColour = 0xFFFFFF, ObjectColour = 0xFFCC44, FadedLine = 0x7F7F7F;

/// A label as it is shown.
struct ShownLabel {
    std::string Text;
    int Width;
};

const ShownLabel& ShownLabelOf(const Branch* branch) {
    static std::unordered_map<std::string, ShownLabel> labels;
    static std::string name;
    name = LabelOfBranch(branch);
    auto found = labels.find(name);
    if (found != labels.end())
        return found->second;
    if (labels.size() >= MostShownLabels)
        labels.clear();
    std::string text = ShortenedName(SmallFont, name, WidestLabel);
    const int width = SmallWidth(text.c_str());
    return labels.emplace(name, ShownLabel{std::move(text), width}).first->second;
}

bool ShowsChildren(const Branch* branch) {
    return branch->FirstChild && !branch->Collapsed;
}

// ---- layout
/// Gives the branches of a list their sizes; returns the width of their column.
int MeasureScene(Branch* first) {
    int column = 0;
    for (Branch* branch : Along<&Branch::Next>(first)) {
        branch->BoxWidth = ShownLabelOf(branch).Width + 2 * LabelMargin;
        branch->BoxX = Mergeing ? RoomWithoutEye : RoomForEye;
        branch->Width = branch->BoxWidth + branch->BoxX + (branch->FirstChild ? ExpandRoom : 0);
        branch->Height = BranchHeight;
        column = std::max(column, branch->Width);
    }
    return column;
}

/// A list that is being laid out, from its branch that is next.
struct OpenList {
    Branch* Next;
    int X, Column;
};

OpenList OpenListAt(int x, Branch* first) {
    return {first, x, MeasureScene(first)};
}

/// No recursion: a tree may be as deep as a file makes it.
void LayoutBranches(Branch* first, int& width, int& height) {
    std::vector<OpenList> lists = {OpenListAt(FirstX, first)};
    int y = FirstY;
    while (!lists.empty()) {
        OpenList& list = lists.back();
        Branch* branch = list.Next;
        if (!branch) {
            y -= ListGap;
            lists.pop_back();
            if (!lists.empty())
                y += RowStep;
            continue;
        }
        list.Next = branch->Next;
        branch->X = list.X;
        branch->Y = y;
        width = std::max(width, list.X + list.Column);
        height = std::max(height, y);
        if (ShowsChildren(branch))
            lists.push_back(OpenListAt(list.X + list.Column + ColumnGap, branch->FirstChild));
        else
            y += RowStep;
    }
}

/// Calls visit(branch, depth) with each branch that the tree shows, each before what hangs below it, until one call
/// returns true.
template <class Visit>
void ForEachShown(Branch* first, Visit visit) {
    std::vector<Branch*> above;
    for (Branch* branch = first; branch;) {
        if (visit(branch, above.size()))
            return;
        if (ShowsChildren(branch)) {
            above.push_back(branch);
            branch = branch->FirstChild;
            continue;
        }
        while (!branch->Next && !above.empty()) {
            branch = above.back();
            above.pop_back();
        }
        branch = branch->Next;
    }
}

// ---- places
/// The part of the window that shows the tree, and where in the window the tree's upper left corner is.
struct {
    GadgetBox Box;
    int Left, Top;
} Area;

GadgetBox BoxOf(const Branch* branch, int x, int y) {
    return {x + branch->BoxX, y, branch->BoxWidth, BranchHeight};
}

GadgetBox EyeBoxOf(int x, int y) {
    return {x + 4, y + 2, EyeSize, EyeSize};
}

GadgetBox ExpandBoxOf(const GadgetBox& box) {
    return {box.X + box.Width + 4, box.Y + 3, ExpandSize, ExpandSize};
}

/// The part of a box that is in sight.
GadgetBox InSight(const GadgetBox& box) {
    const int left = std::max(box.X, Area.Box.X), bottom = std::max(box.Y, Area.Box.Y);
    const int right = std::min(box.X + box.Width, Area.Box.X + Area.Box.Width);
    const int top = std::min(box.Y + box.Height, Area.Box.Y + Area.Box.Height);
    return {left, bottom, right - left, top - bottom};
}

// ---- drawing
std::uint32_t FadedColour(std::uint32_t rgb, bool faded) {
    return faded ? (rgb >> 1) & 0x7F7F7F : rgb;
}

void DrawEye(const Branch* branch, int x, int y, bool dim) {
    const GadgetBox box = EyeBoxOf(x, y);
    if (branch->Visible)
        (dim ? DrawDimOpenEye : DrawOpenEye)(box.X, box.Y);
    else
        (dim ? DrawDimClosedEye : DrawClosedEye)(box.X, box.Y);
}

void DrawExpandBox(const Branch* branch, const GadgetBox& box, bool faded) {
    SetColour(faded ? FadedLine : White);
    const GadgetBox expand = ExpandBoxOf(box);
    DrawFrame(expand.X, expand.Y, ExpandSize, ExpandSize, ShadeFull);
    if (branch->Collapsed)
        return;
    const int middle = box.Y + BranchHeight / 2;
    for (const int x : {expand.X + 3, expand.X + 8}) {
        DrawLine(x, middle - 4, x + 4, middle, ShadeFull);
        DrawLine(x, middle + 4, x + 4, middle, ShadeFull);
    }
}

void FrameBox(const GadgetBox& box, int distance, std::uint32_t rgb) {
    SetColour(rgb);
    DrawFrame(box.X - distance, box.Y - distance, box.Width + 2 * distance, box.Height + 2 * distance, ShadeFull);
}

void DrawBranch(const Branch* branch, int x, int y, bool dim, bool faded) {
    if (!Mergeing)
        DrawEye(branch, x, y, dim);
    const GadgetBox box = BoxOf(branch, x, y);
    SetColour(FadedColour(branch->Object ? ObjectColour : GroupColour, faded));
    DrawRaisedBox(box.X, box.Y, box.Width, box.Height);
    SmallText(box.X + LabelMargin, box.Y + 7, ShownLabelOf(branch).Text.c_str(), Black);
    if (branch->FirstChild)
        DrawExpandBox(branch, box, faded);
    if (branch == SelectedBranch()) {
        FrameBox(box, 2, Red);
        FrameBox(box, 3, Red);
    } else if (branch->Selected && !NoSceneSelection) {
        FrameBox(box, 2, White);
    }
}

/// A line of the tree, left out where none of it is in sight: the tree may be far longer than what can be drawn.
void DrawConnector(int x1, int y1, int x2, int y2) {
    const GadgetBox part = InSight({std::min(x1, x2), std::min(y1, y2), std::abs(x2 - x1) + 1, std::abs(y2 - y1) + 1});
    if (part.Width > 0 && part.Height > 0)
        DrawLine(part.X, part.Y, part.X + part.Width - 1, part.Y + part.Height - 1, ShadeFull);
}

/// The middle of a branch's box, in the window, up.
int MiddleOf(const Branch* branch) {
    return Area.Top - branch->Y + BranchHeight / 2;
}

void DrawConnectors(const Branch* branch, bool dim) {
    SetColour(dim ? FadedLine : White);
    const int x = Area.Left + branch->X, middle = MiddleOf(branch);
    if (ShowsChildren(branch))
        DrawConnector(x + branch->Width + 4, middle, Area.Left + branch->FirstChild->X, middle);
    if (const Branch* next = branch->Next) {
        DrawConnector(x - 4, middle, x - 4, MiddleOf(next));
        DrawConnector(x - 4, MiddleOf(next), x, MiddleOf(next));
    }
}

// ---- clicks
int PointerIn(const GadgetBox& box) {
    return MouseInBox(box.X, box.Y, box.Width, box.Height);
}

void ToggleEye(Branch* branch) {
    branch->Visible = !branch->Visible;
    WorkSaved = 0;
    if (HideScene)
        DirtyModelWindows();
    DirtyCurrentWindow();
}

void ChangeSelectionOf(Branch* branch) {
    ScanScene(branch, branch->Selected ? SceneDeselector : SceneSelector);
    if (!Mergeing) {
        SelectedBranch() = nullptr;
        NoSceneSelection = !AnySceneSelected();
        DirtyModelWindows();
    }
    DirtyCurrentWindow();
}

void ClickBranch(Branch* branch, int x, int y) {
    const GadgetBox box = BoxOf(branch, x, y);
    if (!Mergeing && MouseX < x + RoomForEye) {
        ToggleEye(branch);
    } else if (MouseX < box.X + box.Width) {
        SceneHit = SceneHitBox;
        if (LeftShift || RightShift)
            ChangeSelectionOf(branch);
        else
            SelectScene(branch);
    } else if (branch->FirstChild && PointerIn(ExpandBoxOf(box))) {
        branch->Collapsed = !branch->Collapsed;
        DirtyCurrentWindow();
    }
}

/// The branch, or the nearest above it that is not collapsed away.
Branch* ShownHolderOf(Branch* branch) {
    Branch* shown = branch;
    for (Branch* above = ParentOfBranch(branch); above; above = ParentOfBranch(above))
        if (above->Collapsed)
            shown = above;
    return shown;
}

} // namespace

const char* LabelOfBranch(const Branch* branch) {
    const char* name = branch->Object ? branch->Object->Name : branch->Name;
    return name ? name : "";
}

Gadget* AddSceneTree(const SceneTreeOwner& owner) {
    Gadget* scroll = AddScrollWindow({.Width = CurrentWindow->Width,
                                      .Height = CurrentWindow->Height,
                                      .Flags = ScrollHorizontal | ScrollVertical | ScrollBorder,
                                      .StepX = RowStep,
                                      .StepY = RowStep,
                                      .Configure = owner.Configure});
    ScrollOf(scroll).DrawContents = owner.Draw;
    ScrollOf(scroll).ListItems = owner.ListItems;
    return scroll;
}

void ConfigureScene(Branch* first, int& width, int& height) {
    width = height = 0;
    if (first)
        LayoutBranches(first, width, height);
    width += ContentMargin;
    height += ContentMargin;
}

void UseSceneArea(const Gadget* scroll) {
    const ScrollWindow& s = ScrollOf(scroll);
    Area.Box = {s.InnerX, s.InnerY, s.InnerW, s.InnerH};
    Area.Left = s.InnerX - s.HOffset;
    Area.Top = s.InnerY + s.InnerH + s.VOffset;
}

int BranchXY(const Branch* branch, int& x, int& y) {
    x = Area.Left + branch->X;
    y = Area.Top - branch->Y;
    const GadgetBox part = InSight({x, y - FrameWidth, branch->Width + FrameWidth, BranchHeight + 2 * FrameWidth});
    return part.Width > 0 && part.Height > 0;
}

void SceneDrawer(Branch* first, int dim) {
    // Whether what hangs at each depth is dim.
    std::vector<char> dims = {dim != 0};
    ForEachShown(first, [&](const Branch* branch, std::size_t depth) {
        const bool isDim = dims[depth] != 0, faded = HideScene && (isDim || !branch->Visible);
        int x, y;
        if (BranchXY(branch, x, y))
            DrawBranch(branch, x, y, isDim, faded);
        DrawConnectors(branch, isDim);
        dims.resize(depth + 1);
        dims.push_back(faded);
        return false;
    });
    SetColour(White);
}

void DrawSceneTree(Branch* first, const Gadget* scroll) {
    UseSceneArea(scroll);
    const ClipScope clip(Area.Box.X, Area.Box.Y, Area.Box.Width, Area.Box.Height);
    SetColour(BackgroundOf(CurrentWindow));
    DrawBox(Area.Box.X, Area.Box.Y, Area.Box.Width, Area.Box.Height, ShadeFull);
    SceneDrawer(first, 0);
}

int SceneSelect(Branch* first) {
    if (!PointerIn(Area.Box))
        return 0;
    ForEachShown(first, [](Branch* branch, std::size_t) {
        int x, y;
        if (!BranchXY(branch, x, y) || !PointerIn({x, y, branch->Width, BranchHeight}))
            return false;
        SceneHit = SceneHitMark;
        ClickBranch(branch, x, y);
        return true;
    });
    return SceneHit;
}

Branch* NeighbourInTree(Branch* first, const Branch* branch, int direction) {
    branch = ShownHolderOf(const_cast<Branch*>(branch));
    Branch *before = nullptr, *found = nullptr;
    bool passed = false;
    ForEachShown(first, [&](Branch* each, std::size_t) {
        if (direction > 0 ? passed : each == branch)
            found = direction > 0 ? each : before;
        passed = passed || each == branch;
        before = each;
        return found || (passed && direction < 0);
    });
    return found;
}

void ScrollToBranch(Gadget* scroll, Branch* branch) {
    ScrollWindow& s = ScrollOf(scroll);
    const Branch* shown = ShownHolderOf(branch);
    constexpr int margin = FrameWidth + 2;
    const int top = shown->Y - BranchHeight - margin, bottom = shown->Y + margin;
    const int left = shown->X - margin, right = shown->X + shown->Width + margin;
    s.VOffset = std::max(0, std::min(std::max(s.VOffset, bottom - s.InnerH), top));
    s.HOffset = std::max(0, std::min(std::max(s.HOffset, right - s.InnerW), left));
    ConfigureScroll(scroll, -1, -1, s.W, s.H, s.ContentW, s.ContentH);
}

void ListSceneItems(Branch* first, const Gadget* scroll, std::vector<GadgetItem>& items) {
    UseSceneArea(scroll);
    ForEachShown(first, [&](const Branch* branch, std::size_t) {
        int x, y;
        if (!BranchXY(branch, x, y))
            return false;
        const std::string label = LabelOfBranch(branch);
        const auto add = [&](const std::string& name, const GadgetBox& box, bool on) {
            const GadgetBox part = InSight(box);
            if (part.Width > 0 && part.Height > 0)
                items.push_back({name, part, on});
        };
        const GadgetBox box = BoxOf(branch, x, y);
        add(label, box, branch->Selected != 0);
        if (!Mergeing)
            add(label + " eye", EyeBoxOf(x, y), branch->Visible != 0);
        if (branch->FirstChild)
            add(label + " expand", ExpandBoxOf(box), !branch->Collapsed);
        return false;
    });
}
