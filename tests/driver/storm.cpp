#include "driver/storm.h"

#include "driver/driver_commands.h"

#include "base/directories.h"
#include "gooey/file_selector.h"
#include "gooey/file_selector_state.h"
#include "gooey/gadget_commands.h"
#include "gooey/menu.h"
#include "gooey/program_windows.h"
#include "gooey/report.h"
#include "gooey/window.h"
#include "interaction/view_menus.h"
#include "platform/screen_windows.h"
#include "platform/scripts.h"
#include "platform/snapshots.h"
#include "shell/menus.h"
#include "store/storage.h"
#include "views/kept_drawings.h"
#include "views/tool_bar.h"
#include "views/viewports.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

constexpr char LogName[] = "storm.kscript";
/// It comes first in the list of files.
constexpr char OriginalName[] = "0-original.kirvo";
/// The model is opened again after so many actions, so that the storm does not go on over an empty one.
constexpr int ActionsPerModel = 400;
/// Of the main window, when it gets a size at random: larger ones only take time.
constexpr int LargestWidth = 600, LargestHeight = 460;
/// A place and a size of the main window where all menus are in sight.
constexpr char PlaceForMenus[] = "resize 750 525\nplace 60 90\n";

constexpr const char* Buttons[] = {"left", "middle", "right"};
constexpr const char* Modifiers[] = {"LeftShift", "RightShift", "LeftCtrl", "RightCtrl", "LeftAlt", "RightAlt"};
constexpr const char* Keys[] = {"Space",  "Return",   "Backspace", "Escape", "Tab",    "Delete", "Home",   "End",
                                "PageUp", "PageDown", "Up",        "Down",   "Left",   "Right",  "Insert", "F1",
                                "F12",    "Ctrl+a",   "Ctrl+c",    "Ctrl+e", "Ctrl+f", "Ctrl+j", "Ctrl+n", "Ctrl+p",
                                "Ctrl+t", "Ctrl+v",   "Ctrl+w",    "Ctrl+x", "Ctrl+z", "Ctrl+z", "Alt+z",  "Alt+a",
                                "Alt+f",  "Alt+n",    "Alt+s",     "Alt+o"};
constexpr char Letters[] = "abcdefghijklmnopqrstuvwxyz0123456789.,;:?!+-*/3w.vps";
constexpr const char* FileNames[] = {"storm", "a storm with blanks", "storm.kirvo"};

std::string InQuotes(const std::string& text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        quoted += c;
    }
    return quoted + "\"";
}

/// The title as the screen shows it.
std::string TitleOf(const Window* window) {
    return gl::FindScreenWindow(window->Gid)->Title;
}

std::string In(const Window* window) {
    return "in " + InQuotes(TitleOf(window)) + "\n";
}

/// Whether a script can name the window: the newest of several with one title.
bool CanBeNamed(const Window* window) {
    return gl::FindWindowByTitle(TitleOf(window)) == window->Gid;
}

class Storm {
  public:
    Storm(int actions, unsigned seed) : Actions(actions), Random(seed), Log(std::fopen(LogName, "w")) {}

    bool IsOver() const { return Over; }

    /// Ends the last action and begins the next.
    void Next() {
        if (const std::string problems = ModelProblems(); !problems.empty())
            End("after action " + std::to_string(Done) + ": " + problems);
        if (StaleDrawingsFound)
            End("after action " + std::to_string(Done) + ": a change that views were not told of");
        if (Over)
            End("");
        std::string script;
        if (Done == Actions) {
            Over = true;
            script = LettingGo() + "key Escape\nkey Escape\nsettle\ncheck\n";
        } else {
            Done++;
            script = Action();
        }
        std::fprintf(Log, "# %d\n%s", Done, script.c_str());
        std::fflush(Log);
        gl::PlayScript(script, "storm, action " + std::to_string(Done));
    }

  private:
    [[noreturn]] void End(const std::string& problem) {
        if (problem.empty())
            std::printf("storm over: %d actions\n", Done);
        else
            std::fprintf(stderr, "storm: %s\n", problem.c_str());
        std::fflush(nullptr);
        std::exit(problem.empty() ? 0 : 1);
    }

    int Below(int limit) { return static_cast<int>(Random() % static_cast<unsigned>(limit)); }

    bool OneIn(int n) { return Below(n) == 0; }

    template <class Choices>
    auto& OneOf(Choices& choices) {
        return choices[static_cast<std::size_t>(Below(static_cast<int>(std::size(choices))))];
    }

    std::string Position(const Window* window) {
        return " " + std::to_string(Below(window->Width)) + " " + std::to_string(Below(window->Height));
    }

