#include "platform/snapshots.h"

#include "platform/compositor.h"
#include "platform/graphics_context.h"
#include "platform/input.h"
#include "platform/pointer_shapes.h"
#include "platform/surface.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>

namespace gl {

namespace {

Picture ReadFramebuffer(unsigned framebuffer, int width, int height) {
    Picture picture;
    picture.width = width;
    picture.height = height;
    picture.pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, picture.pixels.data());
    ForgetGraphicsState();
    for (std::uint32_t& pixel : picture.pixels)
        pixel |= 0xFF000000;
    return picture;
}

void DrawPointer(Picture& picture) {
    const PointerShape* shown = PointerIsKnown() ? ShownPointerShape() : nullptr;
    if (!shown)
        return;
    const PointerShape shape = Enlarged(*shown, std::max(1, static_cast<int>(std::lround(DrawingScale()))));
    // The hot spot lies on the first screen pixel of the drawing pixel that is pointed at.
    const int left = ToPixels(PointerX()) - shape.HotX, top = ToPixels(PointerY()) + shape.HotY;
    for (int row = 0; row < shape.Height; row++)
        for (int column = 0; column < shape.Width; column++) {
            const std::uint32_t pixel = shape.Pixels[static_cast<std::size_t>(row) * shape.Width + column];
            const int x = left + column, y = top - row;
            if (pixel != 0 && x >= 0 && x < picture.width && y >= 0 && y < picture.height)
                picture.at(x, y) = pixel;
        }
}

} // namespace

Picture ScreenPicture(bool withPointer) {
    const PixelBox screen = ScreenPixels();
    if (screen.empty())
        return {};
    ComposeScreen();
    Picture picture = ReadFramebuffer(ScreenFramebuffer(), screen.width, screen.height);
    if (withPointer)
        DrawPointer(picture);
    return picture;
}

Picture WindowPicture(int id) {
    const ScreenWindow* window = FindScreenWindow(id);
    if (!window)
        return {};
    FlushDrawing();
    const PixelBox content = ToPixelBox(ScreenPlace(*window));
    GLuint framebuffer = 0, colour = 0;
    glGenFramebuffers(1, &framebuffer);
    glGenRenderbuffers(1, &colour);
    glBindRenderbuffer(GL_RENDERBUFFER, colour);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, content.width, content.height);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colour);
    PaintWindowAlone(*window);
    Picture picture = ReadFramebuffer(framebuffer, content.width, content.height);
    glDeleteFramebuffers(1, &framebuffer);
    glDeleteRenderbuffers(1, &colour);
    ForgetGraphicsState();
    return picture;
}

bool WriteSnapshot(int window, const std::string& path, std::string& error) {
    const Picture picture = window == 0 ? ScreenPicture() : WindowPicture(window);
    if (picture.width == 0) {
        error = "there is nothing to take a picture of";
        return false;
    }
    return WritePng(picture, path, error);
}

} // namespace gl
