#include "platform/compositor.h"

#include "platform/damage.h"
#include "platform/frames.h"
#include "platform/graphics_context.h"

#include <epoxy/gl.h>

#include <array>

namespace gl {

namespace {

struct CompositorState {
    GLuint Framebuffer = 0, Colour = 0;
    PixelBox Screen{};
    GLuint Program = 0, VertexArray = 0, Palette = 0, Query = 0;
    int ActiveId = 0;
    PixelBox OverlayBounds{};
    bool OverlayTouched = false; // drawn to since it was looked through
};

CompositorState Compositor;

// The overlay over a scissor box: see OverlaySurface for the texture's channels. Colours are premultiplied, so that
// pixels between an index and nothing do not darken.
const char* const OverlayVertexSource = "#version 330 core\n"
                                        "void main() {\n"
                                        "    vec2 corner = vec2(gl_VertexID & 1, gl_VertexID >> 1);\n"
                                        "    gl_Position = vec4(corner * 4.0 - 1.0, 0.0, 1.0);\n"
                                        "}\n";
const char* const OverlayFragmentSource = "#version 330 core\n"
                                          "uniform sampler2D Indices;\n"
                                          "uniform sampler2D Palette;\n"
                                          "out vec4 Colour;\n"
                                          "vec4 Look(float index) {\n"
                                          "    return texelFetch(Palette, ivec2(int(index * 255.0 + 0.5), 0), 0);\n"
                                          "}\n"
                                          "void main() {\n"
                                          "    vec4 pixel = texelFetch(Indices, ivec2(gl_FragCoord.xy), 0);\n"
                                          "    Colour = mix(Look(pixel.g), Look(pixel.r), pixel.b);\n"
                                          "    if (Colour.a == 0.0)\n"
                                          "        discard;\n"
                                          "}\n";

GLuint CompiledShader(GLenum kind, const char* source) {
    const GLuint shader = glCreateShader(kind);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    return shader;
}

bool MakeOverlayProgram() {
    Compositor.Program = glCreateProgram();
    for (const GLuint shader : {CompiledShader(GL_VERTEX_SHADER, OverlayVertexSource),
                                CompiledShader(GL_FRAGMENT_SHADER, OverlayFragmentSource)}) {
        glAttachShader(Compositor.Program, shader);
        glDeleteShader(shader);
    }
    glLinkProgram(Compositor.Program);
    GLint linked = 0;
    glGetProgramiv(Compositor.Program, GL_LINK_STATUS, &linked);
    if (!linked)
        return false;
    glUseProgram(Compositor.Program);
    glUniform1i(glGetUniformLocation(Compositor.Program, "Indices"), 0);
    glUniform1i(glGetUniformLocation(Compositor.Program, "Palette"), 1);
    glGenVertexArrays(1, &Compositor.VertexArray);
    glGenTextures(1, &Compositor.Palette);
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, Compositor.Palette);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 256, 1, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glActiveTexture(GL_TEXTURE0);
    glGenQueries(1, &Compositor.Query);
    return true;
}

// ---- What the drawing calls report ----

void NoteSurfaceDamage(Surface& surface, const PixelBox& box) {
    if (&surface == Overlay()) {
        Compositor.OverlayBounds = UnionOf(Compositor.OverlayBounds, box);
        Compositor.OverlayTouched = true;
        ScreenDamage.Add(box);
    } else if (const auto* window = static_cast<const ScreenWindow*>(surface.Owner)) {
        const PixelBox content = ToPixelBox(ScreenPlace(*window));
        ScreenDamage.Add(IntersectionOf({content.x + box.x, content.y + box.y, box.width, box.height},
                                        ToPixelBox(VisiblePlace(*window))));
    }
}

// ---- Painting ----

bool Inside(const PixelBox& inner, const PixelBox& outer) {
    const PixelBox common = IntersectionOf(inner, outer);
    return common.width == inner.width && common.height == inner.height;
}

void Fill(const PixelBox& box, std::uint32_t colour) {
    if (box.empty())
        return;
    glEnable(GL_SCISSOR_TEST);
    glScissor(box.x, box.y, box.width, box.height);
    glClearColor(static_cast<float>(colour & 0xFF) / 255.0F, static_cast<float>(colour >> 8 & 0xFF) / 255.0F,
                 static_cast<float>(colour >> 16 & 0xFF) / 255.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
    glDisable(GL_SCISSOR_TEST);
}

// Copies the part of a surface's shown picture that lies in `box`; the surface's lower left corner lies at x, y.
void Blit(const Surface& surface, int x, int y, const PixelBox& box) {
    const PixelBox part = IntersectionOf(box, {x, y, surface.pixelWidth(), surface.pixelHeight()});
    if (part.empty())
        return;
    glBindFramebuffer(GL_READ_FRAMEBUFFER, surface.shownFramebuffer());
    glBlitFramebuffer(part.x - x, part.y - y, part.x - x + part.width, part.y - y + part.height, part.x, part.y,
                      part.x + part.width, part.y + part.height, GL_COLOR_BUFFER_BIT, GL_NEAREST);
}

// A window's content within `box`, which its parents do not clip; the target's origin lies at shiftX, shiftY of the
// screen.
void PaintContent(const ScreenWindow& window, const PixelBox& box, int shiftX, int shiftY) {
    const PixelBox content = ToPixelBox(ScreenPlace(window));
    const PixelBox part = IntersectionOf(box, content);
    if (part.empty())
        return;
    bool covered = false;
    for (const ScreenWindow* child : window.Children)
        covered = covered || Inside(part, ToPixelBox(ScreenPlace(*child)));
    if (!covered)
        Blit(*window.Content, content.x - shiftX, content.y - shiftY,
             {part.x - shiftX, part.y - shiftY, part.width, part.height});
    for (const ScreenWindow* child : window.Children)
        PaintContent(*child, part, shiftX, shiftY);
}

void PaintFrame(const ScreenWindow& window, const PixelBox& box) {
    for (const BorderLine& line : BorderLines(window.Place))
        Fill(IntersectionOf(ToPixelBox(line.Box), box), line.Colour);
    const PixelBox title = ToPixelBox(TitleRectangle(window.Place));
    if (window.TitleStrip)
        Blit(*window.TitleStrip, title.x, title.y, IntersectionOf(title, box));
}

void PaintOverlay(const PixelBox& box) {
    const PixelBox part = IntersectionOf(box, Compositor.OverlayBounds);
    if (part.empty() || !Overlay())
        return;
    std::array<std::uint32_t, 256> colours{};
    for (std::size_t i = 1; i < colours.size(); i++)
        colours[i] = 0xFF000000 | OverlayColour(static_cast<int>(i));
    glActiveTexture(GL_TEXTURE1);
    glBindTexture(GL_TEXTURE_2D, Compositor.Palette);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 256, 1, GL_RGBA, GL_UNSIGNED_BYTE, colours.data());
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, Overlay()->shownTexture());
    glBindSampler(0, 0);
    glBindSampler(1, 0);
    glUseProgram(Compositor.Program);
    glBindVertexArray(Compositor.VertexArray);
    glEnable(GL_BLEND);
    glBlendEquation(GL_FUNC_ADD);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glViewport(0, 0, Compositor.Screen.width, Compositor.Screen.height);
    glEnable(GL_SCISSOR_TEST);
    glScissor(part.x, part.y, part.width, part.height);
    glDrawArrays(GL_TRIANGLES, 0, 3);
    glDisable(GL_SCISSOR_TEST);
    glDisable(GL_BLEND);
}

