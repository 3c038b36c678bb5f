#pragma once

/// Opens the window that shows the program's logo and version, the main window being disabled meanwhile; raises it when
/// it is open.
void ShowProgramInfo();

/// Keeps that window above the others. For the main loop, after every pass.
void PopInfoWindow();
