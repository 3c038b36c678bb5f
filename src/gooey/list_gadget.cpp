#include "gooey/list_gadget.h"

#include "gooey/drag.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/list_rows.h"
#include "gooey/modal.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/window.h"

#include "platform/system.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

constexpr long DoubleClickTicks = 50;
/// How far a pressed row is dragged before it comes along.
constexpr int DragThreshold = 4;
constexpr int ShadeSmallText = 12, ShadeDim = 8;

/// The measures of the two forms of rows, in pixels.
struct RowForm {
    int Height;
    /// Above the first row and below the last.
    int Pad;
    /// The bar behind a row that is on, from the row's bottom.
    int BarBottom, BarHeight;
    int Baseline;
    int TextX;
    int Font;
    int ScrollStep;
};

constexpr RowForm NormalRows = {24, 1, 1, 21, 6, 6, NormalFont, 6};
constexpr RowForm SmallRows = {19, 0, 1, 17, 4, 4, SmallFont, 2};

struct List {
    ListSpec Spec;
    const RowForm* Form = nullptr;
    std::vector<ListRow> Rows;
    TypedPrefix Typed;
    long LastClick = 0;
    int LastClicked = -1;
    /// The row that a drag would move another one before; -1: none is dragged.
    int DropBefore = -1;
};

List& ListOf(const Gadget* gadget) {
    return *static_cast<List*>(ScrollOf(gadget).Rows);
}

int CountOf(const List& list) {
    return static_cast<int>(list.Rows.size());
}

const ListRow& RowAt(const List& list, int row) {
    return list.Rows[static_cast<std::size_t>(row)];
}

bool SameRow(const ListRow& a, const ListRow& b) {
    return a.Record || b.Record ? a.Record == b.Record : a.Label == b.Label;
}

int FirstOn(const std::vector<ListRow>& rows) {
    auto on = std::find_if(rows.begin(), rows.end(), [](const ListRow& row) { return row.On; });
    return on == rows.end() ? -1 : static_cast<int>(on - rows.begin());
}

