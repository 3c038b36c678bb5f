#pragma once

#include "gooey/gadget_kind.h"

#include <string>
#include <string_view>
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

/// The window's visible gadgets in drawing order.
std::vector<GadgetView> GadgetsOf(Window* window);

/// Text as a quoted JSON string; bytes that are not UTF-8 become U+FFFD.
std::string QuoteForJson(std::string_view text);

/// The "windows" member of the report: a JSON array.
std::string WindowsReport();

/// Returns further members of the report, each as `"name": value`, separated by commas, without the outer braces; set
/// by the program above. Called when a report is written, between two events. Null: there are none.
extern std::string (*ReportModel)();

/// The report: one JSON object, ending in a newline.
std::string Report();

/// Writes the report to a file; "-": the standard output stream. 0 when it cannot be written.
int WriteReport(const char* file);
