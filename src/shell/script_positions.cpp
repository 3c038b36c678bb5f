#include "shell/script_positions.h"

#include "gooey/gadget_commands.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/picking.h"
#include "store/accessors.h"
#include "store/walks.h"
#include "views/viewports.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace {

/// Reads numbers separated by commas, exactly `count` of them.
bool ReadNumbers(std::string_view text, double* numbers, int count) {
    const char* at = text.data();
    const char* const end = at + text.size();
    for (int i = 0; i < count; i++) {
        if (i > 0 && (at == end || *at++ != ','))
            return false;
        const auto [next, problem] = std::from_chars(at, end, numbers[i]);
        if (problem != std::errc() || !std::isfinite(numbers[i]))
            return false;
        at = next;
    }
    return at == end;
}

const Vertex* VertexNumber(double number) {
    double left = number;
    for (const Vertex* vertex : EveryVertex(CurrentObject()))
        if (left-- == 0)
            return vertex;
    return nullptr;
}

} // namespace

bool FindModelPosition(const std::string& word, int window, int& x, int& y, std::string& error) {
    const bool isPoint = word.starts_with("model:"), isVertex = word.starts_with("vertex:");
    if (!isPoint && !isVertex)
        return FindItemPosition(word, window, x, y, error);
    int number = 0;
    while (number < ViewportLimit && !(Viewport[number] && Viewport[number]->Gid == window))
        number++;
    double model[3] = {0, 0, 0};
    if (number == ViewportLimit) {
        error = "\"" + word + "\" has a place in model views only";
        return false;
    }
    if (!ReadNumbers(std::string_view(word).substr(word.find(':') + 1), model, isPoint ? 3 : 1)) {
        error = "\"" + word + "\" is not of the form " + (isPoint ? "model:X,Y,Z" : "vertex:N");
        return false;
    }
    if (isVertex) {
        const Vertex* vertex = VertexNumber(model[0]);
        if (!vertex) {
            error = "the current object has no vertex " + word.substr(word.find(':') + 1);
            return false;
        }
        std::copy_n(vertex->Position, 3, model);
    }
    const WindowScope scope(Viewport[number]);
    double point[3];
    if (!Calc2dOf(ViewOfViewport(number), model, point)) {
        error = "\"" + word + "\" does not show in the view";
        return false;
    }
    x = static_cast<int>(std::lround(point[0]));
    y = static_cast<int>(std::lround(point[1]));
    return true;
}
