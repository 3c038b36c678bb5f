#include "platform/display_loss.h"

#include <SDL.h>
#include <SDL_syswm.h>

#include <cstdio>
#include <dlfcn.h>
#include <unistd.h>

namespace gl {

void (*DisplayLost)() = nullptr;

namespace {

[[noreturn]] void EndWithoutDisplay() {
    static bool ending = false;
    if (!ending) {
        ending = true;
        std::fputs("Kirvo: The display has gone\n", stderr);
        if (DisplayLost)
            DisplayLost();
    }
    std::fflush(nullptr);
    // What is registered for the exit would talk to the display.
    _exit(1);
}

int XServerIsGone(::Display*) {
    EndWithoutDisplay();
}

// A function of a library that the desktop's driver has loaded; null when it has not.
template <class Function>
Function* LoadedFunction(const char* library, const char* name) {
    void* const handle = dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
    return handle ? reinterpret_cast<Function*>(dlsym(handle, name)) : nullptr;
}

} // namespace

void WatchForDisplayLoss() {
    if (auto* set = LoadedFunction<decltype(XSetIOErrorHandler)>("libX11.so.6", "XSetIOErrorHandler"))
        set(XServerIsGone);
}

void EndIfDisplayIsLost(SDL_Window* window) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!SDL_GetWindowWMInfo(window, &info) || info.subsystem != SDL_SYSWM_WAYLAND)
        return;
    auto* error = LoadedFunction<int(struct wl_display*)>("libwayland-client.so.0", "wl_display_get_error");
    if (error && error(info.info.wl.display) != 0)
        EndWithoutDisplay();
}

} // namespace gl
