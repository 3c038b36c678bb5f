#include "shell/remembered_places.h"

int SceneBuilderX, SceneBuilderY, SceneBuilderW, SceneBuilderH, SceneBuilderOpened;
int MatpalX, MatpalY, MatpalW, MatpalH, MaterialPaletteOpened;
int MateditX, MateditY, MaterialEditorOpened;
int StructX, StructY, StructureEditorOpened;
int GridX, GridY, GridGizmoOpened;
int OffsetX, OffsetY, OffsetGizmoOpened;
int RulerX, RulerY, RulerGizmoOpened;
int TabletX, TabletY, TabletOpened;
int DimensionX, DimensionY, DimensionsOpened;
int ObjectBrowserX, ObjectBrowserY, ObjectBrowserH, ObjectBrowserOpened;
int TextureX, TextureY, TextureW, TextureH, TextureGizmoOpened;
int AmalgamateX, AmalgamateY, AmalgamateOpened;
int MergeX, MergeY, MergeW, MergeH, MergeOpened;
int WorkAreaX, WorkAreaY, WorkAreaW, WorkAreaH, WorkAreaOpened;
int ManTexX, ManTexY, ManTexW, ManTexH, ManualTextureOpened;
int QTexX, QTexY, QTexW, QTexH, QstripTextureOpened;

int SceneBuilderOpen, GridOpen, PaletteOpen, ObjectBrowserOpen, StructureOpen, TextureGizmoOpen;

int RulerSize;
int SoundEffects = 1;
int LodScale;
int MatEditGang;
int SpectrumY = -1, MixerX, MixerY;
int TestVar = 6;

int AlignAX1, AlignAY1, AlignAX2 = 100, AlignAY2;
int AlignBX1, AlignBY1, AlignBX2 = 100, AlignBY2;
int AlignCX1, AlignCY1, AlignCX2, AlignCY2;
int TabletRotation;
int EnterMethodA = 1, EnterMethodB;
