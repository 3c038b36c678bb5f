// Playing a script: its lines, the steps that the commands come down to, and when each has its turn (see scripts.h).
#pragma once

#include "platform/scripts.h"

#include <string>
#include <vector>

namespace gl {

// Reads the script file named `path` ("-": standard input; null or "": none). One that cannot be read ends the program
// with the reason on the standard error stream and status 1.
void LoadScript(const char* path);
void ForgetScript();

// What the program is doing when the script has its turn.
enum class ScriptTurn {
    AtRest,      // nothing is left to do: all commands are carried out
    AmidDrawing, // events only
    AmidWork     // that the user waits for: events, waits, and after a wait the commands that look on or cancel
};

// The script's turn: plays the next event, and carries out the commands up to it that are allowed now. Ends the program
// where a command fails or, on the headless display, the script ends.
void PlayNextStep(ScriptTurn turn);

// The words of a script line, quotes removed. False with `error` for a quote that is not closed.
bool SplitWords(const std::string& line, std::vector<std::string>& words, std::string& error);

// A built-in command's function; null for a name that is not built in.
ScriptCommand BuiltInCommand(const std::string& name);

// Steps that only built-in commands need.
void AddKeyStep(const std::string& key, bool pressed, ScriptCall& call);
void AddPuckStep(int button, int x, int y);

// The window that `in` addressed, the main window at first; `in` changes it.
void AddressWindow(int id);

} // namespace gl
