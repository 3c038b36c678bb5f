#pragma once

struct View;

// What tools draw over the model: each registers a drawer with its place in the order. Views know none of them by name.

/// How a view is set up for a drawer. Bands are drawn in this order, the drawers of a band by their Order.
enum class OverlayBand {
    /// With the model's matrices.
    Model,
    /// With matrices that lie slightly before the model.
    BeforeModel,
    /// After the view's label; the drawer sets its own matrices.
    Label,
};

/// Drawers are called with every view that is drawn, at every drawing; those with nothing to show return at once.
struct Overlay {
    OverlayBand Band;
    int Order;
    void (*Draw)(View* view);
};

/// Once at start-up for each drawer; registering one again does nothing.
void RegisterOverlay(const Overlay& overlay);
void DrawOverlays(OverlayBand band, View* view);

// Orders within OverlayBand::Model, in the sequence of drawing.
inline constexpr int NewSolidOrder = 10;
inline constexpr int NewSweepOrder = 20;
inline constexpr int PickedPointsOrder = 30;
inline constexpr int RotationAxisOrder = 40;
inline constexpr int QueryHighlightOrder = 50;
inline constexpr int TexturePointsOrder = 60;