int IndexOf(const std::vector<ListRow>& rows, const ListRow& wanted, int likely) {
    if (likely < static_cast<int>(rows.size()) && SameRow(rows[static_cast<std::size_t>(likely)], wanted))
        return likely;
    auto found = std::find_if(rows.begin(), rows.end(), [&](const ListRow& row) { return SameRow(row, wanted); });
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

// ---- places
int TopOf(const Gadget* gadget, int row) {
    const ScrollWindow& s = ScrollOf(gadget);
    const RowForm& form = *ListOf(gadget).Form;
    return s.InnerY + s.InnerH + s.VOffset - form.Pad - row * form.Height;
}

GadgetBox BoxOf(const Gadget* gadget, int row) {
    const ScrollWindow& s = ScrollOf(gadget);
    int height = ListOf(gadget).Form->Height;
    return {s.InnerX, TopOf(gadget, row) - height, s.InnerW, height};
}

/// The part of a box that shows.
GadgetBox Visible(const Gadget* gadget, const GadgetBox& box) {
    const ScrollWindow& s = ScrollOf(gadget);
    int bottom = std::max(box.Y, s.InnerY), top = std::min(box.Y + box.Height, s.InnerY + s.InnerH);
    return {box.X, bottom, box.Width, top - bottom};
}

GadgetBox BoxOfMark(const Gadget* gadget, const ListMark& mark, int x, int row) {
    GadgetBox box = BoxOf(gadget, row);
    return {x, box.Y, mark.Width, box.Height};
}

int FirstMarkX(const Gadget* gadget) {
    const List& list = ListOf(gadget);
    return ScrollOf(gadget).InnerX + (list.Spec.SmallRows ? 0 : list.Form->TextX / 2);
}

RowRange RowsThatShow(const Gadget* gadget) {
    const List& list = ListOf(gadget);
    return VisibleRows(gadget, list.Form->Height, CountOf(list));
}

int ContentHeight(const List& list) {
    return CountOf(list) * list.Form->Height + 2 * list.Form->Pad;
}

/// The pointer's row, the rows being thought of as going on in both directions.
int RowAtPointer(const Gadget* gadget) {
    int height = ListOf(gadget).Form->Height, below = TopOf(gadget, 0) - 1 - MouseY;
    return below >= 0 ? below / height : -1 - (-1 - below) / height;
}

int PointerInList(const Gadget* gadget) {
    const ScrollWindow& s = ScrollOf(gadget);
    return MouseInBox(s.InnerX - 1, s.InnerY - 1, s.InnerW + 1, s.InnerH + 1);
}

void Configure(Gadget* gadget) {
    const ScrollWindow& s = ScrollOf(gadget);
    const List& list = ListOf(gadget);
    GadgetBox box = list.Spec.Place ? list.Spec.Place() : GadgetBox{s.X, s.Y, s.W, s.H};
    ConfigureScroll(gadget, box.X, box.Y, box.Width, box.Height, box.Width, ContentHeight(list));
}

// ---- rows that come and go
/// Puts new rows in, what the user looks at staying in place.
void TakeRows(Gadget* gadget, std::vector<ListRow> rows) {
    List& list = ListOf(gadget);
    ScrollWindow& s = ScrollOf(gadget);
    const std::vector<ListRow> before = std::move(list.Rows);
    list.Rows = std::move(rows);
    int first = s.VOffset / list.Form->Height;
    int now = s.VOffset > 0 && first < static_cast<int>(before.size())
                  ? IndexOf(list.Rows, before[static_cast<std::size_t>(first)], first)
                  : -1;
    if (now >= 0)
        s.VOffset += (now - first) * list.Form->Height;
    Configure(gadget);
    // A row that has become the one that is on, by what happened elsewhere, is what the user looks for.
    int on = FirstOn(list.Rows), wasOn = FirstOn(before);
    bool others = on >= 0 && wasOn >= 0 && SameRow(RowAt(list, on), before[static_cast<std::size_t>(wasOn)]);
    if (on >= 0 && !others && !before.empty() && !list.Spec.SeveralOn)
        ShowRow(gadget, list.Form->Height, on, list.Form->Pad);
}

void Refill(Gadget* gadget) {
    const List& list = ListOf(gadget);
    if (!list.Spec.Fill)
        return;
    std::vector<ListRow> rows;
    rows.reserve(list.Rows.size());
    list.Spec.Fill(rows);
    TakeRows(gadget, std::move(rows));
}

void ConfigureList(Gadget* gadget) {
    Refill(gadget);
    Configure(gadget);
}

// ---- drawing
std::uint32_t TextColourOf(const List& list, const ListRow& row) {
    if (row.On)
        return list.Spec.SmallRows ? Colour[ShadeLowered] : BackgroundOf(CurrentWindow);
    if (row.Dim)
        return Colour[ShadeDim];
    return list.Spec.SmallRows ? Colour[ShadeSmallText] : White;
}

void DrawRow(const Gadget* gadget, int index) {
    const List& list = ListOf(gadget);
    const RowForm& form = *list.Form;
    const ListRow& row = RowAt(list, index);
    GadgetBox box = BoxOf(gadget, index);
    if (row.On)
        DrawBox(box.X, box.Y + form.BarBottom, box.Width, form.BarHeight,
                list.Spec.SmallRows ? ShadeSmallText : ShadeFull);
    std::uint32_t rgb = TextColourOf(list, row);
    int x = FirstMarkX(gadget);
    for (const ListMark& mark : list.Spec.Marks) {
        if (mark.Draw)
            mark.Draw(row, BoxOfMark(gadget, mark, x, index), rgb);
        x += mark.Width;
    }
    if (list.Spec.Marks.empty())
        x = box.X + form.TextX;
    std::string text = ShortenedName(form.Font, row.Label, box.X + box.Width - x - 2);
    (list.Spec.SmallRows ? SmallText : DrawText)(x, box.Y + form.Baseline, text.c_str(), rgb);
    SetColour(White);
}

/// The line where a dragged row would go.
void DrawDropLine(const Gadget* gadget, int before) {
    GadgetBox box = BoxOf(gadget, before);
    DrawBox(box.X, box.Y + box.Height - 1, box.Width, 3, ShadeFull);
}

void DrawBackground(const Gadget* gadget) {
    const ScrollWindow& s = ScrollOf(gadget);
    bool small = ListOf(gadget).Spec.SmallRows;
    SetColour(small ? White : BackgroundOf(CurrentWindow));
    DrawBox(s.InnerX, s.InnerY, s.InnerW, s.InnerH, small ? ShadeLowered : ShadeFull);
    SetColour(White);
}

// ---- clicks
/// Calls the owner on a copy of a row, which may change while it is being handled. 1 when the list is still there.
int Call(Gadget* gadget, void (*callback)(const ListRow&), int row) {
    const ListRow copy = RowAt(ListOf(gadget), row);
    return CallOwner(gadget, [&] {
        if (callback)
            callback(copy);
    });
}

int ChooseRow(Gadget* gadget, int row, bool byClick) {
    const ListSpec& spec = ListOf(gadget).Spec;
    if (!spec.Fill)
        SetListRowOn(gadget, row);
    DirtyCurrentWindow();
    return Call(gadget, byClick && spec.Click ? spec.Click : spec.Choose, row);
}

const ListMark* MarkAtPointer(const Gadget* gadget) {
    int x = FirstMarkX(gadget);
    for (const ListMark& mark : ListOf(gadget).Spec.Marks) {
        if (MouseX >= x && MouseX < x + mark.Width)
            return mark.Click ? &mark : nullptr;
        x += mark.Width;
    }
    return nullptr;
}

/// Where the pointer would have a dragged row go: to the place of the row that is pointed at.
int DropAtPointer(const Gadget* gadget, int dragged) {
    int pointed = std::clamp(RowAtPointer(gadget), 0, CountOf(ListOf(gadget)) - 1);
    return pointed > dragged ? pointed + 1 : pointed;
}

/// A row that is being taken to another place.
class RowDrag : public Drag {
  public:
    RowDrag(Gadget* gadget, int row)
        : Source(gadget),
          Row(row),
          PressedX(MouseX),
          PressedY(MouseY),
          Dragged(RowAt(ListOf(gadget), row)) {}

  protected:
    bool Step() override {
        if (WindowOf(Source) != CurrentWindow)
            return false;
        List& list = ListOf(Source);
        bool moved = std::abs(MouseX - PressedX) > DragThreshold || std::abs(MouseY - PressedY) > DragThreshold;
        if (list.DropBefore < 0 && !moved)
            return false;
        ScrollOn();
        int drop = DropAtPointer(Source, Row);
        return std::exchange(list.DropBefore, drop) != drop;
    }

    /// The list scrolls while the row is held beyond its edge.
    bool Animated() const override { return true; }

    bool Cancel() override {
        Ended();
        return true;
    }

    void Commit() override {
        int before = Ended();
        if (before >= 0 && before != Row && before != Row + 1)
            CallOwner(Source, [&] { ListOf(Source).Spec.Move(Dragged, before); });
    }

  private:
    void ScrollOn() {
        const ScrollWindow& s = ScrollOf(Source);
        int above = MouseY - (s.InnerY + s.InnerH), below = s.InnerY - MouseY;
        long now = ClockTicks();
        if (std::exchange(LastScroll, now) == now)
            return;
        int step = ListOf(Source).Form->Height;
        if (above > 0)
            ScrollYTo(Source, s.VOffset - std::min(above, step));
        else if (below > 0)
            ScrollYTo(Source, s.VOffset + std::min(below, step));
    }

    /// Where the row was to go; -1: nowhere, or the list is gone.
    int Ended() {
        if (WindowOf(Source) != CurrentWindow)
            return -1;
        DirtyCurrentWindow();
        return std::exchange(ListOf(Source).DropBefore, -1);
    }

    Gadget* const Source;
    const int Row, PressedX, PressedY;
    const ListRow Dragged;
    long LastScroll = 0;
};

/// Whether this press is the second of a double click on the row.
bool IsDoubleClick(List& list, int row) {
    long now = ClockTicks();
    bool isDouble = row == list.LastClicked && now - list.LastClick < DoubleClickTicks;
    list.LastClicked = isDouble ? -1 : row;
    list.LastClick = now;
    return isDouble;
}

void ClickRow(Gadget* gadget, int row) {
    List& list = ListOf(gadget);
    const ListMark* mark = MarkAtPointer(gadget);
    if (mark) {
        list.LastClicked = -1;
        DirtyCurrentWindow();
        Call(gadget, mark->Click, row);
        return;
    }
    bool opens = IsDoubleClick(list, row) && list.Spec.Open;
    bool remains = opens ? Call(gadget, list.Spec.Open, row) : ChooseRow(gadget, row, true);
    if (!remains || opens || !ListOf(gadget).Spec.Move)
        return;
    RowDrag(gadget, row).Run();
}

int ClickList(Gadget* gadget) {
    if (CheckScrollClick(gadget))
        return 1;
    if (!PointerInList(gadget))
        return 0;
    Refill(gadget);
    int row = RowAtPointer(gadget);
    if (row >= 0 && row < CountOf(ListOf(gadget))) {
        ClickRow(gadget, row);
        return 1;
    }
    ListOf(gadget).LastClicked = -1;
    if (void (*beside)() = ListOf(gadget).Spec.ClickBeside) {
        DirtyCurrentWindow();
        CallOwner(gadget, beside);
    }
    return 1;
}

// ---- keys
int KeyInList(Gadget* gadget, int character) {
    const ListSpec& spec = ListOf(gadget).Spec;
    ReadMousePos();
    if (spec.Keys == ListKeys::None || (spec.Keys == ListKeys::WhenPointedAt && !PointerInList(gadget)))
        return 0;
    if (MoveInList(gadget, character) || (spec.FindsByTyping && FindInList(gadget, character)))
        return 1;
    int on = ListRowOn(gadget);
    if (character != ReturnCharacter || on < 0 || !spec.Open)
        return 0;
    Call(gadget, spec.Open, on);
    return 1;
}

// ---- reports
void ListItemsOf(const Gadget* gadget, std::vector<GadgetItem>& items) {
    Refill(const_cast<Gadget*>(gadget));
    const List& list = ListOf(gadget);
    RowRange rows = RowsThatShow(gadget);
    for (int i = rows.First; i < rows.Last; ++i) {
        const ListRow& row = RowAt(list, i);
        GadgetBox box = Visible(gadget, BoxOf(gadget, i));
        if (box.Height <= 0)
            continue;
        GadgetItem whole = {row.Label, box, row.On};
        int x = FirstMarkX(gadget);
        std::vector<GadgetItem> marks;
        for (const ListMark& mark : list.Spec.Marks) {
            if (mark.Click) {
                marks.push_back({row.Label + " " + mark.Label, Visible(gadget, BoxOfMark(gadget, mark, x, i)), row.On});
                // The middle of the row's item is a place where a click means the row.
                whole.Box.Width = box.X + box.Width - (x + mark.Width);
                whole.Box.X = x + mark.Width;
            }
            x += mark.Width;
        }
        items.push_back(std::move(whole));
        items.insert(items.end(), marks.begin(), marks.end());
    }
}

void FreeList(Gadget* gadget) {
    delete &ListOf(gadget);
}

} // namespace

