// Recordings: a stretch of drawing kept in graphics memory under a number and drawn again by one call, under the
// matrices and the state of that moment. What is drawn, and every change of state and matrix between makeobj and
// closeobj, is recorded instead of done. Definitions (lmdef, texdef2d, defpattern, defrasterfont, ...), inquiries and
// clearing by czclear are not recorded: they act at once, and recordings use the definitions of the moment when they
// are drawn. The colour, normal and texture coordinates of a vertex given before the recording sets its own are those
// of makeobj.
#pragma once

#include <cstdint>

namespace gl {

// A number that no recording uses, from 1 up.
int genobj();
// Begins recording; a former recording of that number is replaced when closeobj is called. While one is open, another
// cannot be begun (reported on standard error, ignored).
void makeobj(int number);
// Ends it, merges what can be merged and moves it to graphics memory.
void closeobj();
// Draws a recording; a number that has none draws nothing. Inside a recording the call itself is recorded; a recording
// that calls itself, however far down, is drawn once at each level up to 16.
void callobj(int number);
// The same in one packed colour: everything that is not lit takes it instead of its own.
void callobj(int number, uint32_t colour);
bool isobj(int number);
void delobj(int number);

// Another number each time the layer ends, which loses all recordings.
unsigned RecordingGeneration();
// How much graphics memory all recordings take, in bytes, and how many drawing calls one recording makes.
long RecordingMemory();
int RecordingRuns(int number);

} // namespace gl