// What the layer's drawing may have left on that clears, blits and the overlay's triangle must not meet.
void PrepareState() {
    glDisable(GL_SCISSOR_TEST);
    glDisable(GL_DEPTH_TEST);
    glDisable(GL_CULL_FACE);
    glDisable(GL_BLEND);
    glDisable(GL_RASTERIZER_DISCARD);
    for (int plane = 0; plane < 6; plane++)
        glDisable(GL_CLIP_DISTANCE0 + static_cast<GLenum>(plane));
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

void ComposeBox(const PixelBox& box) {
    const std::vector<ScreenWindow*>& windows = StackingOrder();
    // Nothing below a window that covers the whole box can be seen.
    std::size_t lowest = windows.size();
    while (lowest > 0 && !Inside(box, ToPixelBox(OuterRectangle(windows[lowest - 1]->Place))))
        lowest--;
    if (lowest == 0)
        Fill(box, ScreenColour);
    for (std::size_t i = lowest == 0 ? 0 : lowest - 1; i < windows.size(); i++) {
        const ScreenWindow& window = *windows[i];
        const PixelBox part = IntersectionOf(box, ToPixelBox(OuterRectangle(window.Place)));
        if (part.empty())
            continue;
        if (!Inside(part, ToPixelBox(window.Place)))
            PaintFrame(window, part);
        PaintContent(window, part, 0, 0);
    }
    PaintOverlay(box);
}

} // namespace

