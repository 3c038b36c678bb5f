#include "shell/remembered_places.h"

int StructX, StructY, StructureEditorOpened;
int DimensionX, DimensionY, DimensionsOpened;
int ObjectBrowserX, ObjectBrowserY, ObjectBrowserH, ObjectBrowserOpened;
int TextureX, TextureY, TextureW, TextureH, TextureGizmoOpened;
int WorkAreaX, WorkAreaY, WorkAreaW, WorkAreaH, WorkAreaOpened;
int ManTexX, ManTexY, ManTexW, ManTexH, ManualTextureOpened;
int QTexX, QTexY, QTexW, QTexH, QstripTextureOpened;

int ObjectBrowserOpen, StructureOpen, TextureGizmoOpen;

int LodScale;
int TestVar = 6;
