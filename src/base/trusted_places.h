#pragma once

#include <string>

// Whose programs may be run: the installation may have been found in the working directory, which may be anybody's.

/// The directory of the running program, links followed; empty when the system does not tell.
std::string DirectoryOfRunningProgram();

/// Why somebody else could have put something into this file or directory, as a text that follows its name; empty when
/// it belongs to root or the user and nobody else may write to it.
std::string WhyOthersMayChange(const std::string& path);

/// Whether programs of a directory of the installation KirvoDir may be run (`place` is below it, "" for itself): when
/// the environment variable KIRVOHOME names the installation, it is the running program's own, or it and the directory
/// are such that only root and the user may change them. When not, `reason` (may be null) says why.
bool InstallationIsTrusted(const std::string& place = "", std::string* reason = nullptr);
