#pragma once

#include "gooey/gadget_kind.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

struct Gadget;
struct Window;

// The program as seen from outside: windows and their gadgets, from the live structures.

/// A visible gadget of a window, as drawn now.
struct GadgetView {
    Gadget* Source;
    const GadgetKind* Kind;
    GadgetDescription Description;
};

/// The window's visible gadgets that can be described, in drawing order.
std::vector<GadgetView> GadgetsOf(Window* window);

/// What can be clicked or dragged in the window outside its gadgets.
std::vector<GadgetItem> ItemsOf(Window* window);

/// Adds the members that the program above has to tell; called with a report that has "windows" already, between two
/// events. Null: there are none. Set at start-up.
extern void (*AddToReport)(nlohmann::ordered_json& report);

/// A member that is JSON text already: a tree of any depth, which records in memory would not hold. Added behind the
/// others. Null: there is none. Set at start-up.
struct ReportText {
    const char* Name;
    std::string Text;
};

extern ReportText (*AddTreeToReport)();

/// The report: one JSON object, ending in a newline. Bytes of texts that are not UTF-8 become U+FFFD.
std::string Report();

/// Writes the report to a file; "-": the standard output stream. 0 when it cannot be written.
int WriteReport(const char* file);
