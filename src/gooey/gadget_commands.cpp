#include "gooey/gadget_commands.h"

#include "gooey/report.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"

#include "platform/events.h"
#include "platform/scripts.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string_view>

int (*ListMenuItems)(std::vector<MenuItemPlace>&) = nullptr;

namespace {

using gl::ScriptCall;
using gl::ScriptResult;

ScriptResult Fail(ScriptCall& call, const std::string& error) {
    call.Error = error;
    return ScriptResult::Failed;
}

/// Labels are compared without the blanks at their ends.
std::string Trimmed(const std::string& text) {
    std::size_t first = text.find_first_not_of(' '), last = text.find_last_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, last - first + 1);
}

bool SameLabel(const std::string& a, const std::string& b) {
    return Trimmed(a) == Trimmed(b);
}

Window* WindowOfGid(int gid) {
    for (Window* window = WindowList; window; window = window->Next)
        if (window->Gid == gid)
            return window;
    return nullptr;
}

Window* AddressedWindow(const ScriptCall& call) {
    return WindowOfGid(call.Window);
}

void MoveToMiddle(ScriptCall& call, const GadgetBox& box) {
    call.Move(call.Window, box.X + box.Width / 2, box.Y + box.Height / 2);
}

void ClickMiddle(ScriptCall& call, const GadgetBox& box) {
    MoveToMiddle(call, box);
    call.Press(gl::LEFTMOUSE);
    call.Release(gl::LEFTMOUSE);
}

/// Something in a gadget that a command can be aimed at.
struct Target {
    GadgetView View;
    GadgetBox Box;
};

/// Everything of some kinds with a label, in drawing order; `itemsCount` tells kinds whose items count as well,
/// "window" being those of the window itself.
std::vector<Target> TargetsIn(Window* window, const std::string& label, const std::vector<std::string>& kinds,
                              const std::function<bool(const std::string&)>& itemsCount) {
    std::vector<Target> targets;
    for (const GadgetView& view : GadgetsOf(window)) {
        const GadgetDescription& description = view.Description;
        bool ofKind = std::find(kinds.begin(), kinds.end(), view.Kind->Name) != kinds.end();
        if (ofKind && SameLabel(description.Label, label))
            targets.push_back({view, description.Target.Width ? description.Target : description.Box});
        if (itemsCount && itemsCount(view.Kind->Name))
            for (const GadgetItem& item : description.Items)
                if (SameLabel(item.Label, label))
                    targets.push_back({view, item.Box});
    }
    if (itemsCount && itemsCount("window"))
        for (const GadgetItem& item : ItemsOf(window))
            if (SameLabel(item.Label, label))
                targets.push_back({{}, item.Box});
    return targets;
}

/// Reads the label at Words[1] and the optional number at Words[numberAt], and finds the target.
bool FindTarget(ScriptCall& call, const char* what, std::size_t numberAt, const std::vector<std::string>& kinds,
                const std::function<bool(const std::string&)>& itemsCount, Target& target) {
    const std::string name = call.Words[0];
    if (call.Words.size() < numberAt || call.Words.size() > numberAt + 1) {
        call.Error = name + ": wrong number of arguments";
        return false;
    }
    Window* window = AddressedWindow(call);
    if (!window) {
        call.Error = name + ": no window is addressed";
        return false;
    }
    double number = 1;
    std::size_t index = numberAt;
    if (call.Words.size() > numberAt && !call.ReadNumber(index, number))
        return false;
    std::vector<Target> targets = TargetsIn(window, call.Words[1], kinds, itemsCount);
    if (number < 1 || number > static_cast<double>(targets.size())) {
        call.Error = std::string("no ") + what + " \"" + call.Words[1] + "\"";
        if (!targets.empty())
            call.Error += " number " + call.Words[numberAt] + ", there are " + std::to_string(targets.size());
        call.Error += std::string(" in window \"") + (window->Title ? window->Title : "") + "\"";
        return false;
    }
    target = targets[static_cast<std::size_t>(number) - 1];
    return true;
}

ScriptResult PressButton(ScriptCall& call) {
    Target target;
    auto itemsCount = [](const std::string& kind) { return kind != "menu"; };
    if (!FindTarget(call, "button", 2, {"button", "check"}, itemsCount, target))
        return ScriptResult::Failed;
    ClickMiddle(call, target.Box);
    return ScriptResult::Done;
}

/// Takes the number off "LABEL#2"; 1 without one.
std::size_t NumberBehind(std::string& label) {
    std::size_t mark = label.rfind('#');
    if (mark == std::string::npos || mark + 1 == label.size() ||
        label.find_first_not_of("0123456789", mark + 1) != std::string::npos)
        return 1;
    std::size_t number = std::strtoul(label.c_str() + mark + 1, nullptr, 10);
    label.erase(mark);
    return number;
}

ScriptResult FillField(ScriptCall& call) {
    Target target;
    if (!FindTarget(call, "text input", 3, {"text"}, nullptr, target))
        return ScriptResult::Failed;
    ClickMiddle(call, target.Box);
    // In an empty input the key may close the window.
    if (!target.View.Description.Text.empty())
        call.Key("Escape");
    call.Type(call.Words[2]);
    call.Key("Return");
    return ScriptResult::Done;
}

