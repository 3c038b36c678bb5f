#pragma once

#include <span>

// What is kept in the defaults file: one line an entry, in the table's source.

/// How a value is written, and what its variables are.
enum class DefaultsForm {
    /// "TRUE" or "FALSE".
    Flag,
    /// One number.
    Integer,
    /// A window's place: x and y; with its height; with its width and height.
    Position,
    PositionAndHeight,
    PositionAndSize,
    /// Three, or four, numbers that are no window's place.
    ThreeIntegers,
    FourIntegers,
    /// One letter, A or B: the flags of the two choices.
    Letter,
    /// A text that an older reader ends at its first blank.
    Word,
};

/// A number outside these bounds becomes Otherwise.
struct DefaultsRange {
    int Least, Most, Otherwise;
};

struct DefaultsEntry {
    const char* Key;
    DefaultsForm Form;
    /// As many as the form has numbers.
    int* Values[4] = {};
    /// Flag: the window's place is known; set when it is read.
    int* Opened = nullptr;
    /// Flag: the entry is written; null: always.
    const int* WrittenIf = nullptr;
    /// Of an Integer; null: any will do.
    const DefaultsRange* Range = nullptr;
    /// Of a Word: MaxFileName bytes.
    char* Text = nullptr;
};

/// How many numbers a form has; 0 for those that are no numbers.
int NumberCount(DefaultsForm form);

/// The entries by their numbers, 0 to 65.
extern const std::span<const DefaultsEntry> DefaultsTable;

/// Entries that the file's older readers do not know and pass over.
extern const std::span<const DefaultsEntry> AddedDefaultsTable;

/// Runs of entries, both ends included, in the order of writing.
struct DefaultsRun {
    int First, Last;
};

extern const std::span<const DefaultsRun> DefaultsWritingOrder;

/// Numbers of entries that the reader treats as groups.
enum DefaultsNumber {
    DefaultsCircleSides = 42,
    DefaultsNewSphereDepth = 43,
    DefaultsBackgroundColour = 45,
    DefaultsTabletAlign1 = 55,
    DefaultsTabletAlign2 = 56,
    DefaultsTabletCentre = 57,
    DefaultsTabletRotation = 58,
    DefaultsNoViewports = 60,
    DefaultsFilePath = 62,
    DefaultsFileName = 63,
};
