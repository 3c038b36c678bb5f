// What size a window's content may have: the rules that a program sets and what becomes of a wished size under them.
#pragma once

namespace gl {

struct ContentSize {
    int Width, Height;
};

struct SizeRules {
    bool HasPlace = false;
    int PlaceX = 0, PlaceY = 0, PlaceWidth = 0, PlaceHeight = 0;
    int PreferredWidth = 0, PreferredHeight = 0; // 0: none
    int MinimumWidth = 0, MinimumHeight = 0;
    int MaximumWidth = 0, MaximumHeight = 0; // 0: none
    int AspectX = 0, AspectY = 0;            // 0: free
    int StepX = 0, StepY = 0;                // 0: free
    int FudgeX = 0, FudgeY = 0;              // not counted by aspect and steps
};

// No window is smaller: its frame must stay usable.
constexpr int SmallestWidth = 48, SmallestHeight = 16;
// Nor larger: graphics memory.
constexpr int LargestSize = 16384;

// Which side decides when the aspect is fixed: the one that the user pulls; of two, the one that makes the window
// larger; or the one that keeps it within the wish.
enum class Leading { Width, Height, Larger, Smaller };

// The allowed size next to a wish. Minimum and maximum win over aspect and steps where they contradict.
ContentSize AllowedSize(const SizeRules& rules, ContentSize wish, Leading leading);
// Only minimum and maximum.
ContentSize WithinLimits(const SizeRules& rules, ContentSize wish);
// The size of a window that opens under these rules on a screen of that size (of its content).
ContentSize OpeningSize(const SizeRules& rules, ContentSize screen);

} // namespace gl