bool OpenCompositor(int width, int height, std::string& error) {
    if (!Compositor.Program && !MakeOverlayProgram()) {
        error = "the graphics driver does not accept the screen's overlay program";
        return false;
    }
    SurfaceDamaged = NoteSurfaceDamage;
    if (!Compositor.Framebuffer) {
        glGenFramebuffers(1, &Compositor.Framebuffer);
        glGenRenderbuffers(1, &Compositor.Colour);
    }
    glBindRenderbuffer(GL_RENDERBUFFER, Compositor.Colour);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, width, height);
    glBindFramebuffer(GL_FRAMEBUFFER, Compositor.Framebuffer);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, Compositor.Colour);
    const bool complete = glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
    ForgetGraphicsState();
    if (!complete) {
        error = "the graphics driver cannot hold a screen of " + std::to_string(width) + " x " + std::to_string(height);
        return false;
    }
    Compositor.Screen = {0, 0, width, height};
    Compositor.OverlayBounds = {};
    ScreenDamage.Add(Compositor.Screen);
    return true;
}

void CloseCompositor() {
    SurfaceDamaged = nullptr;
    glDeleteFramebuffers(1, &Compositor.Framebuffer);
    glDeleteRenderbuffers(1, &Compositor.Colour);
    glDeleteProgram(Compositor.Program);
    glDeleteVertexArrays(1, &Compositor.VertexArray);
    glDeleteTextures(1, &Compositor.Palette);
    glDeleteQueries(1, &Compositor.Query);
    Compositor = {};
    ScreenDamage.Take();
}

bool ScreenIsDamaged() {
    FlushDrawing();
    return !ScreenDamage.Empty();
}

void ComposeScreen() {
    if (!ScreenIsDamaged())
        return;
    for (ScreenWindow* window : StackingOrder())
        UpdateTitleStrip(*window, window->Id == Compositor.ActiveId);
    FlushDrawing();
    PrepareState();
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, Compositor.Framebuffer);
    for (const PixelBox& box : ScreenDamage.Take())
        if (const PixelBox part = IntersectionOf(box, Compositor.Screen); !part.empty())
            ComposeBox(part);
    ForgetGraphicsState();
}

unsigned ScreenFramebuffer() {
    return Compositor.Framebuffer;
}

PixelBox ScreenPixels() {
    return Compositor.Screen;
}

void ShowActiveWindow(int id) {
    if (id == Compositor.ActiveId)
        return;
    for (int changed : {Compositor.ActiveId, id})
        if (ScreenWindow* window = FindScreenWindow(changed)) {
            window->TitleStale = true;
            ScreenDamage.Add(ToPixelBox(TitleRectangle(window->Place)));
        }
    Compositor.ActiveId = id;
}

int ActiveWindow() {
    return Compositor.ActiveId;
}

PixelBox OverlayBounds() {
    return Compositor.OverlayBounds;
}

void NoteOverlayColours() {
    FlushDrawing();
    ScreenDamage.Add(Compositor.OverlayBounds);
}

void TidyOverlay() {
    if (!Compositor.OverlayTouched || !Overlay())
        return;
    Compositor.OverlayTouched = false;
    FlushDrawing();
    PrepareState();
    // Counts the overlay's pixels that are not transparent, without writing any.
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, Compositor.Framebuffer);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    glBeginQuery(GL_ANY_SAMPLES_PASSED, Compositor.Query);
    PaintOverlay(Compositor.Screen);
    glEndQuery(GL_ANY_SAMPLES_PASSED);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    GLuint seen = 1;
    glGetQueryObjectuiv(Compositor.Query, GL_QUERY_RESULT, &seen);
    if (!seen)
        Compositor.OverlayBounds = {};
    ForgetGraphicsState();
}

void PaintWindowAlone(const ScreenWindow& window) {
    PrepareState();
    const PixelBox content = ToPixelBox(ScreenPlace(window));
    PaintContent(window, content, content.x, content.y);
}

} // namespace gl
