#include "palettes/texture_gizmo.h"

#include "base/file_names.h"
#include "gooey/button.h"
#include "gooey/check_box.h"
#include "gooey/draw.h"
#include "gooey/event_loop.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/message_gadgets.h"
#include "gooey/message_table.h"
#include "gooey/modal.h"
#include "gooey/pointer.h"
#include "gooey/pull_down.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "interaction/selection.h"
#include "interaction/tool_guards.h"
#include "interaction/tool_protocol.h"
#include "palettes/material_palette.h"
#include "palettes/samples.h"
#include "palettes/texture_menus.h"
#include "platform/drawing.h"
#include "platform/events.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "platform/textures.h"
#include "platform/windows.h"
#include "store/accessors.h"
#include "store/texture_list.h"
#include "textures/texture_changes.h"
#include "texturing/mappings.h"
#include "views/capabilities.h"
#include "views/display_flags.h"
#include "views/rendering_state.h"
#include "views/view_transform.h"
#include "views/viewports.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <utility>

Window* TextureGizmo;
int TextureX, TextureY, TextureW, TextureH, TextureGizmoOpened;
int TextureGizmoOpen;

namespace {

constexpr char Title[] = " Texture gizmo";
constexpr int EntrySize = 100, FirstColumns = 5, FirstRows = 2;
/// Of an entry's picture, from its edges.
constexpr int PictureInset = 3;

constexpr int LeastWidth = 520, LeastHeight = 240;
constexpr int EditLabel = 25, RecolourLabel = 172, RetextureLabel = 174, BothLabel = 175;
constexpr int AdjustLabel = 179, RemoveLabel = 178, MaskLabel = 3;
constexpr int EditColumnWidth = 300;

/// The two samples: plain, and with the texture.
constexpr int SampleX[] = {343, 461}, SampleY = 53, SampleRadius = 45, SampleDepth = 5;

bool Disabled;
/// What edits polygons; null while the window is closed.
Gadget* EditGadgets[4];

// ---- The entries

Texture* AsTexture(void* entry) {
    return static_cast<Texture*>(entry);
}

/// Without its directory.
const char* NameOf(const void* entry) {
    const char* name = static_cast<const Texture*>(entry)->FileName;
    const char* slash = std::strrchr(name, '/');
    return slash ? slash + 1 : name;
}

void ShowTitle() {
    const Texture* texture = CurrentTexture();
    if (!TextureGizmo)
        return;
    std::string title = Title;
    if (texture)
        title = std::string(texture->FileName) + "  (" + std::to_string(texture->Width) + " x " +
                std::to_string(texture->Height) + " x " + std::to_string(texture->Components) + ")";
    const WindowScope scope(TextureGizmo);
    gl::wintitle(title.c_str());
}

void DrawEntry(void* entry, int x, int y) {
    const int near = PictureInset, far = EntrySize - PictureInset;
    const int corners[4][2] = {{x + near, y + near}, {x + far, y + near}, {x + far, y + far}, {x + near, y + far}};
    BindTexture(AsTexture(entry));
    gl::cpack(White);
    gl::bgnpolygon();
    for (int corner = 0; corner < 4; ++corner) {
        gl::t2f(TextureSquare[corner]);
        gl::v2i(corners[corner]);
    }
    gl::endpolygon();
    BindTexture(nullptr);
}

const PaletteEntries Entries = {
    .First = []() -> void* { return FirstTexture(); },
    .Next = [](const void* entry) -> void* { return static_cast<const Texture*>(entry)->Next; },
    .Current = []() -> void* { return CurrentTexture(); },
    .SlotOf = [](void* entry) -> std::int32_t& { return AsTexture(entry)->PaletteSlot; },
    .NameOf = NameOf,
    .Draw = DrawEntry,
};

// ---- The samples

/// Texture coordinates from 0 to 1 across a sphere about the origin, from its own x and y.
void GenerateCoordinates(bool on) {
    static constexpr float planes[2][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}};
    for (const int coordinate : {gl::TX_S, gl::TX_T}) {
        if (on)
            gl::texgen(coordinate, gl::TG_LINEAR, planes[coordinate]);
        gl::texgen(coordinate, on ? gl::TG_ON : gl::TG_OFF, nullptr);
    }
    Matrix matrix = IdentityMatrix;
    if (on)
        MultMatrix(TranslationMatrix(1, 1, 0), ScaleMatrix(0.5, 0.5, 0.5), matrix);
    gl::mmode(gl::MTEXTURE);
    LoadGLMatrix(matrix);
    gl::mmode(gl::MVIEWING);
}

