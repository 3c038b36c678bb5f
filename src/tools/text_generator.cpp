#include "tools/text_generator.h"

#include "base/debug.h"
#include "base/directories.h"
#include "geometry/matrices.h"
#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/messages.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/scroll_window.h"
#include "gooey/text_filters.h"
#include "gooey/text_input.h"
#include "gooey/tool_window.h"
#include "gooey/window.h"
#include "platform/drawing.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/undo.h"
#include "tools/creation_guards.h"
#include "tools/fonts.h"
#include "tools/text_mesh.h"
#include "views/grid.h"
#include "views/rendering_state.h"
#include "views/viewports.h"

#include <cmath>
#include <string>

Window* TextGenerator;
int TextGenX, TextGenY, TextGeneratorOpened;
int TextGeneratorEnabled = 1;
char TextBuffer[TextBufferSize];

namespace {

constexpr int PreviewLabel = 131, TextLabel = 132, GenerateLabel = 133, FirstFontLabel = 134, BoldLabel = 139,
              ItalicLabel = 140, SolidLabel = 141, EnterSomeText = 143;

constexpr int WindowWidth = 716, Margin = 8, InputX = 16, InputWidth = 684;
constexpr int PreviewWidth = 700, PreviewHeight = 88, PreviewY = 56;
constexpr int PreviewLabelY = PreviewY + PreviewHeight + 8, FontsY = PreviewLabelY + 21;
constexpr int BottomY = 12;
/// What the text input leaves of the window's height.
constexpr int HeightOfRest = 221;

/// Of the preview, pixels: a font unit, the baseline above the strip's lower edge, how solid letters reach back.
constexpr double PixelsPerUnit = 54;
constexpr int Baseline = 15;
constexpr double BackX = 0.07 * PixelsPerUnit, BackY = 0.05 * PixelsPerUnit;
constexpr std::uint32_t BackColour = 0x808080;
constexpr int ScrollStep = 27;

constexpr const char* FontNames[] = {"Times", "Helvetica", "Courier", "Symbol", "Utopia"};
constexpr int FontCount = 5, SymbolFont = 3;

int FontIndex, BoldText, ItalicText, SolidText = 1;
Font* LoadedFont;
/// The index that it was loaded for; -1: none.
int LoadedIndex = -1;

Gadget* TextField;
Gadget* Preview;

int Pixels(double units) {
    return static_cast<int>(std::lround(units * PixelsPerUnit));
}

void ConfigurePreview(Gadget* gadget) {
    const int width = LoadedFont ? Pixels(TextWidth(*LoadedFont, TextBuffer)) : 0;
    const ScrollWindow& s = ScrollOf(gadget);
    ConfigureScroll(gadget, -1, -1, s.W, s.H, width, s.InnerH);
}

void Put(double x, double y) {
    const double place[2] = {x, y};
    gl::v2d(place);
}

/// The letter's left edge is at x, the baseline at y, pixels.
void DrawLetter(const Glyph& glyph, double x, double y) {
    const auto across = [&](const GlyphPoint& point) { return x + point.X * PixelsPerUnit; };
    const auto up = [&](const GlyphPoint& point) { return y + point.Y * PixelsPerUnit; };
    if (SolidText) {
        gl::cpack(BackColour);
        for (const GlyphEdge& edge : glyph.Edges) {
            const GlyphPoint &from = edge.Points[0], &to = edge.Points[1];
            gl::bgnpolygon();
            Put(across(from), up(from));
            Put(across(from) + BackX, up(from) + BackY);
            Put(across(to) + BackX, up(to) + BackY);
            Put(across(to), up(to));
            gl::endpolygon();
        }
    }
    gl::cpack(White);
    for (const GlyphTriangle& triangle : glyph.Triangles) {
        gl::bgnpolygon();
        for (const GlyphPoint& point : triangle.Points)
            Put(across(point), up(point));
        gl::endpolygon();
    }
}

void DrawTextPreview(int innerX, int innerY, int innerW, int innerH, int hOffset, int) {
    if (PushScrmask(innerX, innerY, innerW, innerH)) {
        gl::cpack(Black);
        gl::rectfi(innerX, innerY, innerX + innerW - 1, innerY + innerH - 1);
        gl::backface(true);
        double x = innerX - hOffset;
        for (const char* c = TextBuffer; LoadedFont && *c; ++c) {
            const Glyph& glyph = GlyphOf(*LoadedFont, *c);
            const double end = x + glyph.Advance * PixelsPerUnit;
            // Letters may reach beyond their room, by less than an em.
            if (end + PixelsPerUnit > innerX && x - PixelsPerUnit < innerX + innerW)
                DrawLetter(glyph, x, innerY + Baseline);
            x = end;
        }
        gl::backface(false);
        if (!LoadedFont)
            FontOf(true).Draw(innerX + Margin, innerY + Baseline, "There is no such font in the installation", DimGrey);
    }
    PopScrmask();
}

std::string FontFile() {
    std::string name = FontNames[FontIndex];
    if (FontIndex != SymbolFont) {
        name += BoldText ? "Bold" : "";
        name += ItalicText ? "Italic" : "";
    }
    return std::string(KirvoDir) + "/fonts/" + name;
}

void ForgetFont() {
    FreeFont(LoadedFont);
    LoadedFont = nullptr;
    LoadedIndex = -1;
}

void ChangeFontForm(GadgetArg) {
    LoadedIndex = -1;
    LoadCurrentFont();
}

void ChangeSolid(GadgetArg) {
    DirtyToolWindow(TextGeneratorWindow);
}

/// The text has changed; Return leaves the field active.
void TextReturn() {
    if (TextReturnReal)
        ActivateText(TextField, 1);
    RedrawGadgetInFront(Preview);
}

void Measure(int& width, int& height) {
    width = WindowWidth;
    height = InputHeight(TextLabelAbove) + HeightOfRest;
}

void Build() {
    static constexpr int options[] = {BoldLabel, ItalicLabel, SolidLabel};
    static constexpr int fonts[] = {FirstFontLabel, FirstFontLabel + 1, FirstFontLabel + 2, FirstFontLabel + 3,
                                    FirstFontLabel + 4};
    constexpr int optionWidth = 90;
    AddBackdrop();
    TextField = AddTextInput({.X = InputX,
                              .Y = -InputHeight(TextLabelAbove) - Margin,
                              .Width = -InputWidth,
                              .Flags = TextLabelAbove | TextReportsChanges,
                              .Label = msg(TextLabel),
                              .Text = std::string(TextBuffer).c_str(),
                              .Buffer = TextBuffer,
                              .Size = TextBufferSize,
                              .Filter = AsciiFilter,
                              .Callback = TextReturn});
    AddIntButtons(Margin, FontsY, 0, 0, FontCount, fonts, LoadCurrentFont, &FontIndex, nullptr);
    AddText(Margin, PreviewLabelY, msg(PreviewLabel), 0);
    Preview = AddScrollWindow({.X = Margin,
                               .Y = PreviewY,
                               .Width = PreviewWidth,
                               .Height = PreviewHeight,
                               .Flags = ScrollHorizontal | ScrollBorder,
                               .StepX = ScrollStep,
                               .Configure = ConfigurePreview,
                               .Draw = DrawTextPreview});
    int* const flags[] = {&BoldText, &ItalicText, &SolidText};
    for (int option = 0; option < 3; ++option)
        AddCheckBox(Margin + option * optionWidth, BottomY + 4, 0, 0, nullptr, msg(options[option]),
                    option < 2 ? ChangeFontForm : ChangeSolid, flags[option]);
    static constexpr int generate[] = {GenerateLabel};
    AddIntButtons(-Margin - 120, BottomY, 120, ButtonsOfGivenWidth, 1, generate, GenerateText, nullptr, nullptr);
    ActivateText(TextField, 0);
    LoadCurrentFont();
}

void Close() {
    ForgetFont();
    TextField = Preview = nullptr;
}

/// From font units to the model: upright on the main view's grid, from one edge to the other.
Matrix PlacementOf(double width) {
    const double scale = OneGridSquare() * GridSteps() / (width / 2);
    Matrix placement;
    MultMatrix(PitchMatrix(90), ScaleMatrix(scale, scale, scale), placement);
    MultMatrix(placement, ViewOfViewport(0)->GridMatrix, placement);
    return placement;
}

} // namespace

