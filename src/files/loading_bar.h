#pragma once

/// For TheFileSlots.ReadingProgress: shows in the main window's status line how far a read that takes longer than a
/// moment has come, and lets Escape cancel it.
int ShowReadingProgress(double part);

/// The same for other work, called again and again with what is done and the seconds since it began; `part` gives how
/// far it is, 0 to 1, negative when that is not known. Non-zero: the user cancels. Ends with EndWorkProgress.
int ShowWorkProgress(const char* text, double seconds, double (*part)());
void EndWorkProgress();

/// For TheTextureDefinitionSlots.ReadingProgress: shows in the same place, when it takes longer than a moment, how many
/// images have been read.
void ShowTextureProgress(int read, int count);
