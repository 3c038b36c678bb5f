#pragma once

#include "files/format.h"

#include <cstdint>
#include <span>

/// A setting that travels with the file as a whole, and the global that holds it: an int, or one of the lines of file
/// information.
struct FileSetting {
    int Number;
    std::int32_t* Value;
    char* Line;
};

/// All settings that have a global, in the order in which they are written. Reading SettingNoViewports takes more than
/// a store into its global.
std::span<const FileSetting> FileSettings();

/// The setting with this number, or null.
const FileSetting* FindFileSetting(int number);

/// Id of the current object, as the file has it; -1 when it has none.
extern std::int32_t CurrentObjectNumber;
