#pragma once

// What the tablet's window says. All writes into the current window, from where the text before ended.

void DrawChooseText();
/// Grows with the steps that have been taken.
void DrawAlignText(int step);
/// With how many vertices have been entered, and what comes next.
void DrawEnterText(int entered, const char* next);
/// For the points that have been reached, `entered` of which are complete.
void DrawEnterNText(int entered);

/// The gadgets below the texts reach up to here.
inline constexpr int TabletGadgetsHeight = 52;
