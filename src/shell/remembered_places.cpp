#include "shell/remembered_places.h"

int TextureX, TextureY, TextureW, TextureH, TextureGizmoOpened;
int ManTexX, ManTexY, ManTexW, ManTexH, ManualTextureOpened;
int QTexX, QTexY, QTexW, QTexH, QstripTextureOpened;

int TextureGizmoOpen;

int LodScale;
int TestVar = 6;
