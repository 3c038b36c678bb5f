#include "files/conversions.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/memory.h"
#include "files/converter_processes.h"
#include "files/converters.h"
#include "files/file_commands.h"
#include "files/file_errors.h"
#include "files/loading_bar.h"
#include "files/unsaved_work.h"
#include "files/writer.h"
#include "gooey/file_selector.h"
#include "gooey/menu.h"
#include "gooey/messages.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "views/main_window.h"

#include <cstring>
#include <fstream>
#include <string>
#include <strings.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::size_t LongestErrorText = 1000;
/// The identifiers of imports end where those of exports begin.
constexpr int MostEntries = FirstExportItem - FirstImportItem;

MenuEntry *ImportMenu, *ExportMenu;
const Converter* Chosen; // of the open file selector
std::string FileToImport;

const Converter* ConverterAt(const Converter* list, int place) {
    while (list && place-- > 0)
        list = list->Next;
    return list;
}

void ChooseFileToImport() {
    DoFileSelector(FileToOpen, FilePath, nullptr, Chosen->Extension, DoImport, MainWindow);
}

std::string WithExtension(std::string name, const char* extension) {
    return extension && !name.ends_with(extension) ? name + extension : name;
}

void ChooseFileToExportTo() {
    char name[MaxFileName];
    CopyFileName(name, FileName);
    ChopOffKirvo(name);
    const std::string proposed = WithExtension(name, Chosen->Extension);
    DoFileSelector(FileToSave, FilePath, proposed.c_str(), Chosen->Extension, DoExport, MainWindow);
}

/// What an imported model is called: the file's name with its extension replaced.
std::string ModelNameFor(const std::string& name, const char* extension) {
    const std::size_t length = extension ? std::strlen(extension) : 0;
    if (length && name.size() > length && name[name.size() - length] == '.')
        return name.substr(0, name.size() - length) + KirvoExtension;
    return name + KirvoExtension;
}

/// How far a converter says it is, 0 to 1; negative when it does not.
double PartDone(const std::string& progressFile) {
    double percent = -1;
    std::ifstream(progressFile) >> percent;
    return percent >= 0 && percent <= 100 ? percent / 100 : -1;
}

std::string ProgressFile, ProgressText;

int ShowProgress(double seconds) {
    return ShowWorkProgress(ProgressText.c_str(), seconds, [] { return PartDone(ProgressFile); });
}

/// Runs the converter while the user is shown that it works. False when it made nothing that could be used, which the
/// user has been told.
bool Convert(const Converter& converter, const std::string& text, const std::string& from, const std::string& to,
             ConverterFolder& folder) {
    unlink(folder.ErrorFile().c_str());
    ProgressFile = folder.ProgressFile();
    ProgressText = text;
    const ConverterEnd end = RunConverter({converter.Program, {from, to}, FilePath, 0}, folder, ShowProgress);
    EndWorkProgress();
    if (end.Cancelled)
        TellUserS("The conversion was cancelled.");
    else if (end.NotStarted)
        TellUserS((std::string("The converter could not be started:\n\n") + std::strerror(end.NotStarted)).c_str());
    else if (ConversionError(folder.ErrorFile().c_str()))
        return false;
    else if (end.Signal)
        TellUserS((std::string("The converter failed:\n\n") + strsignal(end.Signal)).c_str());
    else
        return true;
    return false;
}

bool FolderIsThere(const ConverterFolder& folder) {
    if (folder.Problem().empty())
        return true;
    TellUserS(("No temporary files can be made:\n\n" + folder.Problem()).c_str());
    return false;
}

} // namespace

MenuEntry* GenerateConverterMenu(const Converter* list, int firstItem) {
    std::vector<MenuEntry> entries;
    for (; list && static_cast<int>(entries.size()) < MostEntries; list = list->Next)
        entries.push_back({CopyOfString(list->Label), MenuEntryItem,
                           static_cast<std::int16_t>(firstItem + static_cast<int>(entries.size())), 0, nullptr,
                           nullptr});
    if (entries.empty())
        return nullptr;
    entries.back().Kind = MenuEntryLast;
    auto* menu = static_cast<MenuEntry*>(Allocate(entries.size() * sizeof(MenuEntry)));
    if (menu)
        std::copy(entries.begin(), entries.end(), menu);
    return menu;
}

