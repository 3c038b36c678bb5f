#include "gooey/palette_grid.h"

#include "base/slots.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/pointer.h"
#include "gooey/scroll_window.h"
#include "gooey/window.h"
#include "platform/state.h"

#include <algorithm>
#include <vector>

namespace {

/// What drawing reaches beneath the area before it is cut off.
constexpr int DrawnBelow = 17;
/// Frames around an entry.
constexpr int HighlightWidth = 3;

PaletteGrid& GridOf(const Gadget* gadget) {
    return *static_cast<PaletteGrid*>(ScrollOf(gadget).Rows);
}

/// Calls function(entry) for each entry of the grid.
template <class Function>
void ForEveryEntry(const PaletteGrid& grid, Function function) {
    for (void* entry = grid.Entries->First(); entry; entry = grid.Entries->Next(entry))
        function(entry);
}

int RowsOf(int count, int columns) {
    return (count + columns - 1) / columns;
}

void DrawFrames(int x, int y, int width, int height, std::uint32_t rgb, int innerShade) {
    SetColour(rgb);
    DrawFrame(x, y, width, height, ShadeFull);
    DrawFrame(x + 1, y + 1, width - 2, height - 2, ShadeFull);
    DrawFrame(x + 2, y + 2, width - 4, height - 4, innerShade);
}

/// The entry at Slot.
void DrawEntry(PaletteGrid& grid, void* entry) {
    grid.Entries->SlotOf(entry) = grid.Slot;
    int x, y;
    if (!PaletteXYCalc(grid, x, y))
        return;
    DrawPaletteHighlight(grid, entry == grid.Entries->Current());
    grid.Entries->Draw(entry, x, y);
}

// ---- the scroll window
void Configure(Gadget* gadget) {
    PaletteGrid& grid = GridOf(gadget);
    grid.Count = 0;
    ForEveryEntry(grid, [&](const void*) { ++grid.Count; });
    grid.ScrollGadget = gadget;
    grid.Width = CurrentWindow->Width;
    grid.Height = CurrentWindow->Height - PaletteGridSurroundings;
    ConfigurePalette(grid);
}

/// Has the grid's place follow what the scroll window shows.
void TakePlace(PaletteGrid& grid) {
    const ScrollWindow& s = ScrollOf(grid.ScrollGadget);
    grid.X = s.InnerX;
    grid.Y = s.InnerY;
    grid.Width = s.InnerW;
    grid.Height = s.InnerH;
    grid.Scroll = s.VOffset;
}

void DrawContents(Gadget* gadget) {
    PaletteGrid& grid = GridOf(gadget);
    TakePlace(grid);
    CallSlot(grid.Entries->Prepare);
    StartPaletteDraw(grid);
    SetColour(BackgroundOf(CurrentWindow));
    DrawBox(grid.X, grid.Y, grid.Width, grid.Height, ShadeFull);
    grid.Slot = 0;
    ForEveryEntry(grid, [&](void* entry) {
        DrawEntry(grid, entry);
        ++grid.Slot;
    });
    BlankToEndOfPalette(grid);
    EndPaletteDraw();
}

void ListItems(const Gadget* gadget, std::vector<GadgetItem>& items) {
    PaletteGrid& grid = GridOf(gadget);
    Configure(const_cast<Gadget*>(gadget));
    TakePlace(grid);
    grid.Slot = 0;
    ForEveryEntry(grid, [&](void* entry) {
        int x, y;
        if (PaletteXYCalc(grid, x, y)) {
            const int bottom = std::max(y, grid.Y), top = std::min(y + grid.EntryHeight, grid.Y + grid.Height);
            items.push_back({grid.Entries->NameOf(entry),
                             {x, bottom, grid.EntryWidth, top - bottom},
                             entry == grid.Entries->Current()});
        }
        ++grid.Slot;
    });
}

int ScrollByKey(Gadget* gadget, int character) {
    const ScrollWindow& s = ScrollOf(gadget);
    const int entry = GridOf(gadget).EntryHeight, page = std::max(1, s.InnerH / entry) * entry;
    switch (character) {
    case PageUpCharacter:
        ScrollYTo(gadget, s.VOffset - page);
        return 1;
    case PageDownCharacter:
        ScrollYTo(gadget, s.VOffset + page);
        return 1;
    case HomeCharacter:
        ScrollYTo(gadget, 0);
        return 1;
    case EndCharacter:
        ScrollYTo(gadget, s.ContentH);
        return 1;
    default:
        return 0;
    }
}

void Forget(Gadget* gadget) {
    GridOf(gadget).ScrollGadget = nullptr;
}

} // namespace

Gadget* AddPaletteGrid(PaletteGrid& grid) {
    Gadget* gadget = AddScrollWindow({.Y = PaletteGridBottom,
                                      .Width = CurrentWindow->Width,
                                      .Height = CurrentWindow->Height - PaletteGridSurroundings,
                                      .Flags = ScrollVertical | ScrollBorder | ScrollNoAutoRepeat,
                                      .StepX = 1,
                                      .StepY = grid.EntryHeight,
                                      .Configure = Configure});
    ScrollWindow& s = ScrollOf(gadget);
    s.Rows = &grid;
    s.DrawContents = DrawContents;
    s.ListItems = ListItems;
    gadget->KeyFn = ScrollByKey;
    gadget->FreeFn = Forget;
    Configure(gadget);
    TakePlace(grid);
    return gadget;
}