Gadget* AddList(const ListSpec& spec) {
    const GadgetBox& box = spec.Box;
    const RowForm& form = spec.SmallRows ? SmallRows : NormalRows;
    Gadget* gadget = AddScrollWindow({.X = box.X,
                                      .Y = box.Y,
                                      .Width = box.Width,
                                      .Height = box.Height,
                                      .Flags = ScrollVertical | ScrollBorder,
                                      .ContentWidth = box.Width,
                                      .ContentHeight = box.Height,
                                      .StepY = form.ScrollStep,
                                      .Configure = ConfigureList});
    ScrollWindow& s = ScrollOf(gadget);
    List* list = new List;
    list->Spec = spec;
    list->Form = &form;
    s.Rows = list;
    s.DrawContents = DrawListContents;
    s.ListItems = ListItemsOf;
    gadget->ClickFn = ClickList;
    gadget->KeyFn = KeyInList;
    gadget->FreeFn = FreeList;
    return gadget;
}

const std::vector<ListRow>& ListRowsOf(const Gadget* gadget) {
    return ListOf(gadget).Rows;
}

void SetListRows(Gadget* gadget, std::vector<ListRow> rows) {
    ListOf(gadget).LastClicked = -1;
    TakeRows(gadget, std::move(rows));
}

int ListRowOn(const Gadget* gadget) {
    return FirstOn(ListOf(gadget).Rows);
}

