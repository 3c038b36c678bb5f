#include "views/overlays.h"

#include <algorithm>
#include <tuple>
#include <vector>

namespace {

// Sorted by band and order; drawers of the same place stay in the sequence of their registration.
std::vector<Overlay>& Registered() {
    static std::vector<Overlay> overlays;
    return overlays;
}

bool ComesBefore(const Overlay& a, const Overlay& b) {
    return std::tie(a.Band, a.Order) < std::tie(b.Band, b.Order);
}

} // namespace

void RegisterOverlay(const Overlay& overlay) {
    auto& overlays = Registered();
    if (std::any_of(overlays.begin(), overlays.end(), [&](const Overlay& other) { return other.Draw == overlay.Draw; }))
        return;
    overlays.insert(std::upper_bound(overlays.begin(), overlays.end(), overlay, ComesBefore), overlay);
}

void DrawOverlays(OverlayBand band, View* view) {
    for (const Overlay& overlay : Registered())
        if (overlay.Band == band)
            overlay.Draw(view);
}