void* PaletteEntryAtPointer(PaletteGrid& grid) {
    void* found = nullptr;
    if (grid.ScrollGadget)
        ForEveryEntry(grid, [&](void* entry) {
            if (found)
                return;
            grid.Slot = grid.Entries->SlotOf(entry);
            if (MouseOnPaletteEntry(grid))
                found = entry;
        });
    return found;
}

void RedrawPaletteEntry(PaletteGrid& grid, void* entry) {
    if (!grid.ScrollGadget || !entry)
        return;
    DrawInFront(grid.ScrollGadget, [&] {
        CallSlot(grid.Entries->Prepare);
        StartPaletteDraw(grid);
        grid.Slot = grid.Entries->SlotOf(entry);
        DrawEntry(grid, entry);
        EndPaletteDraw();
    });
}

void MovePaletteHighlight(PaletteGrid& grid, void* from, void* to) {
    if (!grid.ScrollGadget)
        return;
    // A slot of its own that no cell shows stands for none.
    const auto slotOf = [&](void* entry) { return entry ? grid.Entries->SlotOf(entry) : -1; };
    GadgetWindowScope window(grid.ScrollGadget);
    if (window)
        ChangePaletteHighlight(grid, slotOf(from), slotOf(to));
}

void ShowPaletteEntry(PaletteGrid& grid, void* wanted) {
    if (!grid.ScrollGadget || !wanted)
        return;
    GadgetWindowScope window(grid.ScrollGadget);
    if (!window)
        return;
    Configure(grid.ScrollGadget);
    TakePlace(grid);
    grid.Slot = 0;
    ForEveryEntry(grid, [&, passed = false](const void* entry) mutable {
        passed |= entry == wanted;
        grid.Slot += !passed;
    });
    int x, y;
    PaletteXYCalc(grid, x, y);
    const int above = y + grid.EntryHeight - (grid.Y + grid.Height), below = grid.Y - y;
    if (above > 0)
        ScrollYTo(grid.ScrollGadget, grid.Scroll - above);
    else if (below > 0)
        ScrollYTo(grid.ScrollGadget, grid.Scroll + below);
}

void ConfigurePalette(PaletteGrid& grid) {
    // A desktop may give the window a width that is no whole number of entries: then the area that shows decides.
    const int inGadget = (grid.Width - ScrollBarWidth) / grid.EntryWidth;
    const int inArea = (grid.Width - PaletteFudgeX) / grid.EntryWidth;
    const int columns = std::max(1, std::min(inGadget, inArea));
    ConfigureScroll(grid.ScrollGadget, -1, -1, grid.Width, grid.Height, 0,
                    RowsOf(grid.Count, columns) * grid.EntryHeight);
}

int PaletteXYCalc(PaletteGrid& grid, int& x, int& y) {
    const int columns = grid.Width / grid.EntryWidth;
    if (columns <= 0 || grid.Slot < 0)
        return 0;
    grid.Columns = columns;
    x = grid.Slot % columns * grid.EntryWidth + grid.X;
    y = grid.Y + grid.Height + grid.Scroll - (grid.Slot / columns + 1) * grid.EntryHeight;
    return y > grid.Y - grid.EntryHeight && y < grid.Y + grid.Height;
}

void StartPaletteDraw(const PaletteGrid& grid) {
    SetViewport(grid.X, grid.Y - DrawnBelow, grid.Width, grid.Height + DrawnBelow);
    gl::scrmask(grid.X, grid.X + grid.Width - 1, grid.Y, grid.Y + grid.Height - 1);
}

void EndPaletteDraw() {
    VanillaView();
}

void DrawPaletteHighlight(PaletteGrid& grid, int on) {
    int x, y;
    if (!PaletteXYCalc(grid, x, y))
        return;
    if (on)
        grid.Highlighted = grid.Slot;
    DrawFrames(x, y, grid.EntryWidth, grid.EntryHeight, on ? White : BackgroundOf(CurrentWindow), ShadeBlack);
    SetColour(White);
}

void ChangePaletteHighlight(PaletteGrid& grid, int oldSlot, int newSlot) {
    FrontBufferScope front;
    StartPaletteDraw(grid);
    grid.Slot = oldSlot;
    DrawPaletteHighlight(grid, 0);
    grid.Slot = newSlot;
    DrawPaletteHighlight(grid, 1);
    EndPaletteDraw();
}

void BlankToEndOfPalette(PaletteGrid& grid) {
    int x, y;
    for (; PaletteXYCalc(grid, x, y); ++grid.Slot) {
        DrawFrames(x, y, grid.EntryWidth, grid.EntryHeight, BackgroundOf(CurrentWindow), ShadeFull);
        DrawBox(x + HighlightWidth, y + HighlightWidth, grid.EntryWidth - 2 * HighlightWidth,
                grid.EntryHeight - 2 * HighlightWidth, ShadeBlack);
    }
    SetColour(White);
}

int MouseOnPaletteEntry(PaletteGrid& grid) {
    int x, y;
    return PaletteXYCalc(grid, x, y) && MouseInBox(x, y, grid.EntryWidth, grid.EntryHeight) &&
           MouseInBox(grid.X, grid.Y, grid.Width, grid.Height);
}
