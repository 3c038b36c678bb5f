#pragma once

// Converters: programs beside the installation that turn files of other programs into model files and back. Those in
// KirvoDir/converters/to_Kirvo import, those in from_Kirvo export. Asked with the single argument "KIRVO", a converter
// writes its menu label and its file extension to a file (files/converter_processes.h); docs/converters.md tells all
// that it has to do.

/// One usable program. Owned by its list.
struct Converter {
    Converter* Next;
    char* Program;   // owned: full path
    char* Label;     // owned: for the menu
    char* Extension; // owned: with its leading "."; null for a converter of any file
};

/// The import and the export converters, each in ascending order of label, upper and lower case being equal.
extern Converter* ImportList;
extern Converter* ExportList;

/// Asks the programs of both directories of KirvoDir and fills the lists; what they answered the last time is taken
/// from the file .kirvo_converters in HomeDir (if there is one) as long as they have not changed. Directories that
/// somebody else may have put something into are left out, which the debug stream tells.
void FindConverters();

/// Empties both lists.
void FreeConverters();

/// The converter of a list with this extension (with its ".", upper and lower case being equal), or null: of several
/// the first, of any file none.
Converter* FindConverter(Converter* list, const char* extension);

/// The extension of a path with its "."; "" when its name has none.
const char* ExtensionOf(const char* path);
