#pragma once

struct Window;

// The windows of this folder, so that what they show can be marked to be drawn again; null while closed. Each is set by
// the module that opens it.

extern Window* ObjectBrowser;
extern Window* StructureEditor;
extern Window* SceneBuilder;
/// Of the switching distances.
extern Window* LodSetup;
