#include "files/upgrade.h"

#include "base/directories.h"
#include "base/memory.h"
#include "files/writer.h"
#include "store/storage.h"
#include "store/walks.h"
#include "textures/pictures.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <unistd.h>

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

// The file is made under another name, beside the target, so that no failure leaves half a file in its place.
std::string WriteThenRename(const fs::path& target) {
    const fs::path unfinished = target.string() + ".unfinished";
    std::error_code error;
    const bool replaces = fs::exists(target, error);
    const fs::perms permissions = fs::status(target, error).permissions();
    errno = 0;
    if (!WriteKirvo(unfinished.c_str())) {
        const std::string reason = errno ? std::strerror(errno) : "it cannot be written";
        fs::remove(unfinished, error);
        return reason;
    }
    if (replaces)
        fs::permissions(unfinished, permissions, error);
    fs::rename(unfinished, target, error);
    if (!error)
        return "";
    const std::string reason = error.message();
    fs::remove(unfinished, error);
    return reason;
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
    // Of a link to a model the model is replaced, not the link.
    return WriteThenRename(fs::is_symlink(full, error) ? fs::weakly_canonical(full, error) : full);
}
