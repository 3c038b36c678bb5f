#pragma once

struct Sweep;
struct Window;

// The gadgets that the windows of both kinds of sweeps have. A change of any marks the sweep as changed and calls
// Changed.

/// A window's; to live as long as it.
struct SweepOptions {
    Sweep* Swept;
    /// The window's global.
    Window** Handle;
    void (*Changed)();
    /// Flag of the profile's editor.
    int* Snap;
    /// Message number of the text beside the texture's second number, and the decimals of both.
    int StretchLabel;
    int Decimals;
};

/// "Grid snap" and the size of the profile's squares, in a row.
void AddSquareOptions(const SweepOptions& options, int x, int y);
/// The texture and how it lies: a row at y, the two numbers in rows below it.
void AddTextureOptions(const SweepOptions& options, int x, int y, int width);
/// A check box of the sweep's own.
void AddSweepCheck(const SweepOptions& options, int x, int y, int message, int* flag);

/// From one row to the next, pixels.
inline constexpr int SweepOptionRow = 34;