void DrawSample(int sample, bool dimmed) {
    SetLighting();
    if (dimmed)
        DimLight();
    const bool textured = sample == 1 && CurrentTexture();
    if (textured) {
        GenerateCoordinates(true);
        BindTexture(CurrentTexture());
    }
    BindMaterial(CurrentMaterial());
    Sweetie(static_cast<float>(SampleX[sample]), SampleY, SampleRadius, SampleDepth);
    if (textured) {
        BindTexture(nullptr);
        GenerateCoordinates(false);
    }
    if (dimmed)
        NormalLight();
}

void DrawSamples() {
    for (const int sample : {0, 1})
        DrawSample(sample, false);
}

int ClickedSample;

/// See DoDoubleClick.
int TakeSampleClick(int released) {
    static int last = -1;
    const FrontBufferScope front;
    DrawSample(ClickedSample, !released);
    return released ? 0 : std::exchange(last, ClickedSample) != ClickedSample;
}

int ClickSample() {
    for (const int sample : {0, 1})
        if (MouseInCircle(SampleX[sample], SampleY, SampleRadius)) {
            ClickedSample = sample;
            if (DoDoubleClick(TakeSampleClick))
                OpenMaterialPalette();
            return 1;
        }
    return 0;
}

void DescribeSamples(const Gadget*, GadgetDescription& description) {
    static constexpr const char* names[] = {"Plain sample", "Textured sample"};
    constexpr int bottom = SampleY - SampleRadius, side = 2 * SampleRadius;
    description.Label = "Samples";
    description.Box = {SampleX[0] - SampleRadius, bottom, SampleX[1] - SampleX[0] + side, side};
    for (const int sample : {0, 1})
        description.Items.push_back({names[sample], {SampleX[sample] - SampleRadius, bottom, side, side}});
}

constexpr GadgetKind SamplesKind = {"custom", DescribeSamples, nullptr, nullptr};

// ---- The window

void ShowEditGadgets() {
    for (Gadget* gadget : EditGadgets)
        if (gadget)
            gadget->Visible = !Disabled;
}

void BuildGizmo() {
    static constexpr int applyLabels[] = {RecolourLabel, RetextureLabel, BothLabel};
    static constexpr int adjustLabels[] = {AdjustLabel, RemoveLabel};
    constexpr int labelX = 8, labelY = 112, applyY = 75, adjustY = 42, maskX = 12, maskY = 12;
    AddBackdrop();
    AddPullDownMenu(TextureMenus, HandleTextureMenu);
    AddPaletteGrid(TextureGizmoGrid);
    Kirvo_AddGadget(ShowTitle, nullptr);
    EditGadgets[0] = AddText(labelX, labelY, msg(EditLabel), 1);
    EditGadgets[1] = AddIntButtons(0, applyY, EditColumnWidth, ButtonsSmallFont, 3, applyLabels, ChangeTexturesButton,
                                   nullptr, nullptr);
    EditGadgets[2] = AddIntButtons(0, adjustY, EditColumnWidth, ButtonsSmallFont, 2, adjustLabels, AdjustTextureButton,
                                   nullptr, nullptr);
    EditGadgets[3] = AddIntCheck(maskX, maskY, 0, CheckSmallFont, nullptr, MaskLabel, nullptr, &MaskTextureSelections);
    Kirvo_AddGadget(DrawSamples, ClickSample)->Kind = &SamplesKind;
    ShowEditGadgets();
}

void TextureLeftClick() {
    if (void* entry = PaletteEntryAtPointer(TextureGizmoGrid))
        ChangeTextureSelection(AsTexture(entry));
}

