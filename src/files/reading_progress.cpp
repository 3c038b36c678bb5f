#include "files/reading_progress.h"

#include "files/file_errors.h"
#include "files/file_slots.h"

std::size_t NextParsingReport;

namespace {

constexpr std::size_t BytesBetweenReports = 64 * 1024;
/// Of the whole read: fetching the file is much quicker than building the model.
constexpr double PartOfFetching = 0.15;

std::size_t SizeToParse;
int Reading = 0;

bool Report(double part) {
    if (!TheFileSlots.ReadingProgress || !TheFileSlots.ReadingProgress(part))
        return true;
    SetError(ReadCancelled);
    return false;
}

} // namespace

void BeginReadingProgress() {
    Reading = 1;
    NextParsingReport = 0;
    if (TheFileSlots.ReadingProgress)
        TheFileSlots.ReadingProgress(0);
}

int ReadingGoesOn() {
    return Reading;
}

void EndReadingProgress() {
    Reading = 0;
    NextParsingReport = 0;
    if (TheFileSlots.ReadingProgress)
        TheFileSlots.ReadingProgress(1);
}

bool NoteFetchingProgress(std::size_t fetched, std::size_t size) {
    // The beginning of a file is looked at before its read begins.
    return !fetched || Report(PartOfFetching * static_cast<double>(fetched) / static_cast<double>(size));
}

void BeginParsingProgress(std::size_t size) {
    SizeToParse = size;
    NextParsingReport = size > BytesBetweenReports ? size - BytesBetweenReports : 0;
}

void ReportParsingProgress(std::size_t left) {
    NextParsingReport = left > BytesBetweenReports ? left - BytesBetweenReports : 0;
    // Once an error is recorded, what is read is skipped; it must not be taken for a cancelled read.
    if (!FileError)
        Report(PartOfFetching +
               (1 - PartOfFetching) * static_cast<double>(SizeToParse - left) / static_cast<double>(SizeToParse));
}
