#pragma once

struct ToolWindow;
struct Window;

// The window that makes polygons of a line of text.

extern const ToolWindow TextGeneratorWindow;
/// While it is open, null otherwise.
extern Window* TextGenerator;
/// Where it was last, and whether there is such a place; kept with the defaults.
extern int TextGenX, TextGenY, TextGeneratorOpened;
/// Flag: no tool is running that it would disturb.
extern int TextGeneratorEnabled;

inline constexpr int TextBufferSize = 1000;
extern char TextBuffer[TextBufferSize];

void OpenTextGenerator();

/// Reads the font that is chosen unless it is loaded. Where it cannot be read there is none.
void LoadCurrentFont();

/// Adds the text to the current object, from one edge of the grid to the other. Tells when it cannot.
void GenerateText();
