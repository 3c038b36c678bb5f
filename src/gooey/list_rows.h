#pragma once

#include <cstdint>
#include <string>

struct Gadget;

// Rows of one height in a scroll window: which are visible, which is under the pointer, and choosing one by keys.
// Rows count from 0 at the top of the content.

/// The rows that show at least in part: First to Last, Last excluded.
struct RowRange {
    int First, Last;
};

RowRange VisibleRows(const Gadget* scroll, int rowHeight, int count);

/// Rows that fit into the visible area as a whole; at least 1.
int RowsPerPage(const Gadget* scroll, int rowHeight);

/// Scrolls as far as needed for the row to be seen whole.
void ShowRow(Gadget* scroll, int rowHeight, int row);

/// Whether a key moves the selection: arrows up and down, a page, the ends. `row` (-1: none) becomes the row that it
/// moves to.
int MoveRowByKey(int character, int rowsPerPage, int count, int& row);

/// Letters typed in quick succession, for going to the row that begins with them.
class TypedPrefix {
  public:
    /// Adds a character that is text; a pause begins a new prefix.
    const std::string& Add(int character);
    /// Whether a name begins with what was typed, whatever the case of ASCII letters.
    bool Begins(const char* name) const;

  private:
    std::string Typed;
    long LastTime = 0;
};
