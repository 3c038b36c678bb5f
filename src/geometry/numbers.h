#pragma once

// Numbers for display and snapping.

/// Units that lengths are shown in, one entry a unit: metres in one unit, and the text to print after the number.
inline constexpr double ScaleScales[] = {1000.0, 1.0, 0.01, 0.001};
inline constexpr const char* ScaleStrings[] = {"km", "m", "cm", "mm"};

/// The unit last chosen by ScaleNumber.
extern int ScaleIndex;

/// Rounds the value to the nearest multiple of the step, halves away from zero. A step of 0 leaves it alone.
void Snap(double* value, double step);

/// Rounds x to about n significant figures, halves away from zero; values below 1 keep one figure less.
double RoundToNSF(double x, int n);

/// The value with up to that many decimals, without trailing zeros: 2.50 is "2.5", 3.0 is "3". The text holds until the
/// next call.
const char* PrintNoDecimals(double value, int decimals);

/// Divides a length in metres by the unit that suits its size and returns the unit's text.
const char* ScaleNumber(double* length);