void CheckTextureGizmo(int device, short value) {
    if (device == gl::LEFTMOUSE && value) {
        TextureLeftClick();
        return;
    }
    if (device != gl::KEYBD)
        return;
    switch (value) {
    case UpCharacter:
        return MoveTextureLeft(TextureGizmoGrid.Columns);
    case DownCharacter:
        return MoveTextureRight(TextureGizmoGrid.Columns);
    case LeftCharacter:
        return MoveTextureLeft(1);
    case RightCharacter:
        return MoveTextureRight(1);
    default:
        break;
    }
}

void CloseTextureGizmo() {
    std::fill(std::begin(EditGadgets), std::end(EditGadgets), nullptr);
    MaskTextureSelections = 0;
}

void SetDisabled(bool disabled) {
    Disabled = disabled;
    ShowEditGadgets();
    DirtyTextureGizmo();
}

/// Exchanges the current texture with its neighbours; `next` leads to the neighbour.
void Move(int places, Texture* Texture::*towards) {
    Texture* texture = CurrentTexture();
    if (!texture)
        return;
    for (; places > 0 && texture->*towards; --places) {
        Texture* neighbour = texture->*towards;
        ExchangeTextureWithNext(towards == &Texture::Next ? texture : neighbour);
        std::swap(texture->PaletteSlot, neighbour->PaletteSlot);
        RedrawPaletteEntry(TextureGizmoGrid, neighbour);
    }
    RedrawPaletteEntry(TextureGizmoGrid, texture);
    ShowPaletteEntry(TextureGizmoGrid, texture);
}

} // namespace

PaletteGrid TextureGizmoGrid = {.EntryWidth = EntrySize, .EntryHeight = EntrySize, .Entries = &Entries};

const ToolWindow TextureGizmoWindow = {
    .Title = Title,
    .Handle = &TextureGizmo,
    .Width = PaletteFudgeX + FirstColumns * EntrySize,
    .Height = PaletteFudgeY + FirstRows * EntrySize,
    .Rules = {.LeastWidth = LeastWidth,
              .LeastHeight = LeastHeight,
              .StepX = EntrySize,
              .StepY = EntrySize,
              .FudgeX = PaletteFudgeX,
              .FudgeY = PaletteFudgeY},
    .Place = {.Opened = &TextureGizmoOpened, .X = &TextureX, .Y = &TextureY, .Width = &TextureW, .Height = &TextureH},
    .ToolRuns = [](int runs) { runs ? DisableTextureGizmo() : EnableTextureGizmo(); },
    .OpenAtStart = &TextureGizmoOpen,
    .OpenAgain = OpenTextureGizmo,
    .Build = BuildGizmo,
    .Event = CheckTextureGizmo,
    .Close = CloseTextureGizmo,
    .ManualPage = TextureGizmoPage,
};

void OpenTextureGizmo() {
    if (TextureAvailable)
        OpenToolWindow(TextureGizmoWindow);
}

void ChangeTextureSelection(Texture* texture) {
    Texture* const before = CurrentTexture();
    if (texture == before)
        return;
    CurrentTexture() = texture;
    MovePaletteHighlight(TextureGizmoGrid, before, texture);
    ShowPaletteEntry(TextureGizmoGrid, texture);
    ShowTitle();
    RedrawTextureSweeties();
    if (DirtyOnTextureChange)
        DirtyModelWindows();
    TextureAppChange();
}

void FindPolygonsTexture() {
    if (!APolygonIsSelected())
        return;
    if (Texture* texture = FirstSelectedPolygon()->Texture)
        ChangeTextureSelection(texture);
}

void MoveTextureLeft(int places) {
    Move(places, &Texture::Prev);
}

void MoveTextureRight(int places) {
    Move(places, &Texture::Next);
}

void RedrawTextureSweeties() {
    if (!TextureGizmo)
        return;
    const WindowScope window(TextureGizmo);
    const FrontBufferScope front;
    DrawSamples();
}

void ChangeTextureMaterial() {
    RedrawTextureSweeties();
    TextureAppChange();
}

void DirtyTextureGizmo() {
    DirtyToolWindow(TextureGizmoWindow);
}

void DisableTextureGizmo() {
    SetDisabled(true);
}

void EnableTextureGizmo() {
    SetDisabled(false);
}

int TextureGizmoIsDisabled() {
    return Disabled;
}
