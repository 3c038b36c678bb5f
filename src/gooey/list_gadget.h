#pragma once

#include "gooey/gadget.h"

#include <span>
#include <string>
#include <vector>

// The list of rows that file selector, browsers and editors share: it draws, scrolls, selects, drags rows to another
// place, finds them by what is typed, and lists them in reports. Rows count from 0 at the top.

struct ListRow {
    /// What is shown, reported, and found by typing; cut with dots where it is too long for the list.
    std::string Label;
    /// What the row stands for, the owner's: tells the row from others when rows come and go. Null: its label does.
    const void* Record = nullptr;
    /// Selected, picked or current.
    bool On = false;
    /// Shown darker.
    bool Dim = false;
};

/// A picture or mark to the left of a row's text. One that is clicked has an item of its own in reports, whose label is
/// the row's, a blank, and `Label`.
struct ListMark {
    int Width = 0;
    /// Draws it, in the row's text colour, within a box of the row's height.
    void (*Draw)(const ListRow& row, const GadgetBox& box, std::uint32_t rgb) = nullptr;
    const char* Label = "";
    /// Null: a click on the mark is one on the row.
    void (*Click)(const ListRow& row) = nullptr;
};

/// Which keys a list takes: the arrows, Page Up and Down, Home and End, Return, and with FindsByTyping characters.
enum class ListKeys { None, WhenPointedAt, Always };

/// What a list is made of. Callbacks may be null, and may change the rows, the list and its window.
struct ListSpec {
    /// Within its window, in pixels.
    GadgetBox Box = {};
    /// The box for the window's present size, asked before every drawing, when the list follows it.
    GadgetBox (*Place)() = nullptr;
    /// Rows of 19 pixels in the small font instead of 24 in the normal one.
    bool SmallRows = false;
    /// Several rows may be on: the list stays where it is whichever are.
    bool SeveralOn = false;
    ListKeys Keys = ListKeys::None;
    /// Characters typed in quick succession choose the next row that begins with them.
    bool FindsByTyping = false;
    /// Puts the rows as they are now into the vector, which is empty: before every drawing, click, key and report. The
    /// list stays where it is when rows come and go above, and shows the row that is on when it has become another one.
    /// Null: SetListRows tells of changes, and the list itself keeps which row is on.
    void (*Fill)(std::vector<ListRow>& rows) = nullptr;
    std::span<const ListMark> Marks = {};
    /// The row was chosen, by a click or a key.
    void (*Choose)(const ListRow& row) = nullptr;
    /// A click chose the row, where that means something else than choosing it by a key.
    void (*Click)(const ListRow& row) = nullptr;
    /// The second click of a double click on the row, or Return.
    void (*Open)(const ListRow& row) = nullptr;
    /// A press of the left button within the list, on no row.
    void (*ClickBeside)() = nullptr;
    /// The row was dragged to stand before the row `before` (the number of rows: at the end). Null: rows stay.
    void (*Move)(const ListRow& row, int before) = nullptr;
    /// What is shown while there are no rows.
    std::string (*TextWhenEmpty)() = nullptr;
};

/// Adds a list to the current window. The spec's marks must live as long as the list does.
Gadget* AddList(const ListSpec& spec);

/// The rows, as they were last filled.
const std::vector<ListRow>& ListRowsOf(const Gadget* list);
/// Exchanges the rows of a list without Fill; to be drawn with its window. None is on unless it says so.
void SetListRows(Gadget* list, std::vector<ListRow> rows);

/// The first row that is on; -1: none.
int ListRowOn(const Gadget* list);
/// Turns a row of a list without Fill on (-1: none), all others off, and scrolls to it.
void SetListRowOn(Gadget* list, int row);
/// Scrolls as far as needed for the row to be seen whole.
void ShowListRow(Gadget* list, int row);

/// Chooses the row that an arrow, Page Up or Down, Home or End leads to. 0 when the character is no such key.
int MoveInList(Gadget* list, int character);
/// Chooses the row that begins with what was typed, this character included, or rings the bell. 0 when it is no text.
int FindInList(Gadget* list, int character);

/// Draws the visible part of the rows.
void DrawListContents(Gadget* list);
