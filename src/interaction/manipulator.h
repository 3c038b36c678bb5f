#pragma once

#include "store/view_record.h"

// The two extra buttons of a drag with the middle button: which are held, and their chord.

struct Manipulator {
    /// Both were down together, and one still is.
    int Active;
    int LeftDown, RightDown;
    /// The second of the two went down.
    void (*OnBoth)(View* view);
    /// The chord, or the single button, was let go.
    void (*OnNone)(View* view);
    /// One went down alone.
    void (*OnSingle)(View* view);
};

/// Clears the three flags and stores the functions.
void SetManipulator(Manipulator& manipulator, void (*onBoth)(View* view), void (*onNone)(View* view),
                    void (*onSingle)(View* view));

/// Every event of the drag; other devices than the two buttons are ignored.
void UpdateManipulator(View* view, int device, short value, Manipulator& manipulator);
