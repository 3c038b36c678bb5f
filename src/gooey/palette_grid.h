#pragma once

#include "gooey/gadget.h"

#include <cstdint>

// The scrolling grid of pictures that palettes are: entries of one size in rows, the first at the top left. Slots count
// the places from 0, row by row.

/// What a palette shows: a constant table. An entry is a record of the owner's, who keeps them in a sequence.
struct PaletteEntries {
    /// The entry at the beginning, the one after an entry, and the one that is highlighted; null: there is none.
    void* (*First)() = nullptr;
    void* (*Next)(const void* entry) = nullptr;
    void* (*Current)() = nullptr;
    /// The slot in which it was last drawn, kept by the entry.
    std::int32_t& (*SlotOf)(void* entry) = nullptr;
    /// Told by reports, and found by scripts.
    const char* (*NameOf)(const void* entry) = nullptr;
    /// Draws its picture into the cell whose lower left corner is (x, y), inside the highlight of three pixels.
    void (*Draw)(void* entry, int x, int y) = nullptr;
    /// Runs before entries are drawn, be it one or all; may be null.
    void (*Prepare)() = nullptr;
};

/// One palette. All pixels are those of its window.
struct PaletteGrid {
    /// Of an entry.
    std::int32_t EntryWidth = 0, EntryHeight = 0;
    /// Number of entries.
    std::int32_t Count = 0;
    /// The slot last drawn with the highlight.
    std::int32_t Highlighted = 0;
    /// The slot that the next position, drawing or hit test is about.
    std::int32_t Slot = 0;
    /// The area that shows entries.
    std::int32_t X = 0, Y = 0, Width = 0, Height = 0;
    /// Pixels scrolled out at the top.
    std::int32_t Scroll = 0;
    /// Entries in a row, as of the last position.
    std::int32_t Columns = 0;
    /// Null while the palette is closed.
    Gadget* ScrollGadget = nullptr;
    const PaletteEntries* Entries = nullptr;
};

/// A window with a palette keeps this much for what is under the grid, and for that and the menu bar above it.
inline constexpr int PaletteGridBottom = 140, PaletteGridSurroundings = 175;
/// A window's width and height are these plus those of whole entries.
inline constexpr int PaletteFudgeX = 28, PaletteFudgeY = 183;

/// Adds the grid to the current window, over whose width it goes. The grid must outlive the window. Page Up, Page Down,
/// Home and End scroll it.
Gadget* AddPaletteGrid(PaletteGrid& grid);

// ---- entries
/// The entry that shows under the pointer, or null.
void* PaletteEntryAtPointer(PaletteGrid& grid);
/// Draws an entry at once into what the user sees, whichever window is current. Nothing while the palette is closed.
void RedrawPaletteEntry(PaletteGrid& grid, void* entry);
/// Moves the highlight from one entry to another at once; either may be null.
void MovePaletteHighlight(PaletteGrid& grid, void* from, void* to);
/// Scrolls as far as needed for the entry to be seen whole.
void ShowPaletteEntry(PaletteGrid& grid, void* entry);

// ---- slots
/// Gives the scroll window the size and the content of the grid: Width and Height are those of the whole gadget.
void ConfigurePalette(PaletteGrid& grid);
/// The lower left corner of the cell at Slot. 0 when nothing of it shows.
int PaletteXYCalc(PaletteGrid& grid, int& x, int& y);
/// Bracket drawing, which is cut off at the edge of the area.
void StartPaletteDraw(const PaletteGrid& grid);
void EndPaletteDraw();
/// Frames the cell at Slot, as the highlighted one or as any other.
void DrawPaletteHighlight(PaletteGrid& grid, int on);
/// Moves the highlight between slots in what the user sees, the palette's window being current.
void ChangePaletteHighlight(PaletteGrid& grid, int oldSlot, int newSlot);
/// Shows cells without entries from Slot on.
void BlankToEndOfPalette(PaletteGrid& grid);
/// 1 when the pointer is on the entry at Slot.
int MouseOnPaletteEntry(PaletteGrid& grid);
