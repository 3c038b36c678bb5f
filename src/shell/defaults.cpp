#include "shell/defaults.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/file_replacement.h"
#include "gooey/draw.h"
#include "shell/defaults_table.h"
#include "shell/preferences.h"
#include "views/capabilities.h"
#include "views/display_flags.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <map>
#include <optional>
#include <set>
#include <sys/stat.h>

int FirstTimeEver = 1;

namespace {

// In the home directory; a later one in the list replaces the ones before.
constexpr const char* OlderNames[] = {"/.kirvo_defaults", "/.Kirvo_defaults", "/.Kirvo_init"};

// Readers take no more of a line.
constexpr std::size_t LineLimit = 999;
// No defaults file is as large; the rest of such a file is not looked at.
constexpr std::size_t LargestFile = 1 << 20;

// What the key of a text is followed by in the key of the line that holds it whole.
constexpr char WholeSuffix[] = "Whole";

// Windows lie somewhere near the screen and have a size that one can have.
constexpr int FarthestPlace = 32767;
constexpr int LargestWindow = 16384;

constexpr std::string_view Blanks = " \t\n\v\f\r";

std::string_view FirstWord(std::string_view text) {
    const std::size_t first = std::min(text.find_first_not_of(Blanks), text.size());
    text.remove_prefix(first);
    return text.substr(0, text.find_first_of(Blanks));
}

struct Setting {
    std::string_view Key, Value;
};

// A line is a word, blanks if any, "=", blanks if any, a word; what follows is passed over.
std::optional<Setting> SettingOf(std::string_view line) {
    if (line.find('\0') != std::string_view::npos)
        return std::nullopt;
    const std::string_view key = FirstWord(line);
    line.remove_prefix(static_cast<std::size_t>(key.data() + key.size() - line.data()));
    line.remove_prefix(std::min(line.find_first_not_of(Blanks), line.size()));
    if (key.empty() || !line.starts_with('='))
        return std::nullopt;
    const std::string_view value = FirstWord(line.substr(1));
    if (value.empty())
        return std::nullopt;
    return Setting{key, value};
}

// `count` numbers separated by commas; what follows them is passed over.
bool ReadNumbers(std::string_view text, int count, int (&numbers)[4]) {
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int i = 0; i < count; ++i) {
        if (i > 0 && (at == end || *at++ != ','))
            return false;
        if (at != end && *at == '+')
            ++at;
        const auto [next, error] = std::from_chars(at, end, numbers[i]);
        if (error != std::errc())
            return false;
        at = next;
    }
    return true;
}

bool IsWindowPlace(DefaultsForm form) {
    return form == DefaultsForm::Position || form == DefaultsForm::PositionAndHeight ||
           form == DefaultsForm::PositionAndSize;
}

bool IsSensiblePlace(const int (&numbers)[4], int count) {
    for (int i = 0; i < count; ++i) {
        const bool sensible = i < 2 ? std::abs(static_cast<long long>(numbers[i])) <= FarthestPlace
                                    : numbers[i] > 0 && numbers[i] <= LargestWindow;
        if (!sensible)
            return false;
    }
    return true;
}

// False when the value is not of the entry's form.
bool ApplyNumbers(const DefaultsEntry& entry, std::string_view value) {
    int numbers[4] = {};
    const int count = NumberCount(entry.Form);
    if (!ReadNumbers(value, count, numbers) || (IsWindowPlace(entry.Form) && !IsSensiblePlace(numbers, count)))
        return false;
    if (const DefaultsRange* range = entry.Range; range && (numbers[0] < range->Least || numbers[0] > range->Most))
        numbers[0] = range->Otherwise;
    for (int i = 0; i < count; ++i)
        *entry.Values[i] = numbers[i];
    if (entry.Opened)
        *entry.Opened = 1;
    return true;
}

