#include "views/labels.h"

#include "geometry/vectors.h"
#include "gooey/draw.h"
#include "gooey/fonts.h"
#include "gooey/message_table.h"
#include "gooey/window.h"
#include "platform/capabilities.h"
#include "platform/drawing.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "views/default_views.h"
#include "views/display_flags.h"
#include "views/pixel_scope.h"
#include "views/view_transform.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace {

constexpr std::uint32_t White = 0xFFFFFF;
constexpr int ScreenPattern = 1;

/// The corner with the axes, pixels.
constexpr int AxisCorner = 100, ArrowStart = 16, ArrowEnd = 44;

void PixelLine(int x1, int y1, int x2, int y2) {
    gl::bgnline();
    for (const auto& [x, y] : {std::array{x1, y1}, std::array{x2, y2}}) {
        const std::int32_t place[2] = {x, y};
        gl::v2i(place);
    }
    gl::endline();
}

struct Pixel {
    int X, Y;
};

/// A straight arrow along an axis of the screen.
void DrawArrow(Pixel from, Pixel to) {
    const int alongX = (to.X > from.X) - (to.X < from.X), alongY = (to.Y > from.Y) - (to.Y < from.Y);
    constexpr int head = (ArrowEnd - ArrowStart) / 6;
    const int backX = to.X - alongX * head, backY = to.Y - alongY * head;
    PixelLine(from.X, from.Y, to.X, to.Y);
    PixelLine(to.X, to.Y, backX + alongY * head, backY + alongX * head);
    PixelLine(to.X, to.Y, backX - alongY * head, backY - alongX * head);
}

/// A letter beyond an arrow's tip.
void DrawAxisLetter(Pixel from, Pixel to, char letter) {
    constexpr int gap = 5, baseline = 5;
    const char text[2] = {letter, 0};
    const int width = SmallWidth(text), alongX = (to.X > from.X) - (to.X < from.X), alongY = to.Y - from.Y;
    const int x = alongX ? to.X + alongX * (gap + width / 2) - width / 2 : to.X - width / 2;
    const int above = to.Y + gap, below = to.Y - gap - 2 * baseline;
    SmallText(x, alongX ? to.Y - baseline : alongY > 0 ? above : below, text, White);
}

/// A letter's strokes between two corners of a square from -1 to 1.
struct Stroke {
    double X1, Y1, X2, Y2;
};

const std::vector<Stroke> AxisLetters[3] = {
    {{-1, -1, 1, 1}, {-1, 1, 1, -1}},
    {{-1, 1, 0, 0}, {1, 1, 0, 0}, {0, 0, 0, -1}},
    {{-1, 1, 1, 1}, {1, 1, -1, -1}, {-1, -1, 1, -1}},
};

void EyeLine(const double* a, const double* b) {
    gl::bgnline();
    gl::v3d(a);
    gl::v3d(b);
    gl::endline();
}

/// One axis with its letter, which always faces the eye. `rotation`: from model to eye space.
void DrawAxis(int axis, const Matrix& rotation, double length) {
    constexpr double letterPlace = 1.4, letterHalf = 0.2; // so that it reaches from 1.2 to 1.6 lengths
    const double origin[3] = {rotation[3][0], rotation[3][1], rotation[3][2]};
    double tip[3], letter[3];
    for (int i = 0; i < 3; ++i) {
        tip[i] = origin[i] + rotation[axis][i] * length;
        letter[i] = origin[i] + rotation[axis][i] * length * letterPlace;
    }
    EyeLine(origin, tip);
    constexpr double narrow = 0.7;
    for (const Stroke& stroke : AxisLetters[axis]) {
        const double half = letterHalf * length, halfWidth = half * narrow;
        const double a[3] = {letter[0] + stroke.X1 * halfWidth, letter[1] + stroke.Y1 * half, letter[2]};
        const double b[3] = {letter[0] + stroke.X2 * halfWidth, letter[1] + stroke.Y2 * half, letter[2]};
        EyeLine(a, b);
    }
}

/// How a 2D view's axes lie on the screen.
struct Axes2D {
    int Label; // message number
    int ToTheRight;
    char Horizontal;
    int Down;
    char Vertical;
};

constexpr int Label3D = 12;
constexpr Axes2D AxesOfDirection[DefaultView2DCount] = {
    {13, 1, 'X', 0, 'Y'}, // top
    {14, 1, 'X', 1, 'Y'}, // bottom
    {15, 0, 'Y', 0, 'Z'}, // left
    {16, 1, 'Y', 0, 'Z'}, // right
    {17, 1, 'X', 0, 'Z'}, // front
    {18, 0, 'X', 0, 'Z'}, // back
};

void DrawBackedText(int x, int y, int width, int height, int baseline, std::uint32_t background) {
    gl::cpack(background);
    gl::rectfi(x - 2, y - baseline, x + width + 1, y - baseline + height - 1);
}

} // namespace

