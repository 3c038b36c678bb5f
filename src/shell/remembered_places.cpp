#include "shell/remembered_places.h"

int DimensionX, DimensionY, DimensionsOpened;
int TextureX, TextureY, TextureW, TextureH, TextureGizmoOpened;
int WorkAreaX, WorkAreaY, WorkAreaW, WorkAreaH, WorkAreaOpened;
int ManTexX, ManTexY, ManTexW, ManTexH, ManualTextureOpened;
int QTexX, QTexY, QTexW, QTexH, QstripTextureOpened;

int TextureGizmoOpen;

int LodScale;
int TestVar = 6;
