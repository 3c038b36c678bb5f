// Shows what the graphics layer can do, in several windows. Left button: a rubber band over the whole screen. Middle
// button in the scene: turns it. Right button: dots straight into the shown picture. Escape or the last window's close
// box ends.
#include <cstdio>
#include <string>

#include "graphics_windows.h"
#include "platform/events.h"
#include "platform/system.h"
#include "platform/windows.h"

using namespace gl;

namespace {

// What a held button does until it is let go.
void Drag(int button) {
    const int startX = getvaluator(MOUSEX), startY = getvaluator(MOUSEY);
    int lastX = startX;
    while (getbutton(button)) {
        const int x = getvaluator(MOUSEX), y = getvaluator(MOUSEY);
        if (button == LEFTMOUSE)
            demo::DrawRubberBand(startX, startY, x, y);
        else if (button == MIDDLEMOUSE && x != lastX)
            demo::TurnScene((x - lastX) * 0.5);
        else if (button == RIGHTMOUSE && winget()) {
            int originX, originY;
            getorigin(&originX, &originY);
            demo::DrawDot(x - originX, y - originY);
        }
        lastX = x;
        sginap(2);
    }
    if (button == LEFTMOUSE)
        demo::DrawRubberBand(0, 0, 0, 0);
}

} // namespace

int main() {
    demo::OpenWindows();
    for (int device : {KEYBD, LEFTMOUSE, MIDDLEMOUSE, RIGHTMOUSE, WINSHUT, WINQUIT})
        qdevice(device);
    int open = 3;
    while (open > 0) {
        short value;
        switch (qread(&value)) {
        case REDRAW:
            demo::DrawWindow(value);
            break;
        case INPUTCHANGE:
            winset(value);
            break;
        case LEFTMOUSE:
            if (value)
                Drag(LEFTMOUSE);
            break;
        case MIDDLEMOUSE:
            if (value)
                Drag(MIDDLEMOUSE);
            break;
        case RIGHTMOUSE:
            if (value)
                Drag(RIGHTMOUSE);
            break;
        case WINSHUT:
            winclose(value);
            open--;
            break;
        case KEYBD:
            open = value == 27 ? 0 : open;
            break;
        case WINQUIT:
        case 0:
            open = 0;
            break;
        default:
            break;
        }
    }
    demo::Forget();
    EndDisplay();
    return 0;
}
