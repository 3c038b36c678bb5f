#include "platform/desktop_place.h"

#include "platform/display.h"

namespace gl {

std::optional<DesktopPlace> PreferredDesktopPlace;

void PreferDesktopPlace(const DesktopPlace& place) {
    PreferredDesktopPlace = place;
}

bool ScreenIsOnDesktop() {
    return CurrentDisplay() && !CurrentDisplay()->IsHeadless();
}

bool CurrentDesktopPlace(DesktopPlace& place) {
    return CurrentDisplay() && CurrentDisplay()->Place(place);
}

} // namespace gl
