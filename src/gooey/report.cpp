#include "gooey/report.h"

#include "gooey/gadget.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"

#include "platform/windows.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <cstring>

using Json = nlohmann::ordered_json;

void (*AddToReport)(Json&) = nullptr;
ReportText (*AddTreeToReport)() = nullptr;

namespace {

Json PlaceOf(const GadgetBox& box) {
    return {{"x", box.X}, {"y", box.Y}, {"width", box.Width}, {"height", box.Height}};
}

void AddItems(Json& report, const std::vector<GadgetItem>& items) {
    if (items.empty())
        return;
    Json& list = report["items"] = Json::array();
    for (const GadgetItem& item : items) {
        list.push_back({{"label", item.Label}});
        list.back().update(PlaceOf(item.Box));
        list.back()["on"] = item.On;
    }
}

Json ReportOf(const GadgetView& view) {
    const GadgetDescription& description = view.Description;
    Json report = {{"kind", view.Kind->Name}, {"label", description.Label}};
    report.update(PlaceOf(description.Box));
    report["on"] = description.On;
    report["text"] = description.Text;
    AddItems(report, description.Items);
    return report;
}

Json ReportOf(Window* window) {
    Json gadgets = Json::array();
    for (const GadgetView& view : GadgetsOf(window))
        gadgets.push_back(ReportOf(view));
    // The title as it is shown now, and the name that it opened with, by which children know it.
    Json report = {{"title", gl::WindowTitle(window->Gid)}, {"name", window->Title ? window->Title : ""}};
    report.update(PlaceOf({window->X, window->Y, window->Width, window->Height}));
    report["disabled"] = window->Disabled;
    report["parent"] = nullptr;
    if (window->Parent)
        report["parent"] = window->Parent->Title ? window->Parent->Title : "";
    report["gadgets"] = std::move(gadgets);
    AddItems(report, ItemsOf(window));
    return report;
}

/// Of gadgets that tell nothing of themselves but can be clicked or typed at: somewhere in their window.
constexpr GadgetKind CustomKind = {"custom",
                                   [](const Gadget*, GadgetDescription& description) {
                                       description.Box = {0, 0, CurrentWindow->Width, CurrentWindow->Height};
                                   },
                                   nullptr, nullptr};

const GadgetKind* KindOf(const Gadget* gadget) {
    if (gadget->Kind)
        return gadget->Kind->Describe ? gadget->Kind : nullptr;
    return gadget->ClickFn || gadget->KeyFn ? &CustomKind : nullptr;
}

} // namespace

std::vector<GadgetView> GadgetsOf(Window* window) {
    WindowScope scope(window);
    UpdateWindowGeometry();
    std::vector<GadgetView> views;
    for (Gadget* head = window->Gadgets; head; head = head->NextGadget)
        for (Gadget* member = head; member && member->Visible; member = member->Next) {
            const GadgetKind* kind = KindOf(member);
            if (!kind)
                continue;
            GadgetView view = {member, kind, {}};
            kind->Describe(member, view.Description);
            views.push_back(std::move(view));
        }
    return views;
}

std::vector<GadgetItem> ItemsOf(Window* window) {
    std::vector<GadgetItem> items;
    if (window->ItemsFn) {
        WindowScope scope(window);
        window->ItemsFn(items);
    }
    return items;
}

std::string Report() {
    Json report;
    Json& windows = report["windows"] = Json::array();
    for (Window* window = WindowList; window; window = window->Next)
        windows.push_back(ReportOf(window));
    if (AddToReport)
        AddToReport(report);
    std::string text = report.dump(1, ' ', false, Json::error_handler_t::replace);
    if (AddTreeToReport) {
        const auto [name, tree] = AddTreeToReport();
        constexpr std::size_t end = 2; // the brace in a line of its own
        text.replace(text.size() - end, end, std::string(",\n \"") + name + "\": " + tree + "\n}");
    }
    return text + "\n";
}

int WriteReport(const char* file) {
    std::string text = Report();
    bool toOutput = std::strcmp(file, "-") == 0;
    std::FILE* stream = toOutput ? stdout : std::fopen(file, "w");
    if (!stream)
        return 0;
    int written = std::fwrite(text.data(), 1, text.size(), stream) == text.size();
    int closed = (toOutput ? std::fflush(stream) : std::fclose(stream)) == 0;
    return written && closed;
}
