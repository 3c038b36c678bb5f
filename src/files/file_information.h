#pragma once

#include <cstddef>
#include <cstdint>

// What travels with a model file to tell whose it is.

/// Room for one line of information with its closing null.
inline constexpr std::size_t FileInformationSize = 80;

extern char FileTitle[FileInformationSize];
extern char FileAuthor[FileInformationSize];
extern char FileCompany[FileInformationSize];
extern char FileContact[FileInformationSize];
extern char FileComment1[FileInformationSize];
extern char FileComment2[FileInformationSize];
extern char FileComment3[FileInformationSize];
extern char FileComment4[FileInformationSize];

/// Identifier of the machine that owns the file's credits.
extern std::int32_t FileCreateId;

/// Flag: the owner has declared the file public domain.
extern std::int32_t FilePublicDomain;

/// A number that stays the same on one machine, not 0.
std::int32_t MachineIdentifier();

/// 1 when the eight lines are all empty.
int FileInformationIsEmpty();

/// The information of a new file: no lines, owned by this machine. Belongs into TheStorageSlots.
void ResetFileInformation();

/// 1 when another machine owns the file's credits.
int FileIsLocked();
