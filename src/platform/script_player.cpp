#include "platform/script_player.h"

#include "platform/clock.h"
#include "platform/display.h"
#include "platform/event_queue.h"
#include "platform/events.h"
#include "platform/input.h"
#include "platform/keyboard.h"
#include "platform/screen_windows.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>

namespace gl {

bool (*ScriptPosition)(const std::string& word, int window, int& x, int& y, std::string& error) = nullptr;
void (*ScriptEnded)() = nullptr;

namespace {

enum class StepKind { Move, Press, Release, Wheel, KeyDown, KeyUp, Character, Wait, PuckDown, PuckUp };

struct Step {
    StepKind Kind;
    int Window = 0;             // Move
    int X = 0, Y = 0;           // Move, PuckDown
    int Device = 0;             // buttons and keys
    char32_t Character = 0;     // KeyDown, Character
    long long Microseconds = 0; // Wait; once begun: when it ends
    bool Begun = false;         // Wait
};

struct PlayerState {
    bool Playing = false;
    std::string Name;
    std::vector<std::string> Lines;
    std::size_t NextLine = 0; // also the number of the line being played
    std::deque<Step> Steps;
    ScriptCommand Command = nullptr; // to be called again
    ScriptCall Call;
    int Addressed = 0;
    bool WaitedAmidWork = false; // the work under way is what the script waited for
};

PlayerState Player;

std::map<std::string, ScriptCommand>& AddedCommands() {
    static std::map<std::string, ScriptCommand> commands;
    return commands;
}

[[noreturn]] void Fail(const std::string& reason) {
    std::fflush(stdout);
    std::fprintf(stderr, "%s:%zu: %s\n", Player.Name.c_str(), Player.NextLine, reason.c_str());
    std::exit(1);
}

void EndScript() {
    ForgetScript();
    if (ScriptEnded) {
        ScriptEnded();
    } else if (CurrentDisplay() && CurrentDisplay()->IsHeadless()) {
        std::fflush(nullptr);
        std::exit(0);
    }
}

void PlayKeyDown(const Step& step) {
    KeyDeviceChanged(step.Device, true);
    char32_t character = step.Character;
    const bool shift = DeviceValue(LEFTSHIFTKEY) != 0 || DeviceValue(RIGHTSHIFTKEY) != 0;
    if (shift && character >= 'a' && character <= 'z')
        character -= 'a' - 'A';
    CharacterTyped(WithModifiers(character, HeldModifiers()));
}

void PlayEvent(const Step& step) {
    switch (step.Kind) {
    case StepKind::Move: {
        const ScreenWindow* window = FindScreenWindow(step.Window);
        if (!window)
            Fail("the window is gone");
        const WindowRectangle place = ScreenPlace(*window);
        PointerMoved(place.X + step.X, place.Y + step.Y);
        break;
    }
    case StepKind::Press:
    case StepKind::Release:
        ButtonChanged(step.Device, step.Kind == StepKind::Press);
        break;
    case StepKind::Wheel:
        WheelTurned(step.Device, step.X);
        break;
    case StepKind::KeyDown:
        PlayKeyDown(step);
        break;
    case StepKind::KeyUp:
        KeyDeviceChanged(step.Device, false);
        break;
    case StepKind::Character:
        CharacterTyped(step.Character);
        break;
    case StepKind::PuckDown:
        PuckMoved(step.X, step.Y);
        PuckButtonChanged(step.Device, true);
        break;
    case StepKind::PuckUp:
        PuckButtonChanged(step.Device, false);
        break;
    case StepKind::Wait:
        break;
    }
}

// False while a wait goes on.
bool WaitIsOver(Step& step) {
    if (!step.Begun) {
        step.Begun = true;
        step.Microseconds += ClockMicroseconds();
    }
    return ClockMicroseconds() >= step.Microseconds;
}

void CallCommand() {
    const ScriptResult result = Player.Command(Player.Call);
    if (result == ScriptResult::Failed)
        Fail(Player.Call.Error);
    Player.Call.Stage++;
    if (result == ScriptResult::Done)
        Player.Command = nullptr;
}

// Whether the next line may begin while the program is at work.
bool NextLineLooksOn() {
    static constexpr const char* lookers[] = {"key", "snapshot", "echo"};
    std::vector<std::string> words;
    std::string error;
    for (std::size_t line = Player.NextLine; line < Player.Lines.size(); ++line) {
        if (!SplitWords(Player.Lines[line], words, error) || words.empty())
            continue;
        return words[0] == "wait" || (Player.WaitedAmidWork &&
                                      std::find(std::begin(lookers), std::end(lookers), words[0]) != std::end(lookers));
    }
    return false;
}

// A command of several stages waits for the program to come to rest.
bool MayGoOnAmidWork() {
    return Player.Command ? Player.Call.Stage == 0 : NextLineLooksOn();
}

// Begins the next line that holds a command. False at the end of the script.
bool BeginNextLine() {
    while (Player.NextLine < Player.Lines.size()) {
        ScriptCall call;
        std::string error;
        if (!SplitWords(Player.Lines[Player.NextLine++], call.Words, error))
            Fail(error);
        if (call.Words.empty())
            continue;
        ScriptCommand command = BuiltInCommand(call.Words[0]);
        if (const auto added = AddedCommands().find(call.Words[0]); !command && added != AddedCommands().end())
            command = added->second;
        if (!command)
            Fail("unknown command \"" + call.Words[0] + "\"");
        if (Player.Addressed == 0)
            if (const std::vector<ScreenWindow*> windows = WindowsByAge(); !windows.empty())
                Player.Addressed = windows.front()->Id;
        call.Window = Player.Addressed;
        Player.Command = command;
        Player.Call = std::move(call);
        return true;
    }
    return false;
}

} // namespace

bool SplitWords(const std::string& line, std::vector<std::string>& words, std::string& error) {
    words.clear();
    for (std::size_t i = 0; i < line.size();) {
        const char c = line[i];
        if (c == ' ' || c == '\t' || c == '\r') {
            i++;
            continue;
        }
        if (c == '#')
            break;
        std::string word;
        if (c == '"') {
            for (i++; i < line.size() && line[i] != '"'; i++) {
                if (line[i] == '\\' && i + 1 < line.size() && (line[i + 1] == '"' || line[i + 1] == '\\'))
                    i++;
                word += line[i];
            }
            if (i == line.size()) {
                error = "a quoted text has no end";
                return false;
            }
            i++;
        } else {
            while (i < line.size() && !std::strchr(" \t\r", line[i]))
                word += line[i++];
        }
        words.push_back(std::move(word));
    }
    return true;
}

void PlayScript(const std::string& text, const std::string& name) {
    ForgetScript();
    Player.Playing = true;
    Player.Name = name;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        Player.Lines.push_back(line);
}

void LoadScript(const char* path) {
    ForgetScript();
    if (!path || !*path)
        return;
    std::string text;
    if (std::strcmp(path, "-") == 0) {
        text.assign(std::istreambuf_iterator<char>(std::cin), {});
        PlayScript(text, "standard input");
        return;
    }
    std::ifstream file(path, std::ios::binary);
    text.assign(std::istreambuf_iterator<char>(file), {});
    if (!file) {
        std::fprintf(stderr, "KIRVO_SCRIPT: cannot read %s: %s\n", path, std::strerror(errno));
        std::exit(1);
    }
    PlayScript(text, path);
}

void ForgetScript() {
    Player = {};
}

bool ScriptIsPlaying() {
    return Player.Playing;
}

void AddressWindow(int id) {
    Player.Addressed = id;
}

void AddScriptCommand(const std::string& name, ScriptCommand function) {
    AddedCommands()[name] = function;
}

void PlayNextStep(ScriptTurn turn) {
    if (turn == ScriptTurn::AtRest)
        Player.WaitedAmidWork = false;
    while (Player.Playing) {
        if (!Player.Steps.empty()) {
            Step& next = Player.Steps.front();
            if (next.Kind == StepKind::Wait && !WaitIsOver(next))
                return;
            const Step step = next;
            Player.Steps.pop_front();
            if (step.Kind == StepKind::Wait) {
                Player.WaitedAmidWork = turn == ScriptTurn::AmidWork;
                continue;
            }
            PlayEvent(step);
            return;
        }
        if (turn == ScriptTurn::AmidDrawing || (turn == ScriptTurn::AmidWork && !MayGoOnAmidWork()))
            return;
        // A command may have queued something (a new size, a wish to quit): the program sees to that first.
        if (!QueueIsEmpty() && turn == ScriptTurn::AtRest)
            return;
        if (Player.Command)
            CallCommand();
        else if (!BeginNextLine())
            EndScript();
    }
}

// ---- Steps ----

void ScriptCall::Move(int window, int x, int y) {
    Player.Steps.push_back({StepKind::Move, window, x, y, 0, 0, 0, false});
}

void ScriptCall::Press(int button) {
    Player.Steps.push_back({StepKind::Press, 0, 0, 0, button, 0, 0, false});
}

void ScriptCall::Release(int button) {
    Player.Steps.push_back({StepKind::Release, 0, 0, 0, button, 0, 0, false});
}

void ScriptCall::TurnWheel(int device, int amount) {
    Player.Steps.push_back({StepKind::Wheel, 0, amount, 0, device, 0, 0, false});
}

void ScriptCall::Type(const std::string& text) {
    for (char32_t character : CharactersOf(text))
        Player.Steps.push_back({StepKind::Character, 0, 0, 0, 0, character, 0, false});
}

void ScriptCall::Wait(long ticks) {
    Player.Steps.push_back({StepKind::Wait, 0, 0, 0, 0, 0, ticks * TickMicroseconds, false});
}

void AddKeyStep(const std::string& name, bool pressed, ScriptCall& call) {
    Step step{pressed ? StepKind::KeyDown : StepKind::KeyUp, 0, 0, 0, 0, 0, 0, false};
    if (const Key* key = FindKey(name)) {
        step.Device = key->Device;
        step.Character = key->Character;
    } else if (const std::u32string characters = CharactersOf(name); characters.size() == 1) {
        step.Device = DeviceOfCharacter(characters[0]);
        step.Character = characters[0];
    } else {
        call.Error = "unknown key \"" + name + "\"";
        return;
    }
    Player.Steps.push_back(step);
}

void AddPuckStep(int button, int x, int y) {
    Player.Steps.push_back({StepKind::PuckDown, 0, x, y, button, 0, 0, false});
    Player.Steps.push_back({StepKind::PuckUp, 0, 0, 0, button, 0, 0, false});
}

void ScriptCall::Key(const std::string& chord) {
    static const struct {
        const char* Prefix;
        const char* Name;
    } Held[] = {{"Shift+", "LeftShift"}, {"Ctrl+", "LeftCtrl"}, {"Alt+", "LeftAlt"}};

    std::vector<std::string> modifiers;
    std::string key = chord;
    for (bool found = true; found;) {
        found = false;
        for (const auto& modifier : Held)
            if (key.starts_with(modifier.Prefix) && key.size() > std::strlen(modifier.Prefix)) {
                modifiers.emplace_back(modifier.Name);
                key.erase(0, std::strlen(modifier.Prefix));
                found = true;
            }
    }
    for (const std::string& modifier : modifiers)
        AddKeyStep(modifier, true, *this);
    AddKeyStep(key, true, *this);
    AddKeyStep(key, false, *this);
    for (auto modifier = modifiers.rbegin(); modifier != modifiers.rend(); ++modifier)
        AddKeyStep(*modifier, false, *this);
}

} // namespace gl
