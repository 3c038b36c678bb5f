#include "files/reader.h"

#include "files/body_reader.h"
#include "files/file_contents.h"
#include "files/file_errors.h"
#include "files/file_information.h"
#include "files/file_slots.h"
#include "files/format.h"
#include "files/legacy_reader.h"
#include "files/reading_progress.h"
#include "store/accessors.h"
#include "store/storage.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

int InformationLost;
int TexturesMissing;
int FileVersion;
std::size_t FileReached;

namespace {

/// The header line, at most HeaderLineSize - 1 bytes of it; the cursor is left behind it.
std::string_view TakeHeaderLine(FileCursor& file) {
    const std::string_view reach(reinterpret_cast<const char*>(file.At), std::min(file.Left(), HeaderLineSize - 1));
    const std::string_view line = reach.substr(0, reach.find('\n') + 1);
    const std::string_view taken = line.empty() ? reach : line;
    file.At += taken.size();
    return taken;
}

/// The version in hundredths; -1 when the line is not the header of a model file.
int VersionOf(std::string_view line) {
    constexpr std::string_view prefix = HeaderPrefix;
    if (!line.starts_with(prefix))
        return -1;
    line.remove_prefix(prefix.size());
    line.remove_prefix(std::min(line.find_first_not_of(" \t\n\v\f\r"), line.size()));
    if (line.starts_with('+'))
        line.remove_prefix(1);
    float version = 0; // and stays so when the number is out of range
    if (std::from_chars(line.data(), line.data() + line.size(), version).ec == std::errc::invalid_argument)
        return -1;
    const float hundredths = version * 100.0F;
    constexpr float newerThanAny = 1e6F;
    // Not a number compares as false.
    return hundredths >= 0 && hundredths < newerThanAny ? static_cast<int>(hundredths) : 0;
}

void ReadVersioned(FileCursor& file) {
    if (FileError)
        return;
    if (FileVersion == LegacyTextVersion) {
        ReadKirvo100(file);
        return;
    }
    if (FileVersion < OldestBinaryVersion || FileVersion > CurrentFileVersion) {
        SetError(UnsupportedRevision);
        return;
    }
    int marker;
    if (!ReadFileByte(file, marker))
        return;
    if (marker == BodyMarker)
        BodyReader(file).Read();
    else
        SetError(NotAKirvoFile);
}

void FinishGoodRead() {
    if (Mergeing)
        return;
    WorkSaved = 1;
    if (!Scene()->FirstChild)
        ObjectIsolated = 1;
    if (FileInformationIsEmpty())
        FileCreateId = MachineIdentifier();
}

void FinishFailedRead(Object* objectBeforeRead) {
    if ((!FileErrorOk || FileErrorNumber == UnsupportedRevision) && TheFileSlots.TellUser) {
        const std::string text = std::string("Error while reading file:\n\n") + Ferr[FileErrorNumber] + "\n";
        TheFileSlots.TellUser(text.c_str());
    }
    if (FileErrorNumber == NotAKirvoFile || FileErrorNumber == FileNotFound)
        CurrentFile->CurrentObject = objectBeforeRead;
    else
        ResetStorage();
}

void TellWhatIsMissing() {
    if (!FileError && InformationLost)
        std::fputs("Kirvo warning: Information lost!\a\n"
                   "This file was created with a more recent version\n"
                   "of the Kirvo modelling software, information\n"
                   "was discarded when the file was loaded...\n",
                   stderr);
    if (TexturesMissing && TheFileSlots.AskOkCancel)
        TheFileSlots.AskOkCancel("Some textures could not be found.\n\n"
                                 "Click on Ok to read the manual on how to correct this problem.",
                                 ShowTextureInfo);
}

FileCursor CursorOver(const unsigned char* bytes, std::size_t size) {
    return {bytes, bytes + size};
}

/// Reads a model of which `head` reaches at least to the end of its header line. `wholeFile` gives all of it, with the
/// same beginning; it is asked only when the file is a model.
template <class WholeFile>
void ReadModel(FileCursor head, WholeFile wholeFile) {
    const std::string_view line = TakeHeaderLine(head);
    const int version = VersionOf(line);
    if (version < 0) {
        SetError(NotAKirvoFile);
        return;
    }
    FileVersion = version;
    FileCursor file = wholeFile();
    const unsigned char* start = file.At;
    file.At += line.size();
    BeginParsingProgress(file.Left());
    ReadVersioned(file);
    FileReached = static_cast<std::size_t>(file.At - start);
}

/// Runs a read of one file and does what follows it.
template <class Read>
int ReadAndFinish(Read read) {
    ClearFileError();
    FileReached = 0;
    Object* objectBeforeRead = CurrentFile->CurrentObject;
    BeginReadingProgress();
    read();
    EndReadingProgress();
    if (FileError)
        FinishFailedRead(objectBeforeRead);
    else
        FinishGoodRead();
    TellWhatIsMissing();
    return !FileError;
}

} // namespace

int ReadKirvo(const char* name) {
    InformationLost = TexturesMissing = 0;
    auto contents = std::make_unique<FileContents>(name, HeaderLineSize);
    if (!contents->IsOpen()) {
        SetError(FileNotFound);
        return 0;
    }
    return ReadAndFinish([&] {
        ReadModel(CursorOver(contents->Bytes(), contents->Size()), [&] {
            if (!contents->ReadAll())
                SetError(BadFile);
            return CursorOver(contents->Bytes(), contents->Size());
        });
        contents.reset();
    });
}

int ReadKirvoFromMemory(const void* bytes, std::size_t size) {
    InformationLost = TexturesMissing = 0;
    return ReadAndFinish([&] {
        const FileCursor file = CursorOver(static_cast<const unsigned char*>(bytes), size);
        ReadModel(file, [&] { return file; });
    });
}

void ShowTextureInfo(int ok) {
    if (ok && TheFileSlots.OpenManual)
        TheFileSlots.OpenManual("R_FindingTextures");
}
