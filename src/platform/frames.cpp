#include "platform/frames.h"

#include "platform/drawing.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "platform/text.h"

#include <algorithm>

namespace gl {

namespace {

// Shade 0 to 15 of white, as the toolkit's ramps count.
constexpr std::uint32_t Shade(int shade) {
    const auto channel = static_cast<std::uint32_t>(shade * 255 / 15);
    return channel | channel << 8 | channel << 16;
}

constexpr int ActiveFace = 13, PassiveFace = 9;
constexpr int TextMargin = 8;

void Line(int x1, int y1, int x2, int y2, int shade) {
    cpack(Shade(shade));
    rectfi(std::min(x1, x2), std::min(y1, y2), std::max(x1, x2), std::max(y1, y2));
}

// A box two lines deep: lit from the top when raised, from below when pressed.
void Bevel(const WindowRectangle& box, int face, bool pressed) {
    const int right = box.X + box.Width - 1, top = box.Y + box.Height - 1;
    cpack(Shade(face));
    rectfi(box.X, box.Y, right, top);
    for (int i = 0; i < 2; i++) {
        Line(box.X + i, box.Y + i, right - i, box.Y + i, pressed ? 15 - i : 4 + i);
        Line(right - i, box.Y + i, right - i, top - i, pressed ? 14 - i : 5 + i);
        Line(box.X + i, box.Y + i, box.X + i, top - i, pressed ? 5 + i : 13 - i);
        Line(box.X + i, top - i, right - i, top - i, pressed ? 4 + i : 15 - i);
    }
}

void DrawCloseBox(const WindowRectangle& box, int face, bool pressed) {
    Bevel(box, pressed ? face - 3 : face, pressed);
    cpack(Shade(0));
    const int inset = 4, last = box.Width - 1 - inset;
    for (int i = inset; i <= last; i++)
        for (int x : {i, box.Width - 1 - i}) {
            // Two pixels wide, so that the cross has the weight of the title's letters.
            const int left = std::min(x, last - 1);
            rectfi(box.X + left, box.Y + i, box.X + left + 1, box.Y + i);
        }
}

} // namespace

std::string ShownTitle(const std::string& title, int width) {
    const std::size_t first = title.find_first_not_of(' ');
    if (first == std::string::npos)
        return "";
    std::string shown = title.substr(first, title.find_last_not_of(' ') - first + 1);
    if (strwidth(shown.c_str()) <= width)
        return shown;
    while (!shown.empty() && strwidth((shown + "...").c_str()) > width) {
        // Whole characters: continuation bytes go with the byte that begins them.
        while (shown.size() > 1 && (static_cast<unsigned char>(shown.back()) & 0xC0) == 0x80)
            shown.pop_back();
        shown.pop_back();
    }
    return shown.empty() ? "" : shown + "...";
}

void UpdateTitleStrip(ScreenWindow& window, bool active) {
    if (!window.TitleStale)
        return;
    window.TitleStale = false;
    const int width = window.Place.Width;
    if (!window.TitleStrip)
        window.TitleStrip = std::make_unique<Surface>(width, TitleHeight, false);
    else if (window.TitleStrip->width() != width)
        window.TitleStrip->resize(width, TitleHeight);

    Surface* const before = CurrentSurface();
    const int fontBefore = getfont();
    MakeSurfaceCurrent(window.TitleStrip.get());
    viewport(0, width - 1, 0, TitleHeight - 1);
    ortho2(-0.5, width - 0.5, -0.5, TitleHeight - 0.5);
    const int face = active ? ActiveFace : PassiveFace;
    Bevel({0, 0, width, TitleHeight}, face, false);
    const WindowRectangle closeBox = CloseBoxRectangle({0, -window.Place.Height, width, window.Place.Height});
    DrawCloseBox(closeBox, face - 1, window.CloseBoxPressed);
    font(0);
    const std::string title = ShownTitle(window.Title, closeBox.X - 2 * TextMargin);
    cpack(active ? 0 : Shade(3));
    cmov2i(TextMargin, (TitleHeight - getheight()) / 2 + getdescender() + 1);
    charstr(title.c_str());
    font(fontBefore);
    MakeSurfaceCurrent(before);
}

std::vector<BorderLine> BorderLines(const WindowRectangle& content) {
    std::vector<BorderLine> lines;
    const WindowRectangle outer = OuterRectangle(content);
    for (int i = 0; i < FrameBorder; i++) {
        const int x = outer.X + i, y = outer.Y + i, width = outer.Width - 2 * i, height = outer.Height - 2 * i;
        // A black outline, then the bevel of a raised box.
        const bool outline = i == 0;
        lines.push_back({{x, y, width, 1}, outline ? 0 : Shade(4 + i)});
        lines.push_back({{x + width - 1, y, 1, height}, outline ? 0 : Shade(14 - i)});
        lines.push_back({{x, y, 1, height}, outline ? 0 : Shade(6 + i)});
        lines.push_back({{x, y + height - 1, width, 1}, outline ? 0 : Shade(16 - i)});
    }
    return lines;
}

} // namespace gl