    std::string Action() {
        if (MenuIsOpen())
            return "key Escape\n";
        if (Done % ActionsPerModel == 0)
            Reloading = 4;
        if (Reloading > 0)
            return Reload(--Reloading);
        if (FileSelectorWindow)
            return AnswerSelector();
        if (QuitWindow)
            return In(QuitWindow) + "close\n";
        switch (Below(24)) {
        case 0:
        case 1:
        case 2:
        case 3:
        case 4:
        case 5:
            return ClickInView();
        case 6:
        case 7:
        case 8:
        case 9:
            return DragInView();
        case 10:
        case 11:
        case 12:
        case 13:
            return TypeKey();
        case 14:
        case 15:
            return ChooseFromBar();
        case 16:
            return HoldPopup();
        case 17:
        case 18:
        case 19:
            return PressGadget();
        case 20:
            return PressOrRelease();
        case 21:
            return Windows();
        case 22:
            if (OneIn(2))
                return TurnWheel();
            return OneIn(2) ? LettingGo() : "wait " + std::to_string(Below(200)) + "\n";
        default:
            return OneIn(4) ? LettingGo() + "settle\n" : std::string("in \"Subview 0\"\nmove 40 40\nkey Ctrl+z\n");
        }
    }

    const Window* SomeView() {
        const Window* view = Viewport[Below(ViewportLimit)];
        return view ? view : Viewport[0];
    }

    /// One modifier key held around what is done, or none.
    std::string WithModifier(const std::string& done) {
        if (OneIn(2))
            return done;
        const std::string key = OneOf(Modifiers);
        return OneIn(5) ? "hold LeftShift\nhold LeftCtrl\n" + done + "let LeftShift\nlet LeftCtrl\n"
                        : "hold " + key + "\n" + done + "let " + key + "\n";
    }

    std::string ClickInView() {
        const Window* view = SomeView();
        const std::string button = OneIn(3) ? OneOf(Buttons) : "left";
        return In(view) + WithModifier((OneIn(8) ? "doubleclick " : "click ") + button + Position(view) + "\n");
    }

    std::string DragInView() {
        const Window* view = SomeView();
        std::string drag = std::string("drag ") + OneOf(Buttons) + Position(view);
        for (int corners = 1 + Below(2); corners > 0; corners--)
            drag += Position(view);
        return In(view) + WithModifier(drag + "\n");
    }

    std::string TypeKey() {
        std::string move;
        if (OneIn(3)) {
            const Window* view = SomeView();
            move = In(view) + "move" + Position(view) + "\n";
        }
        const std::string key = OneIn(2) ? OneOf(Keys) : std::string(1, Letters[Below(sizeof Letters - 1)]);
        return move + "key " + key + "\n";
    }

    std::string PressOrRelease() {
        const std::string button = OneOf(Buttons);
        if (!Held.insert(button).second) {
            Held.erase(button);
            return "release " + button + "\n";
        }
        const Window* view = SomeView();
        return In(view) + "move" + Position(view) + "\npress " + button + "\nmove" + Position(view) + "\n";
    }

    std::string LettingGo() {
        std::string script;
        for (const std::string& button : Held)
            script += "release " + button + "\n";
        Held.clear();
        return script;
    }

    /// A quick click keeps a menu open.
    static bool MenuIsOpen() {
        std::vector<MenuItemPlace> items;
        return ListMenuItems && ListMenuItems(items);
    }

    /// When a menu can be opened: the main window takes input, shows its bar, and no button is down.
    std::string ChooseFromBar() {
        if (MenuIsOpen())
            return "key Escape\n";
        if (MainWindow->Disabled || SomethingRuns() || !Held.empty() || NewestSideWindow())
            return HoldPopup();
        const MenuEntry* const* bar = ObjectIsolated ? ObjectMenus : SceneMenus;
        int titles = 0;
        while (bar[titles])
            titles++;
        const MenuEntry* menu = bar[Below(titles)];
        std::string script = In(MainWindow) + PlaceForMenus + "menu " + InQuotes(menu->Label);
        while (menu) {
            std::vector<const MenuEntry*> entries;
            for (const MenuEntry* entry = menu;; entry++) {
                const bool choice = entry->Kind != MenuEntryTitle && entry->Kind != MenuEntryHeading;
                const bool hidden = entry->Check && entry->Check() & MenuHidden;
                if (choice && !hidden && (entry->Id || entry->Submenu))
                    entries.push_back(entry);
                if (entry->Kind == MenuEntryLast)
                    break;
            }
            const MenuEntry* entry = OneOf(entries);
            if (entry->Label == std::string("Quit") && WorkSaved)
                return LettingGo();
            script += " " + InQuotes(entry->Label);
            menu = entry->Submenu;
        }
        return script + "\n";
    }

    std::string HoldPopup() {
        const Window* view = SomeView();
        const int x = Below(view->Width), y = Below(view->Height);
        std::string script = In(view) + "move " + std::to_string(x) + " " + std::to_string(y) + "\npress right\n";
        for (int moves = 1 + Below(4); moves > 0; --moves)
            script += "move " + std::to_string(x + Below(250)) + " " + std::to_string(y - Below(190)) + "\n";
        return script + "release right\n";
    }

