#pragma once

// The program's own pictures, drawn with their lower left corner at (x, y) of the current window.

inline constexpr int LogoWidth = 355, LogoHeight = 84;
inline constexpr int EyeSize = 22;

void DrawLogo(int x, int y);

/// The eyes that show whether something is visible; dimmed where it cannot be, because what holds it is hidden.
void DrawOpenEye(int x, int y);
void DrawDimOpenEye(int x, int y);
void DrawClosedEye(int x, int y);
void DrawDimClosedEye(int x, int y);
