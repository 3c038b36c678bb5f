#pragma once

#include <string>

struct Window;

// Script commands that look inside the program:
//
//   check            every rule of the store holds, in both files
//   settle           closes all windows but the main one and ends what runs, until the program waits for a user who
//                    begins
//   mode M           polygon, vertex or scene: types the keys that lead there
//   unsaved          the work counts as unsaved
//   remember         keeps what the model holds
//   unchanged        the model still is as it was remembered
//   undo             undoes what has changed since then, redoes it and undoes it again, the model being compared each
//                    time
//   halfway          uses the tool that runs, if any, without finishing, and cancels it: the model must be as
//                    remembered
//   drawn            what is shown is what is shown after everything has been drawn anew
//   open FILE        shows a model file
//   run COMMAND      the shell runs it; the program is its $PPID
//   reopen           saves the model, opens it and saves it again: both files are the same, and so is the large view
void InstallDriverCommands();

/// What is wrong with the model; "" when every rule of the store holds.
std::string ModelProblems();

/// The newest window beside the main window, its viewports and its own parts; null when there is none.
Window* NewestSideWindow();

/// Whether a tool, a tool of the grid or the choice of a rotation centre runs.
bool SomethingRuns();