    std::string PressGadget() {
        std::vector<const Window*> windows;
        for (const Window* window = WindowList; window; window = window->Next)
            if (window->Gadgets && !window->Closing && CanBeNamed(window))
                windows.push_back(window);
        if (windows.empty())
            return TypeKey();
        Window* window = const_cast<Window*>(OneOf(windows));
        const std::vector<GadgetView> gadgets = GadgetsOf(window);
        if (gadgets.empty())
            return In(window) + "click left" + Position(window) + "\n";
        const GadgetView& gadget = OneOf(gadgets);
        const GadgetBox& box = gadget.Description.Box;
        std::string script = In(window) + "click left " + std::to_string(box.X + Below(box.Width + 1)) + " " +
                             std::to_string(box.Y + Below(box.Height + 1)) + "\n";
        if (gadget.Kind->Name == std::string("text") && OneIn(2))
            script += std::string("type \"") + Letters[Below(30)] + "1\"\nkey Return\n";
        return script;
    }

    std::string TurnWheel() {
        const Window* view = SomeView();
        return In(view) +
               WithModifier("wheel" + Position(view) + " " + std::to_string(Below(9) - 4) + (OneIn(4) ? " 1\n" : "\n"));
    }

    /// Frames cannot be moved while a button is held elsewhere.
    std::string Windows() {
        if (!Held.empty())
            return LettingGo();
        if (const Window* side = NewestSideWindow(); side && CanBeNamed(side))
            return In(side) + "close\n";
        if (OneIn(2))
            return In(MainWindow) + "place " + std::to_string(Below(100)) + " " + std::to_string(Below(100)) + "\n";
        return In(MainWindow) + (OneIn(2) ? "resize 750 525\n"
                                          : "resize " + std::to_string(Below(LargestWidth)) + " " +
                                                std::to_string(Below(LargestHeight)) + "\n");
    }

    /// Gives the file selector a name of the storm's own directory, or closes it.
    std::string AnswerSelector() {
        const FileSelector& selector = WindowData<FileSelector>(FileSelectorWindow);
        const bool athome = std::string(selector.Directory) == HomeOfFiles;
        if (!athome || OneIn(3) || NewestSideWindow() != FileSelectorWindow || !Held.empty())
            return LettingGo() + In(NewestSideWindow()) + "close\n";
        if (selector.NameInput)
            return In(FileSelectorWindow) + "field \"File:\" " + InQuotes(OneOf(FileNames)) + "\nkey Return\n";
        return In(FileSelectorWindow) + "key " + (OneIn(2) ? "Down" : "Return") + "\n";
    }

    /// Opens the model of the start again, whatever was saved over it, as a user would. Other actions may have got in
    /// the way: then the storm goes on with what there is.
    std::string Reload(int stepsLeft) {
        switch (stepsLeft) {
        case 3:
            std::ofstream(OriginalName, std::ios::binary) << Original;
            return LettingGo() + "key Escape\nkey Escape\nsettle\n";
        case 2:
            return (MenuIsOpen() ? "key Escape\n" : "") + In(MainWindow) + PlaceForMenus + "menu File Open\n";
        case 1:
            return QuitWindow ? In(QuitWindow) + "button Discard\n" : "wait 1\n";
        default:
            if (!FileSelectorWindow || WindowData<FileSelector>(FileSelectorWindow).Directory != HomeOfFiles)
                return "settle\n";
            return In(FileSelectorWindow) + "button " + OriginalName + "\nbutton Open\n";
        }
    }

    /// The model as it was opened at the start.
    static std::string ReadOriginal() {
        std::ifstream file(std::string(FilePath) + "/" + FileName, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    int Actions, Done = 0, Reloading = 0;
    bool Over = false;
    std::mt19937 Random;
    std::FILE* Log;
    std::set<std::string> Held; // buttons
    const std::string Original = ReadOriginal();
    const std::string HomeOfFiles = FilePath; // the working directory, from which the model was opened
};

Storm* TheStorm = nullptr;

/// Leaves a picture and a report of the moment when a storm failed.
void ShowFailure() {
    std::string ignored;
    gl::WriteSnapshot(0, "failed.png", ignored);
    WriteReport("failed.json");
}

gl::ScriptResult BeginStorm(gl::ScriptCall& call) {
    double actions = 0, seed = 0;
    std::size_t index = 1;
    if (!call.ReadNumber(index, actions) || !call.ReadNumber(index, seed))
        return gl::ScriptResult::Failed;
    static Storm storm(static_cast<int>(actions), static_cast<unsigned>(seed));
    TheStorm = &storm;
    gl::ScriptEnded = [] { TheStorm->Next(); };
    std::atexit([] {
        if (!TheStorm->IsOver())
            ShowFailure();
    });
    return gl::ScriptResult::Done;
}

} // namespace

void InstallStorm() {
    CheckKeptDrawings = 1;
    gl::AddScriptCommand("storm", BeginStorm);
}