void SetListRowOn(Gadget* gadget, int row) {
    List& list = ListOf(gadget);
    for (ListRow& other : list.Rows)
        other.On = false;
    if (row >= 0 && row < CountOf(list)) {
        list.Rows[static_cast<std::size_t>(row)].On = true;
        ShowListRow(gadget, row);
    }
}

void ShowListRow(Gadget* gadget, int row) {
    const RowForm& form = *ListOf(gadget).Form;
    ShowRow(gadget, form.Height, row, form.Pad);
}

int MoveInList(Gadget* gadget, int character) {
    Refill(gadget);
    const List& list = ListOf(gadget);
    int row = ListRowOn(gadget);
    if (!MoveRowByKey(character, RowsPerPage(gadget, list.Form->Height), CountOf(list), row))
        return 0;
    if (row >= 0) {
        ShowListRow(gadget, row);
        ChooseRow(gadget, row, false);
    }
    return 1;
}

int FindInList(Gadget* gadget, int character) {
    if (!CodePointOf(character))
        return 0;
    Refill(gadget);
    List& list = ListOf(gadget);
    list.Typed.Add(character);
    int row =
        list.Typed.Find(CountOf(list), FirstOn(list.Rows), [&](int index) { return RowAt(list, index).Label.c_str(); });
    if (row < 0) {
        gl::ringbell();
        return 1;
    }
    ShowListRow(gadget, row);
    ChooseRow(gadget, row, false);
    return 1;
}

void DrawListContents(Gadget* gadget) {
    const ScrollWindow& s = ScrollOf(gadget);
    const List& list = ListOf(gadget);
    ClipScope clip(s.InnerX, s.InnerY, s.InnerW, s.InnerH);
    DrawBackground(gadget);
    if (list.Rows.empty() && list.Spec.TextWhenEmpty) {
        std::string text = ShortenedName(list.Form->Font, list.Spec.TextWhenEmpty(), s.InnerW - list.Form->TextX);
        (list.Spec.SmallRows ? SmallText : DrawText)(
            s.InnerX + list.Form->TextX, BoxOf(gadget, 0).Y + list.Form->Baseline, text.c_str(), Colour[ShadeDim]);
    }
    RowRange rows = RowsThatShow(gadget);
    for (int row = rows.First; row < rows.Last; ++row)
        DrawRow(gadget, row);
    if (list.DropBefore >= 0)
        DrawDropLine(gadget, list.DropBefore);
}
