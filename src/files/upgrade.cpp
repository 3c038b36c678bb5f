#include "files/upgrade.h"

#include "base/directories.h"
#include "base/file_replacement.h"
#include "base/memory.h"
#include "files/writer.h"
#include "store/storage.h"
#include "store/walks.h"
#include "textures/pictures.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

std::string WhatWouldBeLost(const LoadReport& report) {
    return report.InformationLost ? "it holds data that only a newer version knows" : "";
}

// Images were found from the working directory or from the model's; the target's place says nothing about either. An
// image that was not found keeps the name that it had.
bool NameImagesInFull() {
    for (Texture* texture : Along<&Texture::Next>(MainFile.FirstTexture)) {
        if (!IsAnImageFile(texture->FileName))
            continue;
        std::error_code error;
        const fs::path full = fs::absolute(texture->FileName, error).lexically_normal();
        char* name = error ? nullptr : CopyOfString(full.c_str());
        if (!name)
            return false;
        Free(texture->FileName);
        texture->FileName = name;
    }
    return true;
}

std::string Write(const fs::path& target) {
    FileReplacement file(target.c_str());
    errno = file.Stream() ? 0 : errno;
    if (file.Stream() && WriteKirvoInto(file.Stream()) && file.Commit())
        return "";
    return errno ? std::strerror(errno) : "it cannot be written";
}

} // namespace

std::string UpgradeModel(const LoadReport& report, const std::string& target, UpgradeLoss loss) {
    const std::string lost = WhatWouldBeLost(report);
    if (loss == UpgradeLoss::Refuse && !lost.empty())
        return lost;
    std::error_code error;
    const fs::path full = fs::absolute(target, error).lexically_normal();
    if (error)
        return error.message();
    // Nothing but a file may be replaced: a device would be lost for everybody.
    if (full.filename().empty() || (fs::exists(full, error) && !fs::is_regular_file(full, error)))
        return "it is not an ordinary file";
    if (!NameImagesInFull() || !CopyFileName(FilePath, full.parent_path().c_str()))
        return std::strerror(ENAMETOOLONG);
    return Write(full);
}
