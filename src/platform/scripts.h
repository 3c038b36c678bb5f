// Input scripts: pointer and key events read from a file (KIRVO_SCRIPT) instead of from a user. One command a line,
// words separated by blanks, "..." keeps blanks (with \" and \\), # begins a comment. Events enter where the desktop's
// enter, one at a time: the next when the program has asked for events, found none, and let time pass. The commands
// that need no knowledge of gadgets are built in: in move press release click doubleclick drag wheel key hold let type
// puck wait close quit resize place snapshot echo drop. A toolkit adds more through AddScriptCommand.
#pragma once

#include <string>
#include <vector>

namespace gl {

// What a script command's function says when it returns.
enum class ScriptResult {
    Done,  // the command is finished once the steps that it added are played
    Again, // play the added steps, let the program settle, then call the function again with Stage one higher
    Failed // it cannot be done: Error says why; the program ends with FILE:LINE: Error and status 1
};

// One command being carried out. Positions are pixels of a window's content from its lower left corner.
struct ScriptCall {
    std::vector<std::string> Words; // the command and its arguments, quotes removed
    int Window = 0;                 // the addressed window
    int Stage = 0;                  // 0 at the first call
    std::string Error;

    // Steps to play, in this order, each when the program is ready for it.
    void Move(int window, int x, int y);
    void Press(int button); // LEFTMOUSE, MIDDLEMOUSE, RIGHTMOUSE
    void Release(int button);
    void TurnWheel(int device, int amount); // WHEELX or WHEELY, in 120ths of a notch
    void Key(const std::string& chord);     // as the command key takes it
    void Type(const std::string& text);     // UTF-8
    void Wait(long ticks);

    // A position word and its successor: reads "X Y" (negative from the right and top edge) or one word of a form that
    // ScriptPosition knows, starting at Words[index]; advances index past it. False with Error set when it is none.
    bool ReadPosition(std::size_t& index, int& x, int& y);
    // A number; a button's name. False with Error set.
    bool ReadNumber(std::size_t& index, double& value);
    bool ReadButton(std::size_t& index, int& button);
};

using ScriptCommand = ScriptResult (*)(ScriptCall&);

// Adds a command under a name that is not built in. Its function is called when the program has come to rest.
void AddScriptCommand(const std::string& name, ScriptCommand function);

// Slot: positions of other forms ("model:X,Y,Z", "vertex:N", "item:LABEL") in a window. Called with the word; sets x
// and y and returns true, or returns false with `error` set ("" when it does not know the form). Null: there are no
// other forms.
extern bool (*ScriptPosition)(const std::string& word, int window, int& x, int& y, std::string& error);

// Slot: called at the end of a script on the headless display; null: the program ends with status 0.
extern void (*ScriptEnded)();

// The program has set events of the queue aside and has yet to see to them: the script waits until it asks for events
// again.
void HoldScript();

// Plays a script instead of the one that KIRVO_SCRIPT names; `name` is for messages. Replaces what is being played.
void PlayScript(const std::string& text, const std::string& name);
// Whether commands are left to play.
bool ScriptIsPlaying();

} // namespace gl
