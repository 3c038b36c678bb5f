// Taking in input, presenting, and letting time pass: what every call that reads events or sleeps comes down to.
#pragma once

namespace gl {

void ResetWaiting();

// Takes in what has happened on display and tablet, and lets the input window follow.
void TakeInput();
// The program asked for events or for the state of a device and the queue is empty. Programs that do so again and again
// without sleeping would wait forever where time is virtual: after a while this lets a tick pass.
void NoteEmptyHanded();
// Presents what was drawn, unless that was done a moment ago.
void PresentSoon();

enum class Pause {
    Courtesy, // of a polling loop: ends early when input arrives
    Whole,    // lasts its time
    Swap,     // the retrace that swapping buffers stands for, amid drawing
    Work      // amid work that goes on
};

// To be called at the end of swapbuffers on a double-buffered window: a second swap of the same window means that a
// retrace passed between the two, so that drag loops without a sleep go on where time is virtual.
void NoteSwap();

// Lets time pass, real or virtual, taking in input meanwhile, and gives a script its turn.
void LetTimePass(long long microseconds, Pause pause);

} // namespace gl
