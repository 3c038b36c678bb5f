#pragma once

#include <cstddef>

// How far a read has come, told through TheFileSlots.ReadingProgress every so many bytes. There is one read at a time.

void BeginReadingProgress();
void EndReadingProgress();
/// 1 between the two.
int ReadingGoesOn();

/// The file is being fetched into memory. False when the user cancels.
bool NoteFetchingProgress(std::size_t fetched, std::size_t size);

/// It is all there, and this many bytes are to be turned into records.
void BeginParsingProgress(std::size_t size);

/// So many bytes left at which the next call of NoteParsingProgress tells how far it is.
extern std::size_t NextParsingReport;
void ReportParsingProgress(std::size_t left);

/// Called with every polygon or so. When the user cancels, ReadCancelled is recorded, which ends all loops.
inline void NoteParsingProgress(std::size_t left) {
    if (left < NextParsingReport)
        ReportParsingProgress(left);
}
