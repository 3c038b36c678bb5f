#include "palettes/lighting_buttons.h"

#include "gooey/draw.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/modal.h"
#include "gooey/pointer.h"
#include "gooey/window.h"
#include "interaction/tool_protocol.h"
#include "materials/material_definitions.h"
#include "platform/drawing.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/polygon_editing.h"
#include "tools/spheres.h"
#include "views/rendering_state.h"
#include "views/viewports.h"

namespace {

constexpr int Buttons = 3;
constexpr int FirstX = 372, StepX = 92, MiddleY = 52, Radius = 36;
constexpr int OutlineX = 330, OutlineY = 10, OutlineSize = 84;
constexpr int FacetedDepth = 2, SmoothDepth = 5;

int MiddleX(int mode) {
    return FirstX + StepX * mode;
}

void DrawOutline(std::uint32_t rgb) {
    SetColour(rgb);
    DrawFrame(OutlineX + StepX * CurrentLighting, OutlineY, OutlineSize, OutlineSize, ShadeFull);
    SetColour(White);
}

void DrawButton(int mode) {
    const bool before = gl::getbackface();
    gl::backface(mode != LightingUnlit);
    if (mode == LightingUnlit) {
        gl::cpack(CurrentMaterial() ? CurrentMaterial()->PackedColour | 0xFF000000 : White);
        gl::circf(MiddleX(mode), MiddleY, Radius);
    } else {
        const bool faceted = mode == LightingFaceted;
        BindMaterial(CurrentMaterial());
        DrawSphere(MiddleX(mode), MiddleY, 0, Radius, SphereFlat | (faceted ? SphereFaceted : SphereSmooth),
                   faceted ? FacetedDepth : SmoothDepth);
    }
    gl::backface(before);
}

void DrawDimmed(int mode) {
    SetLighting();
    DimLight();
    DrawButton(mode);
    NormalLight();
}

int ModeAtPointer() {
    for (int mode = 0; mode < Buttons; ++mode)
        if (MouseInCircle(MiddleX(mode), MiddleY, Radius))
            return mode;
    return -1;
}

void Describe(const Gadget*, GadgetDescription& description) {
    static constexpr const char* names[Buttons] = {"Unlit", "Faceted", "Smooth"};
    description.Label = "Lighting";
    description.Box = {OutlineX, OutlineY, (Buttons - 1) * StepX + OutlineSize, OutlineSize};
    for (int mode = 0; mode < Buttons; ++mode)
        description.Items.push_back(
            {names[mode], {MiddleX(mode) - Radius, MiddleY - Radius, 2 * Radius, 2 * Radius}, mode == CurrentLighting});
}

constexpr GadgetKind Kind = {"custom", Describe, nullptr, nullptr};

} // namespace

void AddLightingButtons() {
    Kirvo_AddGadget(DrawLightingButtons, CheckLighting)->Kind = &Kind;
}

void DrawLightingButtons() {
    SetLighting();
    for (int mode = 0; mode < Buttons; ++mode)
        DrawButton(mode);
    DrawOutline(White);
}

int CheckLighting() {
    const int mode = ModeAtPointer();
    if (mode < 0)
        return 0;
    Window* const window = CurrentWindow;
    {
        const FrontBufferScope front;
        DrawOutline(BackgroundOf(window));
        CurrentLighting = mode;
        DrawOutline(White);
        DrawDimmed(mode);
    }
    WaitForLeftRelease();
    if (WindowIsOpen(window) && CurrentWindow == window) {
        const FrontBufferScope front;
        DrawButton(mode);
    }
    if (DirtyOnLightingChange)
        DirtyModelWindows();
    DirtyOtherLightThings();
    return 1;
}
