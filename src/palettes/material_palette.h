#pragma once

#include "gooey/palette_grid.h"
#include "gooey/tool_window.h"
#include "store/records.h"

// The window that shows the materials of the file and the lighting of new polygons, and from which both are put on
// polygons.

/// Null while it is closed.
extern Window* MaterialPalette;
extern const ToolWindow MaterialPaletteWindow;
extern int MatpalX, MatpalY, MatpalW, MatpalH, MaterialPaletteOpened;
/// Flag, kept with the defaults: opened again at the next start.
extern int PaletteOpen;
extern PaletteGrid MaterialPaletteGrid;

/// Opens it, or raises it when it is open.
void OpenMaterialPalette();

/// Shows the current material, whose values or place have changed, anew in place.
void RedrawCurrentSweetie();
/// The same for any material, with what is under the grid left as it is.
void RedrawSweetie(Material* material);

/// Makes a material current, with all that follows it.
void SelectMaterial(Material* material);

/// Materials have been numbered and defined anew, some may have come or gone: shows all of them.
void MaterialsWereRedefined();
