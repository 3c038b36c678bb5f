#pragma once

#include <string>
#include <vector>

// Running converters: programs of their own, without a shell, so that no file name means anything but itself.

/// The folder that the temporary files of conversions lie in, for the length of a scope: one that nobody else can
/// enter, removed at the end with all that is in it. Where TMPDIR is "/usr/tmp" it is that directory, which programs of
/// old write to; only the files named here are then removed.
class ConverterFolder {
  public:
    ConverterFolder();
    ~ConverterFolder();
    ConverterFolder(const ConverterFolder&) = delete;
    ConverterFolder& operator=(const ConverterFolder&) = delete;

    /// Why there is no folder; empty when there is one.
    const std::string& Problem() const { return Failure; }

    /// What the names of all temporary files begin with. Converters find it in the environment variable
    /// KIRVO_TEMPORARY.
    const std::string& Prefix() const { return Beginning; }

    std::string AnswerFile() const { return Beginning + "_init"; }

    std::string ErrorFile() const { return Beginning + "_error"; }

    /// Where our own converters write how far they are: a number from 0 to 100.
    std::string ProgressFile() const { return Beginning + "_progress"; }

    /// Names of no files, "_import" or "_export" and six characters behind the prefix.
    std::string NewImportFile() { return NewName("_import"); }

    std::string NewExportFile() { return NewName("_export"); }

  private:
    std::string NewName(const char* purpose);

    std::string Folder; // empty: a directory of everybody's
    std::string Beginning;
    std::string Failure;
    std::vector<std::string> Names;
};

/// How a converter ended.
struct ConverterEnd {
    int NotStarted = 0; // the system's number of the reason why it could not be started
    int Signal = 0;     // that ended it
    int Status = 0;     // its exit status
    bool Cancelled = false;
    bool TookTooLong = false;
};

/// What a converter is run with.
struct ConverterStart {
    std::string Program; // full path
    std::vector<std::string> Arguments;
    /// Its input and output, told in KIRVO_MODEL_DIRECTORY: where the model file will lie; may be empty.
    std::string ModelDirectory;
    /// When it is killed, seconds; 0: never.
    double TimeLimit = 0;
};

/// Runs a converter and waits for its end; `step` (may be null) is called some hundred times a second meanwhile with
/// the seconds since the start. Non-zero cancels: the converter and what it has started are killed.
ConverterEnd RunConverter(const ConverterStart& start, const ConverterFolder& folder, int (*step)(double seconds));

/// What ConvertFile says of a converter that ended well and left no file.
inline constexpr char NothingMade[] = "the converter has made no file";

/// Imports or exports without showing anything: `from` and `to` are full paths, one of them a model file. Gives a line
/// that says why it failed, nothing on success.
std::string ConvertFile(const std::string& program, const std::string& from, const std::string& to,
                        const std::string& modelDirectory, ConverterFolder& folder);
