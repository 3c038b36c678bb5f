#include "gooey/program_windows.h"

Window* MainWindow = nullptr;
Window* QuitWindow = nullptr;
Window* MessageWindow = nullptr;
