#pragma once

#include "kirvo_file/commands.h"

/// The command "convert" with what follows it: import and export by the converters of the installation. With --list it
/// tells which there are.
KirvoFileStatus RunConvert(const std::vector<std::string>& arguments, std::FILE* answer);
