#pragma once

#include "files/primitives.h"
#include "store/records.h"

#include <cstdint>
#include <vector>

/// The materials of a file while it is read: on no list yet, and known by their numbers. Owns them until AddToFile.
class MaterialNumbers {
  public:
    MaterialNumbers() = default;
    MaterialNumbers(const MaterialNumbers&) = delete;
    MaterialNumbers& operator=(const MaterialNumbers&) = delete;
    ~MaterialNumbers();

    /// Reads a material section. Its numbers replace those of an earlier one.
    void ReadSection(FileCursor& file);

    /// The material with this number, marked as used. Null, with an error recorded, when there is none.
    Material* Use(int number);

    /// The first material of the file, marked as used, for a polygon that names none. Null, with an error recorded,
    /// when there is none.
    Material* UseFirst();

    /// Appends the materials to the current file's list, section by section in the order of their numbers. From files
    /// before WideMaterialsVersion those that no polygon uses are dropped.
    void AddToFile();

  private:
    struct Entry {
        int Section;
        std::int32_t Number;
        Material* Record;
    };

    /// What a number of a section stands for; in any other section for nothing.
    struct Named {
        int Section = 0;
        Material* Record = nullptr;
    };

    void ReadMaterial(FileCursor& file);

    std::vector<Entry> Read;     // in file order
    std::vector<Named> ByNumber; // polygons can name no number above 65535
    int Section = 0;
};
