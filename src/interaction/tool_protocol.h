#pragma once

#include "views/hooks.h"

#include <cstdint>

struct MenuEntry;

// A running tool: what it takes over is set up and given back here, in one place for all tools.

/// What the "Cancel" button of most tool bars stands for; no key gives this code.
inline constexpr int CancelKey = 149;

/// All that a tool declares: a constant table. Null or empty fields leave their slot as it is without a tool.
struct Tool {
    ClickHook Left = nullptr;
    ConsumingClickHook Middle = nullptr;
    ClickHook Right = nullptr;
    /// Shown by the right button, in place of Right. The choice of an entry that is the tool's own (its number is below
    /// FirstSharedItem) counts as its shortcut typed; what the entry shares with other menus acts as it does there.
    const MenuEntry* Menu = nullptr;
    /// A key, lower case; non-zero when the tool used it. What it leaves changes views and display as ever. Done, the
    /// bar's Cancel and "?" never come here.
    int (*Key)(View* view, int character) = nullptr;
    /// Message numbers, ended by 0; may be exchanged meanwhile with SetToolStatus.
    const std::int16_t* Status = nullptr;

    /// Which buttons the tool bar has.
    enum class Bar { None, DoneAndCancel, Cancel, Done } Buttons = Bar::None;
    /// Adds the tool's own gadgets to its bar.
    void (*BuildBar)() = nullptr;
    /// The codes that the buttons "Done" and "Cancel" stand for, wherever they come from.
    int DoneCode = ' ', CancelCode = CancelKey;
    /// Opened by "Help" and "?".
    const char* ManualPage = nullptr;

    /// Carries out what was prepared; runs before the tool ends with Done.
    void (*Done)() = nullptr;
    /// 1 while there is something that Done would carry out or keep: the program does not end without a question. Null:
    /// while there are temporary vertices.
    int (*HoldsWork)() = nullptr;
    /// Gives up what the tool keeps for itself; runs whenever it ends, before everything else is given back.
    void (*Leave)() = nullptr;

    /// The windows that must not change the model meanwhile stay usable.
    bool KeepSideWindows = false;
    /// The small viewports take no input meanwhile.
    bool FreezeSmallViewports = false;
};

/// Starts a tool: hooks, status, tool bar, side windows; the model views are drawn again. `tool` stays its owner's. A
/// tool that still runs is cancelled first.
void BeginTool(const Tool& tool);
/// 1 while the tool runs.
int ToolRuns(const Tool& tool);

/// Exchanges the status of the running tool and shows it.
void SetToolStatus(const std::int16_t* status);

/// The undo snapshot of the tool: call it before each change of the current object; the first call takes it.
void BeforeToolChange();
/// 1 when the running tool has changed the object.
int ToolHasChanged();

/// 1 while a tool runs that holds work which is not in the model yet.
int ToolHoldsWork();
/// Ends it with Done.
void FinishTool();

/// Types a key into the running tool, as its buttons and menu do.
void SendToolKey(View* view, int character);

/// Ends the tool and takes back all that it changed.
void CancelTool();
/// Ends it: gives back everything that BeginTool took, whatever the tool changed of it meanwhile. The changes stay.
void ClearControl();
/// Gives back what a tool of the grid took.
void ClearGridControl();

/// Disable the side windows that must not change the model while a tool runs (ToolWindow::DisabledByTools), and enable
/// them again.
void DisableBadStuff();
void EnableBadStuff();
extern int BadStuffDisabled;

/// Flags: displays of a running tool that follow the palette; cleared by ClearControl.
extern int DirtyOnTextureChange, DirtyOnLightingChange, DirtyOnMaterialChange;