bool Apply(const DefaultsEntry& entry, std::string_view value) {
    switch (entry.Form) {
    case DefaultsForm::Flag:
        *entry.Values[0] = value == "TRUE";
        return true;
    case DefaultsForm::Letter:
        if (value[0] != 'A' && value[0] != 'B')
            return false;
        *entry.Values[0] = value[0] == 'A';
        *entry.Values[1] = value[0] == 'B';
        return true;
    case DefaultsForm::Word:
        return CopyFileName(entry.Text, MaxFileName, std::string(value).c_str());
    default:
        return ApplyNumbers(entry, value);
    }
}

// ---- Texts with blanks: a second line holds them whole, bytes that are no part of a word as %XX.

bool NeedsEscape(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return code <= ' ' || code == 0x7F || byte == '%';
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char byte : text) {
        char code[4] = {byte};
        if (NeedsEscape(byte))
            std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned char>(byte));
        escaped += code;
    }
    return escaped;
}

// Nothing when the escapes are damaged.
std::optional<std::string> Unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            plain += text[i];
            continue;
        }
        unsigned char code = 0;
        const char* const digits = text.data() + i + 1;
        if (text.size() - i < 3 || std::from_chars(digits, digits + 2, code, 16).ptr != digits + 2 || code == 0)
            return std::nullopt;
        plain += static_cast<char>(code);
        i += 2;
    }
    return plain;
}

// A line break in the text would begin a line of its own.
std::string WordLine(const char* key, std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return std::string(key) + " = " + text + "\n";
}

// What an older reader gets from the line of a text.
std::string_view WordRead(const std::string& line) {
    const auto setting = SettingOf(std::string_view(line).substr(0, std::min(line.find('\n'), LineLimit)));
    return setting ? setting->Value : std::string_view();
}

// ---- Reading

class Reader {
  public:
    void Take(std::string_view line);
    void Finish();

  private:
    bool WasRead(int number) const { return Read.contains(number); }

    void TakeWholeTexts();

    std::set<int> Read;
    // The escaped whole texts, by the number of their Word.
    std::map<std::size_t, std::string> Wholes;
};

void Reader::Take(std::string_view line) {
    const auto whole = SettingOf(line);
    if (!whole)
        return;
    for (std::size_t number = 0; number < DefaultsTable.size(); ++number) {
        const DefaultsEntry& entry = DefaultsTable[number];
        if (entry.Form == DefaultsForm::Word && whole->Key == std::string(entry.Key) + WholeSuffix)
            Wholes[number] = whole->Value;
    }
    const auto setting = SettingOf(line.substr(0, LineLimit));
    if (!setting)
        return;
    for (std::size_t number = 0; number < DefaultsTable.size(); ++number)
        if (setting->Key == DefaultsTable[number].Key && Apply(DefaultsTable[number], setting->Value))
            Read.insert(static_cast<int>(number));
    for (const DefaultsEntry& entry : AddedDefaultsTable)
        if (setting->Key == entry.Key)
            Apply(entry, setting->Value);
}

// A whole text counts when it still belongs to its word: an older program, or a hand, may have changed that alone.
void Reader::TakeWholeTexts() {
    for (const auto& [number, whole] : Wholes) {
        const DefaultsEntry& entry = DefaultsTable[number];
        const auto text = Unescaped(whole);
        const std::string_view word = WasRead(static_cast<int>(number)) ? entry.Text : "";
        if (text && WordRead(WordLine(entry.Key, *text)) == word &&
            CopyFileName(entry.Text, MaxFileName, text->c_str()))
            Read.insert(static_cast<int>(number));
    }
}

