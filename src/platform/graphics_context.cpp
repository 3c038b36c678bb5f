#include "platform/graphics_context.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <epoxy/egl.h>
#include <epoxy/gl.h>

#include "platform/batch.h"
#include "platform/definitions.h"
#include "platform/glyphs.h"
#include "platform/recorder.h"
#include "platform/shaders.h"

namespace gl {

namespace {

bool Ready = false;
bool Software = false;
int Samples = 1;

EGLDisplay SurfacelessDisplay() {
    if (epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_MESA_platform_surfaceless"))
        return eglGetPlatformDisplayEXT(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    // Drivers without that platform offer their devices instead.
    if (epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_platform_device") &&
        epoxy_has_egl_extension(EGL_NO_DISPLAY, "EGL_EXT_device_enumeration")) {
        EGLDeviceEXT device;
        EGLint count = 0;
        if (eglQueryDevicesEXT(1, &device, &count) && count > 0)
            return eglGetPlatformDisplayEXT(EGL_PLATFORM_DEVICE_EXT, device, nullptr);
    }
    return EGL_NO_DISPLAY;
}

// Display and context of a driver that draws without a screen, made current; false when the display cannot.
bool MakeContext(EGLDisplay display) {
    EGLint major, minor;
    if (display == EGL_NO_DISPLAY || !eglInitialize(display, &major, &minor) || !eglBindAPI(EGL_OPENGL_API))
        return false;
    const EGLint wanted[] = {
        EGL_CONTEXT_MAJOR_VERSION,           3,       EGL_CONTEXT_MINOR_VERSION, 3, EGL_CONTEXT_OPENGL_PROFILE_MASK,
        EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT, EGL_NONE};
    EGLConfig config = EGL_NO_CONFIG_KHR;
    if (!epoxy_has_egl_extension(display, "EGL_KHR_no_config_context")) {
        const EGLint any[] = {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_NONE};
        EGLint count = 0;
        if (!eglChooseConfig(display, any, &config, 1, &count) || count == 0)
            return false;
    }
    const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, wanted);
    return context != EGL_NO_CONTEXT && eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context);
}

int SamplesToGrant() {
    int most = 1;
    glGetIntegerv(GL_MAX_SAMPLES, &most);
    const char* setting = std::getenv("KIRVO_MULTISAMPLE");
    if (setting && *setting) {
        const int wanted = std::atoi(setting);
        return wanted > 1 ? std::min(wanted, most) : 1;
    }
    return Software ? 1 : std::min(most, 8);
}

} // namespace

bool OpenHeadlessContext(std::string& error) {
    static bool made = false;
    if (!made)
        made = MakeContext(SurfacelessDisplay());
    if (!made) {
        error = "no graphics driver offers drawing without a display (EGL on the surfaceless platform, OpenGL 3.3)";
        return false;
    }
    return InitialiseGraphics(error);
}

bool InitialiseGraphics(std::string& error) {
    if (Ready)
        return true;
    const int version = epoxy_gl_version();
    if (version < (epoxy_is_desktop_gl() ? 33 : 30)) {
        error = "the graphics driver offers OpenGL " + std::to_string(version / 10) + '.' +
                std::to_string(version % 10) + "; 3.3 is needed";
        return false;
    }
    const char* renderer = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    const char* const onProcessor[] = {"llvmpipe", "softpipe", "swrast", "SwiftShader", "Software Rasterizer"};
    Software = renderer && std::any_of(std::begin(onProcessor), std::end(onProcessor),
                                       [renderer](const char* name) { return std::strstr(renderer, name) != nullptr; });
    Samples = SamplesToGrant();
    OpenBatches();
    Ready = true;
    return true;
}

bool GraphicsReady() {
    return Ready;
}

void CloseGraphics() {
    if (!Ready)
        return;
    MakeSurfaceCurrent(nullptr);
    SetScreenSize(0, 0);
    DeleteAllRecordings();
    DeleteAllTextures();
    ForgetLightingDefinitions();
    ForgetPatterns();
    DeleteGlyphs();
    DeletePrograms();
    CloseBatches();
    Ready = false;
}

bool SoftwareRenderer() {
    return Software;
}

int GrantedSamples() {
    return Samples;
}

void ForgetGraphicsState() {
    if (Ready)
        ForgetBatchState();
}

} // namespace gl
