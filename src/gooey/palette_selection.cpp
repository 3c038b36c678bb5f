#include "gooey/palette_selection.h"

#include "gooey/file_listing.h"
#include "gooey/messages.h"
#include "gooey/redraw.h"

#include "base/debug.h"

#include <cerrno>
#include <cstring>
#include <string>

void LoadPaletteFile(const PaletteFiles& files, const char* directory, const char* name) {
    const std::string path = PathIn(directory, name);
    Trace("Loading palette %s\n", path.c_str());
    if (!files.Read(path.c_str())) {
        TellUserS((std::string(files.NothingIn) + "\n\n" + name).c_str());
        return;
    }
    files.Merge();
    DirtyAllWindows();
}

void SavePaletteFile(const PaletteFiles& files, const char* directory, const char* name) {
    std::string path = PathIn(directory, name);
    if (!path.ends_with(files.Extension))
        path += files.Extension;
    Trace("Saving palette %s\n", path.c_str());
    if (!files.Write(path.c_str()))
        TellUserS((std::string(files.CannotWrite) + "\n\n" + std::strerror(errno)).c_str());
}