void LabelPoint(View* view, const float* eyePoint, const char* text) {
    if (!CurrentWindow)
        return;
    constexpr int offsetX = 6, offsetY = -4, height = 17, descent = 4;
    const double point[4] = {eyePoint[0], eyePoint[1], eyePoint[2], 1};
    double place[4];
    Transform4dCoordinate(point, view->Projection, place);
    if (!(place[3] > 0))
        return;
    const double halfWidth = CurrentWindow->Width / 2.0, halfHeight = CurrentWindow->Height / 2.0;
    const double x = place[0] / place[3] * halfWidth + halfWidth + offsetX;
    const double y = place[1] / place[3] * halfHeight + halfHeight + offsetY;
    if (!(x >= 0 && y >= 0 && x < CurrentWindow->Width && y < CurrentWindow->Height))
        return;
    const PixelScope pixels;
    const int left = static_cast<int>(x), baseline = static_cast<int>(y);
    gl::setpattern(ScreenPattern);
    DrawBackedText(left, baseline, SmallWidth(text), height, descent, BackgroundOf(CurrentWindow));
    gl::setpattern(0);
    SmallText(left, baseline, text, White);
}

void LabelWindow(View* view, std::uint32_t background, const char* name) {
    if (!WindowLabels || !CurrentWindow)
        return;
    gl::zbuffer(false);
    gl::backface(false);
    int label = Label3D;
    if (view->Perspective)
        Draw3dAxis(view, background);
    else {
        const Axes2D& axes = AxesOfDirection[std::clamp(view->Direction, 0, DefaultView2DCount - 1)];
        label = axes.Label;
        Draw2dAxis(background, axes.ToTheRight, axes.Horizontal, axes.Down, axes.Vertical);
    }
    const PixelScope pixels;
    constexpr int left = 8, belowTop = 26, height = 22, descent = 5;
    const std::string kind = std::string(" ") + msg(label);
    const int room = CurrentWindow->Width - 2 * left;
    const int font = FittingFont(NormalFont, (name + kind).c_str(), room);
    // What kind of view it is must be seen, whatever the name.
    const std::string text = ShortenedName(font, name, room - TextWidthIn(font, kind.c_str())) + kind;
    const int baseline = CurrentWindow->Height - belowTop;
    DrawBackedText(left, baseline, TextWidthIn(font, text.c_str()), height, descent, background);
    gl::cpack(White);
    DrawTextIn(font, left, baseline, text.c_str());
}

void Draw3dAxis(View* view, std::uint32_t background) {
    {
        const PixelScope pixels;
        constexpr float middle = (AxisCorner - 1) / 2.0F;
        gl::cpack(background);
        gl::circf(middle, middle, middle);
    }
    constexpr double distance = 130, nearest = 60, farthest = 200;
    Matrix rotation;
    MultMatrix(view->ViewMatrix, p90, rotation);
    rotation[3][0] = rotation[3][1] = 0;
    rotation[3][2] = -distance;
    const PixelScope saved;
    gl::viewport(0, AxisCorner - 1, 0, AxisCorner - 1);
    gl::perspective(FieldOfView, 1, nearest, farthest);
    gl::mmode(gl::MPROJECTION);
    Matrix projection;
    GetGLMatrix(projection);
    gl::mmode(gl::MVIEWING);
    LoadGLMatrix(IdentityMatrix);
    const int shallow = gl::getgdesc(gl::GD_ZMIN), deep = gl::getgdesc(gl::GD_ZMAX);
    constexpr int grey = 100, white = 255;
    gl::lsetdepth(shallow, deep);
    gl::lRGBrange(grey, grey, grey, white, white, white, shallow, deep);
    gl::cpack(White);
    gl::depthcue(true);
    for (int axis = 0; axis < 3; ++axis)
        DrawAxis(axis, rotation, 65 / projection[1][1]);
    gl::depthcue(false);
}

void Draw2dAxis(std::uint32_t background, int toTheRight, char horizontalLetter, int verticalDown,
                char verticalLetter) {
    const PixelScope pixels;
    const Pixel corner = {toTheRight ? ArrowStart : ArrowEnd, verticalDown ? ArrowEnd : ArrowStart};
    const Pixel sideways = {ArrowStart + ArrowEnd - corner.X, corner.Y};
    const Pixel upright = {corner.X, ArrowStart + ArrowEnd - corner.Y};
    // In white, with an edge of the background that covers none of it.
    for (const bool edge : {true, false}) {
        gl::cpack(edge ? background : White);
        gl::linewidth(edge ? 3 : 1);
        DrawArrow(corner, sideways);
        DrawArrow(corner, upright);
    }
    DrawAxisLetter(corner, sideways, horizontalLetter);
    DrawAxisLetter(corner, upright, verticalLetter);
}

void DrawDeRotated(View* view, const double* point, void (*function)(double pixel)) {
    if (!CurrentWindow)
        return;
    const double pixel = 1 / (view->Projection[0][0] * CurrentWindow->Width / 2);
    double eye[3];
    TransformPoint(point, view->Transform, eye);
    gl::pushmatrix();
    LoadGLMatrix(TranslationMatrix(eye[0], eye[1], eye[2]));
    function(view->Perspective ? eye[2] * pixel : pixel);
    gl::popmatrix();
}
