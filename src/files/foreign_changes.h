#pragma once

#include "base/file_identity.h"

#include <string>

// Other programs, a second Kirvo among them, may save the file that the store was loaded from. What they have saved is
// not replaced without a question.

/// The file under the model's name as it was when it was last loaded or saved.
struct FileOnDisk {
    std::string Path;
    FileIdentity Identity;
};

extern FileOnDisk KnownFile;

/// Takes what is on the disk under that name now as known.
void RememberFileOnDisk(const std::string& path);

/// 1 when there is a file of that name that is not the one known under it.
int FileChangedOnDisk(const std::string& path);

enum class ForeignChangeAnswer { SaveAnyway, SaveAs, Cancel };

/// Asks what to do about a file that another program has changed; `answer` is called once, while the question closes.
/// Asked again while the question is open, only that is raised.
void AskAboutForeignChange(const std::string& path, void (*answer)(ForeignChangeAnswer));

/// 1 while the question is open.
int AskingAboutForeignChange();
