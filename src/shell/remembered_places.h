#pragma once

// Settings that are kept with the user's defaults for windows and tools that this program does not have yet, so that
// none is lost when the defaults file is written anew. Whoever builds one of them takes its variables along.

/// Places, screen pixels, sizes where the user can change them, and flags: a place is known.

/// Flag: the structure editor draws distances to scale.
extern int LodScale;
/// A number for trying things out.
extern int TestVar;
