// The desktop window that shows the screen: where it opens and where it stands, in the desktop's own units.
#pragma once

namespace gl {

struct DesktopPlace {
    int X, Y, Width, Height; // of the content; as it was before when the window fills the desktop
    bool Maximised;
};

// Where the next StartDisplay opens the window; as much of it as the desktop has room for. Without a preference it
// opens as large as is comfortable, in the middle. Nothing on the headless display.
void PreferDesktopPlace(const DesktopPlace& place);
// Whether a desktop window shows the screen.
bool ScreenIsOnDesktop();
// False without a desktop window.
bool CurrentDesktopPlace(DesktopPlace& place);

} // namespace gl
