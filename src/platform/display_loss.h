// The connection to the desktop may break: its server ends, or is killed.
#pragma once

struct SDL_Window;

namespace gl {

// Called once when the desktop has gone, from within any call that takes in input, presents or lets time pass. It must
// call none of them; when it returns the program ends with status 1. Null: nothing is done.
extern void (*DisplayLost)();

// Has the loss of an X server noticed, once the desktop's driver is there.
void WatchForDisplayLoss();

// The desktop says that the program should end: does not return when it says so because it has gone.
void EndIfDisplayIsLost(SDL_Window* window);

} // namespace gl
