#include "shell/dropped_files.h"

#include "base/file_names.h"
#include "files/conversions.h"
#include "files/file_commands.h"
#include "gooey/file_listing.h"
#include "gooey/messages.h"
#include "gooey/program_windows.h"
#include "gooey/window.h"
#include "platform/dropped_files.h"
#include "textures/pictures.h"
#include "textures/texture_commands.h"
#include "views/hooks.h"

#include <filesystem>
#include <string>

namespace {

bool IsModel(const std::string& path) {
    return path.ends_with(KirvoExtension) || path.ends_with(std::string(KirvoExtension) + ".bak");
}

void Open(const std::string& path) {
    if (!IsReadableFile(path)) {
        TellUserS(("The file \"" + path + "\" cannot be read.").c_str());
    } else if (IsModel(path)) {
        OpenModelByName(path);
    } else if (CanBeImported(path.c_str())) {
        ImportByName(path.c_str());
    } else if (IsAnImageFile(path.c_str())) {
        LoadTextureFile(path.c_str());
    } else {
        TellUserS(("The file \"" + path + "\" is neither a model nor an image.").c_str());
    }
}

} // namespace

void OpenDroppedFiles() {
    if (!MainWindow || MainWindow->Disabled)
        return;
    const std::string dropped = gl::TakeDroppedFile();
    if (dropped.empty())
        return;
    if (SystemBusy())
        TellUserS("Files are opened when the tool has ended: choose \"Done\", then drop the file again.");
    else
        Open(std::filesystem::absolute(dropped).lexically_normal().string());
}
