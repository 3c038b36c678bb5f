#pragma once

/// 1 from the start of the program until the first model is in place.
extern int StartingUp;

/// 0 while running; 1 when a quit has been asked for, or the program is ending; 2 when the quit is confirmed and the
/// main window may close.
extern int Quitting;

constexpr int NormalEnd = 12345678;
constexpr int FatalEnd = 12345679;

/// The one exit routine: tells the reason that `code` stands for (NormalEnd, FatalEnd or a signal's number) on the
/// standard error stream, closes the debug stream and ends the program with exit status 0. Saves nothing. At a normal
/// end a developer build reports the memory that is still allocated. With a trapped signal's number it may run as the
/// handler: it then ends the process without running anything that is registered for the exit.
[[noreturn]] void KillProgram(int code);

/// Has KillProgram handle the termination signal and, but for a developer build, bus errors and segmentation
/// violations; the hang-up and the interrupt of a terminal, unless whoever started the program has them ignored, end it
/// by themselves.
void TrapStuff();

/// From here on the signals that ask for the end (termination, hang-up, interrupt) wait until the program has seen to
/// its work: EndAsked says so, and whoever waits for input gives up. A program that does not come to it within some
/// seconds ends all the same.
void LetSignalsWait();

/// Non-zero once such a signal has come.
int EndAsked();

/// The program has come to it and needs as long as it needs.
void StopWaitingForEnd();

/// Ends the program as the signal that came would have done at once.
[[noreturn]] void EndAsAsked();
