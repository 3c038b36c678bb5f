#include "platform/cursors.h"

#include "platform/pointer_shapes.h"
#include "platform/surface.h"

#include <map>
#include <string>

namespace gl {

void (*PointerShapeChanged)() = nullptr;

namespace {

struct DefinedCursor {
    int Size = 0;
    std::vector<std::uint8_t> Indices; // rows from the top: bit 0 plane 1, bit 1 plane 2
    int OriginX = 0, OriginY = 0;      // from the lower left corner
    PointerShape Shape;
};

int CurrentKind = C16X1;
std::map<int, DefinedCursor> Defined;

// Built-in pictures: '#' black, '.' white, blank transparent.
using Drawing = std::vector<std::string>;

const Drawing ArrowDrawing = {
    "#           ", "##          ", "#.#         ", "#..#        ", "#...#       ", "#....#      ", "#.....#     ",
    "#......#    ", "#.......#   ", "#........#  ", "#.........# ", "#..........#", "#......#####", "#...#..#    ",
    "#..##..#    ", "#.#  #..#   ", "##   #..#   ", "#     #..#  ", "      #..#  ", "       ##   ",
};

const Drawing AcrossDrawing = {
    "    ##         ##    ", "   #.#         #.#   ", "  #..#         #..#  ",
    " #...###########...# ", "#...................#", " #...###########...# ",
    "  #..#         #..#  ", "   #.#         #.#   ", "    ##         ##    ",
};

const Drawing FallingDrawing = {
    "#########      ", "#......#       ", "#.....#        ", "#....#         ", "#.....#        ",
    "#..#...#       ", "#.# #...#     #", "##   #...#   ##", "#     #...# #.#", "       #...#..#",
    "        #.....#", "         #....#", "        #.....#", "       #......#", "      #########",
};

Drawing Turned(const Drawing& drawing) {
    Drawing turned(drawing[0].size(), std::string(drawing.size(), ' '));
    for (std::size_t row = 0; row < drawing.size(); row++)
        for (std::size_t column = 0; column < drawing[row].size(); column++)
            turned[column][row] = drawing[row][column];
    return turned;
}

Drawing Mirrored(Drawing drawing) {
    for (std::string& row : drawing)
        row = std::string(row.rbegin(), row.rend());
    return drawing;
}

PointerShape FromDrawing(const Drawing& drawing, int hotX, int hotY) {
    PointerShape shape{static_cast<int>(drawing[0].size()), static_cast<int>(drawing.size()), hotX, hotY, {}};
    for (const std::string& row : drawing)
        for (char pixel : row)
            shape.Pixels.push_back(pixel == '#' ? 0xFF000000 : pixel == '.' ? 0xFFFFFFFF : 0);
    return shape;
}

PointerShape Centred(const Drawing& drawing) {
    return FromDrawing(drawing, static_cast<int>(drawing[0].size()) / 2, static_cast<int>(drawing.size()) / 2);
}

const PointerShape& Arrow() {
    static const PointerShape arrow = FromDrawing(ArrowDrawing, 0, 0);
    return arrow;
}

void NoteShapeChange() {
    if (PointerShapeChanged)
        PointerShapeChanged();
}

ScreenWindow* CurrentScreenWindow() {
    return FindScreenWindow(winget());
}

} // namespace

const PointerShape& ShapeOfCursor(int index) {
    const auto found = Defined.find(index);
    if (found == Defined.end())
        return Arrow();
    DefinedCursor& cursor = found->second;
    PointerShape& shape = cursor.Shape;
    shape = {cursor.Size, cursor.Size, cursor.OriginX, cursor.Size - 1 - cursor.OriginY, {}};
    for (std::uint8_t bits : cursor.Indices)
        shape.Pixels.push_back(bits == 0 ? 0 : 0xFF000000 | CursorColour(bits));
    return shape;
}

const PointerShape& ShapeOverFrame(FramePart part) {
    static const PointerShape across = Centred(AcrossDrawing), upright = Centred(Turned(AcrossDrawing)),
                              falling = Centred(FallingDrawing), rising = Centred(Mirrored(FallingDrawing));
    switch (part) {
    case FramePart::Left:
    case FramePart::Right:
        return across;
    case FramePart::Bottom:
    case FramePart::Top:
        return upright;
    case FramePart::TopLeft:
    case FramePart::BottomRight:
        return falling;
    case FramePart::TopRight:
    case FramePart::BottomLeft:
        return rising;
    default:
        return Arrow();
    }
}

PointerShape Enlarged(const PointerShape& shape, int factor) {
    PointerShape large{shape.Width * factor, shape.Height * factor, shape.HotX * factor, shape.HotY * factor, {}};
    large.Pixels.reserve(static_cast<std::size_t>(large.Width) * large.Height);
    for (int y = 0; y < large.Height; y++)
        for (int x = 0; x < large.Width; x++)
            large.Pixels.push_back(shape.Pixels[static_cast<std::size_t>(y / factor) * shape.Width + x / factor]);
    return large;
}

void ForgetCursors() {
    Defined.clear();
    CurrentKind = C16X1;
}

void curstype(int kind) {
    CurrentKind = kind;
}

void defcursor(int index, const std::uint16_t* planes) {
    const bool large = CurrentKind == C32X1 || CurrentKind == C32X2;
    const int size = large ? 32 : 16, words = size / 16;
    const int planeCount = CurrentKind == C16X2 || CurrentKind == C32X2 ? 2 : 1;
    DefinedCursor cursor{size, {}, 0, 0, {}};
    for (int row = size - 1; row >= 0; row--)
        for (int column = 0; column < size; column++) {
            std::uint8_t bits = 0;
            for (int plane = 0; plane < planeCount; plane++) {
                const std::uint16_t word = planes[(plane * size + row) * words + column / 16];
                if (word >> (15 - column % 16) & 1)
                    bits |= static_cast<std::uint8_t>(1 << plane);
            }
            cursor.Indices.push_back(bits);
        }
    if (const auto before = Defined.find(index); before != Defined.end() && before->second.Size == size) {
        cursor.OriginX = before->second.OriginX;
        cursor.OriginY = before->second.OriginY;
    }
    if (index > 0)
        Defined[index] = std::move(cursor);
    NoteShapeChange();
}

void curorigin(int index, int x, int y) {
    const auto found = Defined.find(index);
    if (found == Defined.end())
        return;
    found->second.OriginX = x;
    found->second.OriginY = y;
    NoteShapeChange();
}

void setcursor(int index, int, int) {
    if (ScreenWindow* window = CurrentScreenWindow()) {
        window->Cursor = index;
        NoteShapeChange();
    }
}

void cursoff() {
    if (ScreenWindow* window = CurrentScreenWindow()) {
        window->CursorHidden = true;
        NoteShapeChange();
    }
}

void curson() {
    if (ScreenWindow* window = CurrentScreenWindow()) {
        window->CursorHidden = false;
        NoteShapeChange();
    }
}

} // namespace gl