const ToolWindow TextGeneratorWindow = {
    .Title = " Text generator",
    .Handle = &TextGenerator,
    .Measure = Measure,
    .Place = {.Opened = &TextGeneratorOpened, .X = &TextGenX, .Y = &TextGenY},
    .DisabledByTools = true,
    .Enabled = &TextGeneratorEnabled,
    .Build = Build,
    .Close = Close,
    .ManualPage = "R_TextGenerator",
    .ManualName = "Text generator",
};

void OpenTextGenerator() {
    OpenToolWindow(TextGeneratorWindow);
}

void LoadCurrentFont() {
    if (LoadedIndex == FontIndex)
        return;
    DisableWindow(MainWindow);
    ForgetFont();
    LoadedFont = ReadFont(FontFile().c_str());
    LoadedIndex = FontIndex;
    DirtyToolWindow(TextGeneratorWindow);
    EnableWindow(MainWindow);
}

void GenerateText() {
    if (!LoadedFont || !CreationInObjectMode())
        return;
    const double width = TextWidth(*LoadedFont, TextBuffer);
    if (width <= 0) {
        TellUser(EnterSomeText);
        return;
    }
    if (!PolygonCreationAllowed())
        return;
    Trace("Generating text...\n");
    DisableWindow(MainWindow);
    CopyCurrentObject();
    AddTextToModel(*LoadedFont, TextBuffer, SolidText != 0, PlacementOf(width));
    DirtyModelWindows();
    EnableWindow(MainWindow);
}
