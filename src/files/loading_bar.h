#pragma once

/// For TheFileSlots.ReadingProgress: shows in the main window's status line how far a read that takes longer than a
/// moment has come, and lets Escape cancel it.
int ShowReadingProgress(double part);
