#pragma once

#include "gooey/event_loop.h"
#include "store/records.h"

// What can be done from the material palette, by menu, key or button.

inline constexpr char MaterialPalettePage[] = "R_MaterialPalette";

/// Commands are characters typed in the palette, those without a key numbers above them.
enum MaterialCommand {
    NewMaterialCommand = InsertCharacter,
    CopyMaterialCommand = CtrlCharacter('C'),
    PasteMaterialCommand = CtrlCharacter('V'),
    UndoMaterialCommand = CtrlCharacter('Z'),
    ManualCommand = '?',
    SavePaletteCommand = 256,
    LoadPaletteCommand = 257,
    SaveDefaultPaletteCommand = 258,
    LoadOnNewCommand = 259,
    DeleteMaterialCommand = 260,
    DeleteUnusedCommand = 261,
    EditMaterialCommand = 262,
    FindMaterialCommand = 263
};

/// Carries a command out; others are ignored. The arrow keys move the current material.
void DoMaterialCommand(int command);

/// The rows of buttons that change the selected polygons: which one is in ButtonChoice.
void ApplyMaterialButton();
void LightGroupButton();

/// Flag: MaterialClipboard holds a material; for the rest of the run.
extern int MaterialCopied;

/// Keeps the material as it is now, for "Undo"; null: nothing can be undone.
void KeepForUndo(const Material* material);
/// 1 when that is the material kept.
int KeptForUndo(const Material* material);