ScriptResult DragSlider(ScriptCall& call) {
    Target target;
    if (!FindTarget(call, "slider", 3, {"slider"}, nullptr, target))
        return ScriptResult::Failed;
    double value;
    std::size_t index = 2;
    if (!call.ReadNumber(index, value))
        return ScriptResult::Failed;
    MoveToMiddle(call, target.Box);
    call.Press(gl::LEFTMOUSE);
    int x = target.Box.X + target.Box.Width / 2;
    call.Move(call.Window, x, target.View.Kind->ThumbY(target.View.Source, static_cast<int>(value)));
    call.Release(gl::LEFTMOUSE);
    return ScriptResult::Done;
}

/// Whether a press in the addressed window comes to nothing: it is disabled, or another one lies over the place.
bool TakesNoPress(const ScriptCall& call) {
    const Window* window = AddressedWindow(call);
    return !window || window->Disabled || window != CurrentWindow;
}

/// Moves to the entry that is next in turn, Words[first + Stage - 1], in the menu that the earlier steps opened.
ScriptResult FollowMenu(ScriptCall& call, std::size_t first, int button) {
    std::size_t entry = first + static_cast<std::size_t>(call.Stage) - 1;
    if (entry < call.Words.size()) {
        std::vector<MenuItemPlace> items;
        if (!ListMenuItems || !ListMenuItems(items)) {
            if (!TakesNoPress(call))
                return Fail(call, "no menu opened");
            call.Release(button);
            return ScriptResult::Done;
        }
        auto item = std::find_if(items.begin(), items.end(), [&](const MenuItemPlace& place) {
            return place.Level == call.Stage - 1 && SameLabel(place.Label, call.Words[entry]);
        });
        if (item == items.end())
            return Fail(call, "no menu entry \"" + call.Words[entry] + "\"");
        MoveToMiddle(call, item->Box);
    }
    if (entry + 1 < call.Words.size())
        return ScriptResult::Again;
    call.Release(button);
    return ScriptResult::Done;
}

ScriptResult ChooseFromMenu(ScriptCall& call) {
    if (call.Stage > 0)
        return FollowMenu(call, 2, gl::LEFTMOUSE);
    Window* window = AddressedWindow(call);
    if (!window || call.Words.size() < 3)
        return Fail(call, window ? "menu: a title and an entry are needed" : "menu: no window is addressed");
    auto ofMenus = [](const std::string& kind) { return kind == "menu"; };
    std::vector<Target> titles = TargetsIn(window, call.Words[1], {}, ofMenus);
    if (titles.empty())
        return Fail(call, "no menu \"" + call.Words[1] + "\" in window \"" + window->Title + "\"");
    MoveToMiddle(call, titles[0].Box);
    call.Press(gl::LEFTMOUSE);
    return ScriptResult::Again;
}

ScriptResult ChooseFromPopup(ScriptCall& call) {
    std::size_t index = 1;
    int x, y;
    if (!call.ReadPosition(index, x, y))
        return ScriptResult::Failed;
    if (call.Stage > 0)
        return FollowMenu(call, index, gl::RIGHTMOUSE);
    call.Move(call.Window, x, y);
    call.Press(gl::RIGHTMOUSE);
    return ScriptResult::Again;
}

ScriptResult WriteReportFile(ScriptCall& call) {
    if (call.Words.size() != 2)
        return Fail(call, "report: a file name is needed");
    if (!WriteReport(call.Words[1].c_str()))
        return Fail(call, "report: cannot write \"" + call.Words[1] + "\": " + std::strerror(errno));
    return ScriptResult::Done;
}

} // namespace

bool FindItemPosition(const std::string& word, int window, int& x, int& y, std::string& error) {
    constexpr std::string_view prefix = "item:";
    if (!word.starts_with(prefix))
        return false;
    Window* addressed = WindowOfGid(window);
    if (!addressed) {
        error = "\"" + word + "\": no window is addressed";
        return false;
    }
    static const std::vector<std::string> kinds = {"button", "check", "text", "incdec", "slider", "label"};
    auto all = [](const std::string&) { return true; };
    std::string label = word.substr(prefix.size());
    std::size_t number = 1;
    std::vector<Target> targets = TargetsIn(addressed, label, kinds, all);
    if (targets.empty()) {
        number = NumberBehind(label);
        targets = TargetsIn(addressed, label, kinds, all);
    }
    if (number < 1 || number > targets.size()) {
        error = "no item \"" + label + "\"";
        if (!targets.empty())
            error += " number " + std::to_string(number) + ", there are " + std::to_string(targets.size());
        error += std::string(" in window \"") + (addressed->Title ? addressed->Title : "") + "\"";
        return false;
    }
    const GadgetBox& box = targets[number - 1].Box;
    x = box.X + box.Width / 2;
    y = box.Y + box.Height / 2;
    return true;
}

void InstallGadgetCommands() {
    gl::ScriptPosition = FindItemPosition;
    gl::AddScriptCommand("button", PressButton);
    gl::AddScriptCommand("field", FillField);
    gl::AddScriptCommand("slider", DragSlider);
    gl::AddScriptCommand("menu", ChooseFromMenu);
    gl::AddScriptCommand("popup", ChooseFromPopup);
    gl::AddScriptCommand("report", WriteReportFile);
}
