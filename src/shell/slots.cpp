#include "shell/slots.h"

#include <cstdio>

#include "files/file_information.h"
#include "files/file_slots.h"
#include "store/scene.h"
#include "store/storage.h"
#include "views/scene_views.h"

namespace {

// What the user is told where there is no window to tell it in.
void TellOnErrorStream(const char* text) {
    std::fprintf(stderr, "Kirvo: %s\n", text);
}

} // namespace

void FillSlots() {
    TheSceneSlots.DevalidateSceneViews = DevalidateSceneViews;
    TheStorageSlots.ResetFileInformation = ResetFileInformation;
    TheFileSlots.TellUser = TellOnErrorStream;
}