void Reader::Finish() {
    TakeWholeTexts();
    const auto set = [](int number, std::initializer_list<int> values) {
        int* const* variable = DefaultsTable[static_cast<std::size_t>(number)].Values;
        for (const int value : values)
            **variable++ = value;
    };
    bool aligned = true;
    for (int number = DefaultsTabletAlign1; number <= DefaultsTabletRotation; ++number)
        aligned = aligned && WasRead(number);
    if (!aligned) {
        set(DefaultsTabletAlign1, {0, 0, 100, 0});
        set(DefaultsTabletAlign2, {0, 0, 100, 0});
        set(DefaultsTabletCentre, {0, 0, 0, 0});
        set(DefaultsTabletRotation, {0});
    }
    if (!WasRead(DefaultsFilePath) || !WasRead(DefaultsFileName))
        FilePath[0] = FileName[0] = '\0';
    for (const int number : {DefaultsCircleSides, DefaultsNewSphereDepth})
        if (!WasRead(number))
            set(number, {DefaultsTable[static_cast<std::size_t>(number)].Range->Otherwise});
    if (!WasRead(DefaultsBackgroundColour))
        set(DefaultsBackgroundColour, {InitialBackgroundColour});
    // The program starts with one viewport; the model may want three.
    set(DefaultsNoViewports, {1});
}

// Null when there is no such file; what is no plain file counts as none.
std::FILE* OpenPlainFile(const char* name) {
    struct stat status;
    return stat(name, &status) == 0 && S_ISREG(status.st_mode) ? std::fopen(name, "r") : nullptr;
}

void TakeOverOlderFile() {
    for (const char* name : OlderNames)
        std::rename((std::string(HomeDir) + name).c_str(), DefaultFile);
}

std::string ContentsOf(std::FILE* file) {
    std::string text(LargestFile, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file));
    return text;
}

// ---- Writing

std::string NumbersOf(const DefaultsEntry& entry) {
    std::string text;
    for (int i = 0; i < NumberCount(entry.Form); ++i)
        text += (i ? "," : "") + std::to_string(*entry.Values[i]);
    return text;
}

std::string ValueOf(const DefaultsEntry& entry) {
    switch (entry.Form) {
    case DefaultsForm::Flag:
        return *entry.Values[0] ? "TRUE" : "FALSE";
    case DefaultsForm::Letter:
        return *entry.Values[0] ? "A" : "B";
    default:
        return NumbersOf(entry);
    }
}

std::string WordLines(const DefaultsEntry& entry) {
    std::string lines = WordLine(entry.Key, entry.Text);
    if (WordRead(lines) != entry.Text)
        lines += WordLine((std::string(entry.Key) + WholeSuffix).c_str(), Escaped(entry.Text));
    return lines;
}

std::string LinesOf(const DefaultsEntry& entry) {
    if (entry.WrittenIf && !*entry.WrittenIf)
        return "";
    return entry.Form == DefaultsForm::Word ? WordLines(entry) : WordLine(entry.Key, ValueOf(entry));
}

void TellThatItCannotBeWritten() {
    std::fprintf(stderr, "\nCouldn't create defaults file:\n%s\nReason:%s\n\a\n", DefaultFile, std::strerror(errno));
}

} // namespace

void ApplyDefaults(std::string_view text) {
    Reader reader;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        reader.Take(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    reader.Finish();
}

void ReadDefaults(const char* programPath) {
    FindDirectories(programPath);
    CrazyColours = 0;
    TextureOn = TextureAvailable;
    MoveTexture = FastTexture;
    struct stat status;
    if (stat(DefaultFile, &status) != 0)
        TakeOverOlderFile();
    std::FILE* file = OpenPlainFile(DefaultFile);
    if (!file) {
        Trace("Defaults file not found...\n");
        return;
    }
    FirstTimeEver = 0;
    ApplyDefaults(ContentsOf(file));
    std::fclose(file);
}

std::string DefaultsText() {
    std::string text;
    for (const DefaultsRun& run : DefaultsWritingOrder)
        for (int number = run.First; number <= run.Last; ++number)
            text += LinesOf(DefaultsTable[static_cast<std::size_t>(number)]);
    for (const DefaultsEntry& entry : AddedDefaultsTable)
        text += LinesOf(entry);
    return text;
}

void WriteDefaults() {
    FileReplacement file(DefaultFile);
    if (!file.Stream()) {
        TellThatItCannotBeWritten();
        return;
    }
    std::fputs(DefaultsText().c_str(), file.Stream());
    if (!file.Commit())
        TellThatItCannotBeWritten();
}
