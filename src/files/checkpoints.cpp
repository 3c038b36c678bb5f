#include "files/checkpoints.h"

#include "base/directories.h"
#include "base/exit.h"
#include "base/file_names.h"
#include "files/checkpoint_files.h"
#include "files/file_commands.h"
#include "files/file_errors.h"
#include "files/foreign_changes.h"
#include "files/reading_progress.h"
#include "gooey/gadget.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/label.h"
#include "gooey/message_table.h"
#include "gooey/modal.h"
#include "gooey/pointer.h"
#include "gooey/program_windows.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "gooey/window_stack.h"
#include "platform/system.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "views/hooks.h"
#include "views/status_line.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

int MakeCheckpointFiles = 1;
int CheckpointTime = 15;

namespace {

constexpr int NoticeWidth = 200, NoticeHeight = 50;
constexpr long TicksPerMinute = 60 * 100;

long LastCheckpoint = 0; // in ticks of the clock
/// The checkpoint that was found at the start has not been read.
bool HoldsUnreadWork = false;

void OpenNotice() {
    WindowAroundMouse(NoticeWidth, NoticeHeight);
    OpenWindow("Checkpoint", 0, 0, nullptr, nullptr, nullptr, nullptr, 0, MainWindow);
    AddBackdrop();
    AddText(12, 18, "Autosave...", 1);
    RedrawCurrentWindow();
    gl::BreatheAtWork();
}

void KeepUnreadWork() {
    if (!HoldsUnreadWork)
        return;
    HoldsUnreadWork = false;
    const std::string name = PutCheckpointAside();
    if (!name.empty())
        std::fprintf(stderr, "Kirvo: The checkpoint that could not be read is kept as %s\n", name.c_str());
}

std::string ModelPath() {
    return std::string(FilePath) + "/" + FileName;
}

CheckpointOrigin Origin() {
    CheckpointOrigin origin{FilePath, FileName};
    if (KnownFile.Path == ModelPath())
        origin.Known = KnownFile.Identity;
    return origin;
}

/// Says once that checkpoints cannot be written, and again when they could meanwhile.
void NoteProblem(int problem) {
    static bool told = false;
    if (problem && !told)
        ShowStatusNote(std::string("No checkpoint could be written: ") + std::strerror(problem));
    told = problem != 0;
}

bool IsDue() {
    return MakeCheckpointFiles && MainWindow && !Quitting &&
           ClockTicks() > LastCheckpoint + CheckpointTime * TicksPerMinute && !SystemBusy();
}

/// A new model in place of the checkpoint. Its name must not be that of the file whose work could not be read: saving
/// would replace that.
void StartWithoutCheckpoint() {
    CopyFileName(FileName, msg(MsgUnnamed));
    WorkSaved = 1;
}

} // namespace

void ResetCheckpoint() {
    LastCheckpoint = ClockTicks();
}

void MakeCheckpoint() {
    if (!IsDue())
        return;
    if (TakeCheckpointFiles()) {
        const WindowScope scope(MainWindow);
        DisableWindow(MainWindow);
        OpenNotice();
        Window* notice = CurrentWindow;
        KeepUnreadWork();
        const int problem = WriteCheckpoint(Origin()) ? 0 : errno;
        CloseWindow(notice);
        EnableWindow(MainWindow);
        NoteProblem(problem);
    }
    ResetCheckpoint();
}

void SaveWorkInCheckpoint() {
    // What is being read is not whole; while that is a model to be merged, the main one is.
    if (ReadingGoesOn() ? !Mergeing : WorkSaved)
        return;
    if (!TakeCheckpointFiles()) {
        std::fputs("Kirvo: No checkpoint could be written: too many programs run\n", stderr);
        return;
    }
    KeepUnreadWork();
    PointToMerge(0);
    if (!WriteCheckpoint(Origin()))
        std::fprintf(stderr, "Kirvo: No checkpoint could be written: %s\n", std::strerror(errno));
}

int LoadCheckpoint() {
    ResetCheckpoint();
    if (!TakeCheckpointFiles() || !CheckpointExists())
        return 0;
    CheckpointOrigin origin;
    if (!ReadCheckpointOrigin(origin) || !CopyFileName(FilePath, origin.Path.c_str()) ||
        !CopyFileName(FileName, origin.Name.c_str())) {
        HoldsUnreadWork = true;
        return 0;
    }
    FileErrorOk = 1;
    const int read = LoadModelFile(CheckpointName().c_str());
    FileErrorOk = 0;
    if (read) {
        // Whoever has changed the file since the work began did so while nobody looked.
        if (origin.Known)
            KnownFile = {ModelPath(), *origin.Known};
        std::fputs("Kirvo: Checkpoint file loaded...\n", stderr);
        WorkSaved = 0;
    } else {
        HoldsUnreadWork = true;
        StartWithoutCheckpoint();
    }
    return 1;
}

void ForgetCheckpoint() {
    if (!HoldsUnreadWork)
        RemoveCheckpoint();
}

void DeleteCheckpoint() {
    KeepUnreadWork();
    RemoveCheckpoint();
    GiveBackCheckpointFiles();
}
