#include "shell/desktop_place.h"

#include "platform/desktop_place.h"

int DesktopX, DesktopY, DesktopW, DesktopH;
int DesktopPlaceKnown, DesktopMaximised;

void RestoreDesktopPlace() {
    if (DesktopPlaceKnown)
        gl::PreferDesktopPlace({DesktopX, DesktopY, DesktopW, DesktopH, DesktopMaximised != 0});
}

void RememberDesktopPlace() {
    gl::DesktopPlace place;
    if (!gl::CurrentDesktopPlace(place))
        return;
    DesktopX = place.X;
    DesktopY = place.Y;
    DesktopW = place.Width;
    DesktopH = place.Height;
    DesktopMaximised = place.Maximised;
    DesktopPlaceKnown = 1;
}