void FreeCMenu(MenuEntry* menu) {
    if (!menu)
        return;
    for (MenuEntry* entry = menu;; ++entry) {
        Free(const_cast<char*>(entry->Label));
        if (entry->Kind == MenuEntryLast)
            break;
    }
    Free(menu);
}

const MenuEntry* MakeImportMenu() {
    if (!ImportMenu)
        ImportMenu = GenerateConverterMenu(ImportList, FirstImportItem);
    return ImportMenu;
}

const MenuEntry* MakeExportMenu() {
    if (!ExportMenu)
        ExportMenu = GenerateConverterMenu(ExportList, FirstExportItem);
    return ExportMenu;
}

void EndConversions() {
    FreeCMenu(ImportMenu);
    FreeCMenu(ExportMenu);
    ImportMenu = ExportMenu = nullptr;
    FreeConverters();
}

void DoFileConversion(int item) {
    const bool imports = item < FirstExportItem;
    const Converter* converter =
        imports ? ConverterAt(ImportList, item - FirstImportItem) : ConverterAt(ExportList, item - FirstExportItem);
    if (!converter)
        return;
    Chosen = converter;
    Trace(imports ? "Importing a %s file\n" : "Exporting a %s file\n", converter->Label);
    if (!*FilePath)
        CopyFileName(FilePath, HomeDir);
    if (imports)
        WorkNotSaved(ChooseFileToImport);
    else
        ChooseFileToExportTo();
}

void DoImport(int, const char* directory, const char* name) {
    const std::string from = std::string(directory) + "/" + name;
    const std::string newPath = *directory ? directory : "/", newName = ModelNameFor(name, Chosen->Extension);
    const std::string oldPath = FilePath, oldName = FileName;
    ConverterFolder folder;
    if (!FolderIsThere(folder))
        return;
    if (!CopyFileName(FilePath, newPath.c_str()) || !CopyFileName(FileName, newName.c_str())) {
        TellUserS("The name of the file is too long.");
        CopyFileName(FilePath, oldPath.c_str());
        return;
    }
    const std::string model = folder.NewImportFile();
    const bool made = Convert(*Chosen, std::string("Importing a ") + Chosen->Label + " file...", from, model, folder);
    const bool loaded = made && LoadImportedModel(model.c_str());
    // A model that could not be read has left the one before it, or an empty one.
    if (!made || (!loaded && (FileErrorNumber == NotAKirvoFile || FileErrorNumber == FileNotFound))) {
        CopyFileName(FilePath, oldPath.c_str());
        CopyFileName(FileName, oldName.c_str());
    }
    ChangeWindowTitle();
    DirtyAllWindows();
}

void DoExport(int, const char* directory, const char* name) {
    ConverterFolder folder;
    if (!FolderIsThere(folder))
        return;
    const std::string model = folder.NewExportFile();
    ClearFileError();
    if (!WriteKirvo(model.c_str())) {
        if (FileErrorNumber == WriteFailed)
            TellUserS("The model could not be written for the converter: the disk may be full.");
        return;
    }
    const std::string to = std::string(directory) + "/" + WithExtension(name, Chosen->Extension);
    Convert(*Chosen, std::string("Exporting a ") + Chosen->Label + " file...", model, to, folder);
}

bool CanBeImported(const char* path) {
    return FindConverter(ImportList, ExtensionOf(path)) != nullptr;
}

void ImportByName(const char* path) {
    Chosen = FindConverter(ImportList, ExtensionOf(path));
    if (!Chosen) {
        TellUserS("There is no converter for files of this kind.");
        return;
    }
    FileToImport = path;
    WorkNotSaved([] {
        char *directory, *name;
        SplitFileName(FileToImport.c_str(), directory, name);
        DoImport(FileToOpen, std::string(directory).c_str(), std::string(name).c_str());
    });
}

int ConversionError(const char* errorFile) {
    std::ifstream file(errorFile, std::ios::binary);
    if (!file)
        return 0;
    std::string text(LongestErrorText, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (!text.empty())
        TellUserS(text.c_str());
    unlink(errorFile);
    return 1;
}
