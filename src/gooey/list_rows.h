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

/// Scrolls as far as needed for the row to be seen whole, with `pad` pixels above the first row and below the last.
/// Draws nothing.
void ShowRow(Gadget* scroll, int rowHeight, int row, int pad = 0);

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
    /// The row to go to, `nameOf(row)` being the rows' names: the first that begins with what was typed; when one
    /// letter was typed again and again, the next after `row` that begins with it. -1: none.
    template <class NameOf>
    int Find(int count, int row, NameOf nameOf) const;

  private:
    /// What was typed consists of one letter, several times.
    bool RepeatsOne() const;
    bool BeginsWithOne(const char* name) const;

    std::string Typed;
    long LastTime = 0;
};

template <class NameOf>
int TypedPrefix::Find(int count, int row, NameOf nameOf) const {
    for (int i = 0; i < count; ++i)
        if (Begins(nameOf(i)))
            return i;
    if (RepeatsOne())
        for (int i = 1; i <= count; ++i)
            if (int next = (row + i) % count; BeginsWithOne(nameOf(next)))
                return next;
    return -1;
}
