#pragma once

struct Window;

// Windows that parts of the program far from each other have to know of; each null while there is none.

/// The main window: the owner of messages, disabled while one waits. Set by whoever opens it.
extern Window* MainWindow;

/// The question about unsaved work, above which no message rises. Set by whoever asks it.
extern Window* QuitWindow;

/// The open message: a box, a question or a notifier.
extern Window* MessageWindow;
