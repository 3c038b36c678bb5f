#include "graphics_windows.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/cursors.h"
#include "platform/drawing.h"
#include "platform/framebuffer.h"
#include "platform/lighting.h"
#include "platform/matrices.h"
#include "platform/recordings.h"
#include "platform/state.h"
#include "platform/text.h"
#include "platform/textures.h"
#include "platform/windows.h"

using namespace gl;

namespace demo {

namespace {

constexpr double Pi = 3.141592653589793;
constexpr int TorusRecording = 1;

enum Material { RedMetal = 1, GreyMetal, WhiteMatte, Glass };

int Scene = 0, Views[2] = {0, 0}, Shapes = 0, Texts = 0;
double Turn = 30;
int Band[4] = {0, 0, 0, 0};

void Identity() {
    const double identity[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    loadmatrix(identity);
}

// Pixel coordinates over the current window.
void Pixels(int* width, int* height) {
    getsize(width, height);
    viewport(0, *width - 1, 0, *height - 1);
    ortho2(-0.5, *width - 0.5, -0.5, *height - 0.5);
    Identity();
}

void Line(double x1, double y1, double x2, double y2) {
    const double a[2] = {x1, y1}, b[2] = {x2, y2};
    bgnline();
    v2d(a);
    v2d(b);
    endline();
}

void Print(int fontNumber, int x, int y, const std::string& text) {
    font(fontNumber);
    cmov2i(x, y);
    charstr(text.c_str());
}

void Define() {
    defrasterfont(1, 22);
    defrasterfont(2, 17);
    defrasterfont(3, 18);
    uint16_t rows[16];
    for (int i = 0; i < 16; i++)
        rows[i] = i % 2 ? 0xAAAA : 0x5555;
    defpattern(1, 16, rows);
    for (int i = 0; i < 16; i++)
        rows[i] = static_cast<uint16_t>(0x8888 >> i % 4);
    defpattern(2, 16, rows);
    deflinestyle(1, 0x5555);
    deflinestyle(2, 0x00FF);
    deflinestyle(3, 0x1F1F);

    const float model[] = {AMBIENT, 0.5f, 0.5f, 0.5f, TWOSIDE, 1, LMNULL};
    const float light[] = {LCOLOR, 1, 1, 1, POSITION, 1, 1, 1, 0, LMNULL};
    const float red[] = {AMBIENT,  0.3f, 0,    0,    DIFFUSE,   0.5f, 0.1f,  0.1f,
                         SPECULAR, 0.8f, 0.3f, 0.3f, SHININESS, 50,   LMNULL};
    const float grey[] = {AMBIENT,  0.3f, 0.3f, 0.3f, DIFFUSE,   0.5f, 0.5f,  0.5f,
                          SPECULAR, 0.8f, 0.8f, 0.8f, SHININESS, 50,   LMNULL};
    const float white[] = {AMBIENT, 0.8f, 0.8f, 0.8f, DIFFUSE, 0.6f, 0.6f, 0.6f, LMNULL};
    const float glass[] = {AMBIENT, 0.2f, 0.5f, 0.6f,      DIFFUSE, 0.2f,  0.5f,  0.6f,  SPECULAR,
                           1,       1,    1,    SHININESS, 30,      ALPHA, 0.45f, LMNULL};
    lmdef(DEFLMODEL, 1, 0, model);
    lmdef(DEFLIGHT, 1, 0, light);
    lmdef(DEFMATERIAL, RedMetal, 0, red);
    lmdef(DEFMATERIAL, GreyMetal, 0, grey);
    lmdef(DEFMATERIAL, WhiteMatte, 0, white);
    lmdef(DEFMATERIAL, Glass, 0, glass);

    // Bricks: blue, green, red.
    constexpr int size = 64;
    std::vector<uint8_t> image(size * size * 3);
    for (int y = 0; y < size; y++)
        for (int x = 0; x < size; x++) {
            const bool mortar = y % 16 < 2 || (x + (y / 16 % 2) * 16) % 32 < 2;
            uint8_t* p = &image[(y * size + x) * 3];
            p[0] = mortar ? 190 : static_cast<uint8_t>(50 + x * 5 % 17);
            p[1] = mortar ? 200 : static_cast<uint8_t>(70 + y * 7 % 23);
            p[2] = mortar ? 205 : static_cast<uint8_t>(170 + (x + y) * 3 % 29);
        }
    texdef2d(1, 3, size, size, image.data(), 0, nullptr);
    // A sky to reflect.
    std::vector<uint8_t> sky(size * size * 3);
    for (int y = 0; y < size; y++)
        for (int x = 0; x < size; x++) {
            uint8_t* p = &sky[(y * size + x) * 3];
            p[0] = static_cast<uint8_t>(y < size / 2 ? 40 : 255);
            p[1] = static_cast<uint8_t>(y < size / 2 ? 90 : 130 + 2 * y - size);
            p[2] = static_cast<uint8_t>(y < size / 2 ? 110 : 60 + 3 * (y - size / 2));
        }
    texdef2d(2, 3, size, size, sky.data(), 0, nullptr);
    tevdef(1, TV_MODULATE);
}

void Torus(double radius, double tube, int around, int across) {
    for (int i = 0; i < around; i++) {
        bgnqstrip();
        for (int j = 0; j <= across; j++)
            for (int k : {0, 1}) {
                const double a = 2 * Pi * (i + k) / around, b = 2 * Pi * j / across;
                const double n[3] = {std::cos(a) * std::cos(b), std::sin(a) * std::cos(b), std::sin(b)};
                const double p[3] = {radius * std::cos(a) + tube * n[0], radius * std::sin(a) + tube * n[1],
                                     tube * n[2]};
                n3d(n);
                v3d(p);
            }
        endqstrip();
    }
}

// One side of a box: `axis` 0 to 2, `sign` -1 or 1, corners counter-clockwise from outside.
void Side(int axis, int sign, double half) {
    double n[3] = {0, 0, 0};
    n[axis] = sign;
    n3d(n);
    bgnpolygon();
    for (int i = 0; i < 4; i++) {
        const int corner = sign > 0 ? i : 3 - i;
        const float t[2] = {corner == 1 || corner == 2 ? 1.0f : 0.0f, corner >= 2 ? 1.0f : 0.0f};
        double p[3];
        p[axis] = sign * half;
        p[(axis + 1) % 3] = (2 * t[0] - 1) * half;
        p[(axis + 2) % 3] = (2 * t[1] - 1) * half;
        t2f(t);
        v3d(p);
    }
    endpolygon();
}

void BindTexture(int number) {
    texbind(0, number);
    tevbind(0, number ? 1 : 0);
}

void Floor() {
    // The parent with a concave decal in its plane, by masking.
    const float n[3] = {0, 0, 1};
    auto square = [](double half) {
        const double corners[4][3] = {
            {-half, -half, -1.5}, {half, -half, -1.5}, {half, half, -1.5}, {-half, half, -1.5}};
        bgnpolygon();
        for (const double* p : corners)
            v3d(p);
        endpolygon();
    };
    n3f(n);
    zwritemask(0);
    lmbind(MATERIAL, GreyMetal);
    square(4);
    lmbind(MATERIAL, RedMetal);
    bgnpolygon();
    for (int i = 0; i < 10; i++) {
        const double r = i % 2 ? 1.2 : 3.2, a = Pi * i / 5;
        const double p[3] = {r * std::sin(a), r * std::cos(a), -1.5};
        v3d(p);
    }
    endpolygon();
    wmpack(0);
    zwritemask(0xFFFFFFFF);
    lmbind(MATERIAL, GreyMetal);
    square(4);
    wmpack(0xFFFFFFFF);
}

void Eye(double aspect) {
    perspective(400, aspect, 2, 40);
    Identity();
    lmbind(LMODEL, 1);
    lmbind(LIGHT0, 1);
    translate(0, 0, -13);
    rot(-62, 'x');
    rot(Turn, 'z');
}

void DrawSolidView() {
    int width, height;
    Pixels(&width, &height);
    czclear(0x504030, 0xFFFFFF);
    Eye(static_cast<double>(width) / height);
    zbuffer(true);
    Floor();

    pushmatrix();
    translate(-1.8, 0.6, -0.5);
    lmbind(MATERIAL, WhiteMatte);
    BindTexture(1);
    for (int axis = 0; axis < 3; axis++)
        for (int sign : {-1, 1})
            Side(axis, sign, 1);
    BindTexture(0);
    popmatrix();

    pushmatrix();
    translate(1.6, -0.8, 0.2);
    rot(60, 'x');
    lmbind(MATERIAL, RedMetal);
    callobj(TorusRecording);
    popmatrix();

    // A chrome ring reflects the sky.
    pushmatrix();
    translate(0.6, 2.2, 0);
    rot(100, 'y');
    scale(0.7, 0.7, 0.7);
    lmbind(MATERIAL, WhiteMatte);
    BindTexture(2);
    for (int coordinate : {TX_S, TX_T}) {
        texgen(coordinate, TG_SPHEREMAP, nullptr);
        texgen(coordinate, TG_ON, nullptr);
    }
    callobj(TorusRecording);
    for (int coordinate : {TX_S, TX_T})
        texgen(coordinate, TG_OFF, nullptr);
    BindTexture(0);
    popmatrix();

    // Glass in front of it all, and a screen door.
    blendfunction(BF_SA, BF_MSA);
    zwritemask(0);
    lmbind(MATERIAL, Glass);
    pushmatrix();
    translate(0.2, -2.6, 0.3);
    Side(1, -1, 1);
    popmatrix();
    zwritemask(0xFFFFFFFF);
    blendfunction(BF_ONE, BF_ZERO);
    setpattern(2);
    pushmatrix();
    translate(-2.8, -2.4, -0.4);
    cpack(0xFF20C0FF);
    scale(0.8, 0.8, 0.8);
    const double door[4][3] = {{-1, 0, -1}, {1, 0, -1}, {1, 0, 1}, {-1, 0, 1}};
    bgnpolygon();
    for (const double* p : door)
        v3d(p);
    endpolygon();
    popmatrix();
    setpattern(0);
    zbuffer(false);

    int w, h;
    Pixels(&w, &h);
    cpack(0xFFFFFFFF);
    Print(2, 8, 8, "Lit, textured, recorded");
    swapbuffers();
}

void DrawWireView() {
    int width, height;
    Pixels(&width, &height);
    czclear(0x303030, 0xFFFFFF);
    Eye(static_cast<double>(width) / height);
    zbuffer(true);
    // Depth cueing makes what is near brighter.
    lRGBrange(60, 60, 60, 255, 255, 255, 0xD00000, 0xEE0000);
    depthcue(true);
    for (int i = -4; i <= 4; i++) {
        const double ends[4][3] = {{i * 1.0, -4, -1.5}, {i * 1.0, 4, -1.5}, {-4, i * 1.0, -1.5}, {4, i * 1.0, -1.5}};
        for (int line = 0; line < 2; line++) {
            bgnline();
            v3d(ends[2 * line]);
            v3d(ends[2 * line + 1]);
            endline();
        }
    }
    depthcue(false);
    cpack(0xFF40FFFF);
    linewidth(2);
    for (int axis = 0; axis < 3; axis++) {
        const double from[3] = {0, 0, -1.4};
        double to[3] = {0, 0, -1.4};
        to[axis] += 3;
        setlinestyle(axis);
        bgnline();
        v3d(from);
        v3d(to);
        endline();
        cmov(to[0], to[1], to[2]);
        font(3);
        charstr(axis == 0 ? "x" : axis == 1 ? "y" : "z");
    }
    setlinestyle(0);
    linewidth(1);
    zbuffer(false);
    swapbuffers();
}

// A bevelled box, lit from the top.
void Bevel(int x, int y, int width, int height) {
    RGBcolor(170, 170, 170);
    rectfi(x + 4, y + 4, x + width - 5, y + height - 5);
    const int x2 = x + width - 1, y2 = y + height - 1;
    for (int i = 0; i < 4; i++) {
        auto shade = [](int level) { RGBcolor(17 * level, 17 * level, 17 * level); };
        shade(5 + i);
        Line(x + i, y + i, x2 - i, y + i);
        shade(13 - i);
        Line(x2 - i, y + i, x2 - i, y2 - i);
        shade(7 + i);
        Line(x + i, y + i, x + i, y2 - i);
        shade(15 - i);
        Line(x + i, y2 - i, x2 - i, y2 - i);
    }
}

void DrawShapes() {
    int width, height;
    Pixels(&width, &height);
    cpack(0x806850);
    clear();
    Bevel(16, height - 56, 150, 40);
    cpack(0);
    Print(3, 16 + (150 - strwidth("Bevelled")) / 2, height - 42, "Bevelled");

    // Transparent discs.
    blendfunction(BF_SA, BF_MSA);
    for (int i = 0; i < 3; i++) {
        cpack(0x90000000u | 0xFFu << 8 * i);
        circf(static_cast<float>(70 + 28 * std::sin(2 * Pi * i / 3)),
              static_cast<float>(height - 120 + 28 * std::cos(2 * Pi * i / 3)), 36);
    }
    blendfunction(BF_ONE, BF_ZERO);
    // Patterns.
    for (int i = 0; i < 2; i++) {
        setpattern(1 + i);
        cpack(0xFFFFFF);
        rectfi(180, height - 56 - 60 * i, 224, height - 16 - 60 * i);
        setpattern(0);
        cpack(0);
        recti(180, height - 56 - 60 * i, 224, height - 16 - 60 * i);
    }
    // A concave polygon and its outline.
    const double arrow[][2] = {{260, 30}, {330, 75}, {260, 120}, {278, 82}, {228, 82}, {228, 68}, {278, 68}};
    cpack(0x30D0F0);
    bgnpolygon();
    for (const double* p : arrow)
        v2d(p);
    endpolygon();
    cpack(0);
    bgnclosedline();
    for (const double* p : arrow)
        v2d(p);
    endclosedline();
    // Lines of every width and style, crisp and smooth.
    cpack(0xFFFFFF);
    for (int i = 0; i < 4; i++) {
        linewidth(1 + i);
        setlinestyle(i);
        Line(16, 66 - 14 * i, 110, 66 - 14 * i);
        Line(126, 66 - 14 * i, 206, 54 - 14 * i);
    }
    setlinestyle(0);
    linewidth(1);
    linesmooth(SML_ON | SML_SMOOTHER);
    blendfunction(BF_SA, BF_MSA);
    cpack(0xFFFFFFFF);
    for (int i = 0; i < 9; i++)
        Line(290, height - 80, 290 + 44 * std::cos(Pi * i / 8), height - 80 + 44 * std::sin(Pi * i / 8));
    linesmooth(SML_OFF);
    blendfunction(BF_ONE, BF_ZERO);
    cpack(0x80FFFF);
    circ(290, static_cast<float>(height - 80), 48);
    arc(290, static_cast<float>(height - 80), 56, 0, 1800);
    swapbuffers();
}

void DrawTexts() {
    int width, height;
    Pixels(&width, &height);
    cpack(0xD8D0C8);
    clear();
    const char* const names[] = {"Default font, 17 pixels", "Normal font, 22 pixels", "Small font, 17 pixels",
                                 "Menu font, 18 pixels"};
    int y = height - 30;
    for (int i = 0; i < 4; i++) {
        cpack(0x303030);
        Print(i, 12, y, names[i]);
        cpack(0xA00000);
        y -= 4;
        Line(12, y, 12 + strwidth(names[i]) - 1, y);
        y -= 26;
    }
    cpack(0x202020);
    Print(2, 12, y, "ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    Print(2, 12, y - 20, "abcdefghijklmnopqrstuvwxyz 0123456789");
    Print(2, 12, y - 40,
          "Caf\xC3\xA9, na\xC3\xAFve, \xC3\xBC"
          "ber, 45\xC2\xB0, \xE2\x82\xAC 100");
    // Clipped to its box.
    cpack(0xFFFFFF);
    rectfi(12, 12, 160, 32);
    scrmask(12, 160, 12, 32);
    cpack(0x0000A0);
    Print(1, 16, 17, "Clipped by the screen mask");
    scrmask(0, width - 1, 0, height - 1);
}

void DefineCursor() {
    // A cross with a gap in the middle, and its surroundings.
    uint16_t planes[32];
    for (int row = 0; row < 16; row++) {
        planes[row] = row < 6 || row > 8 ? 0x0100 : row == 7 ? 0xFC7E : 0;
        planes[16 + row] = row < 6 || row > 8 ? 0x0280 : row != 7 ? 0xFC7E : 0;
    }
    curstype(C16X2);
    defcursor(2, planes);
    curorigin(2, 8, 7);
}

int Open(const char* title, int x, int y, int width, int height) {
    prefposition(x, x + width - 1, y, y + height - 1);
    const int id = winopen(title);
    RGBmode();
    doublebuffer();
    gconfig();
    mmode(MVIEWING);
    return id;
}

} // namespace

void OpenWindows() {
    Scene = Open("Scene", 40, 260, 560, 380);
    RGBmode();
    singlebuffer();
    gconfig();
    Define();
    DefineCursor();
    for (int i = 0; i < 2; i++) {
        Views[i] = swinopen(Scene);
        winposition(4 + 276 * i, 4 + 276 * i + 271, 4, 350);
        RGBmode();
        doublebuffer();
        gconfig();
        mmode(MVIEWING);
    }
    Shapes = Open("Shapes", 640, 330, 360, 280);
    Texts = Open("Text", 420, 40, 330, 230);
    singlebuffer();
    gconfig();
    setcursor(2, 0, 0);
    makeobj(TorusRecording);
    Torus(1.1, 0.42, 40, 20);
    closeobj();
    DrawWindow(0);
}

void DrawWindow(int id) {
    const int current = winget();

    struct {
        int id;
        void (*draw)();
    } const windows[] = {
        {Scene,
         [] {
             int width, height;
             Pixels(&width, &height);
             cpack(0x989088);
             clear();
             cpack(0);
             Print(1, 12, height - 22, "Two subwindows");
         }},
        {Views[0], DrawSolidView},
        {Views[1], DrawWireView},
        {Shapes, DrawShapes},
        {Texts, DrawTexts},
    };

    for (const auto& window : windows)
        if ((id == 0 || id == window.id) && WindowIsOpen(window.id)) {
            winset(window.id);
            window.draw();
        }
    winset(current);
}

int SceneWindow() {
    return Scene;
}

void TurnScene(double degrees) {
    Turn += degrees;
    for (int view : Views)
        DrawWindow(view);
}

void DrawRubberBand(int x1, int y1, int x2, int y2) {
    drawmode(PUPDRAW);
    mapcolor(1, 255, 0, 0);
    fullscrn();
    setlinestyle(0);
    for (int drawn : {0, 1}) {
        color(drawn);
        if (Band[0] != Band[2] || Band[1] != Band[3])
            recti(Band[0], Band[1], Band[2], Band[3]);
        Band[0] = x1;
        Band[1] = y1;
        Band[2] = x2;
        Band[3] = y2;
    }
    endfullscrn();
    drawmode(NORMALDRAW);
}

void DrawDot(int x, int y) {
    int width, height;
    Pixels(&width, &height);
    frontbuffer(true);
    cpack(0x00FF00);
    circf(static_cast<float>(x), static_cast<float>(y), 3);
    frontbuffer(false);
}

void Forget() {
    Band[0] = Band[1] = Band[2] = Band[3] = 0;
    Turn = 30;
    delobj(TorusRecording);
}

} // namespace demo
