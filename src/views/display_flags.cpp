#include "views/display_flags.h"

int HideScene;
int HideSubObjects;

int Backface;
int TextureOn = 1;
int SolidView = 1;
int OutlinePolygons;
int ShowVertices;
int SelectionsOnTop;
int SelectionsSolid;
int SingleWhenStill;
int MoveWire;
int MoveTexture = 1;
int WindowLabels = 1;
int FastUpdates = 1;
int TextureAvailable = 1;
