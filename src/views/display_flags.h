#pragma once

// How models are shown: flags, 0 or 1, set from menus and preferences and kept with the defaults or in the model file.

extern int HideScene;      // hide scene branches that are not Visible
extern int HideSubObjects; // hide sub-objects that the structure editor does not show

extern int Backface;         // polygons that face away are not drawn
extern int TextureOn;        // textures are shown
extern int SolidView;        // filled polygons rather than their outlines
extern int OutlinePolygons;  // outlines over filled polygons
extern int ShowVertices;     // all vertices are marked, not only the selected and loose ones
extern int SelectionsOnTop;  // selections show through what lies before them
extern int SelectionsSolid;  // selected polygons are filled in the colour of selections
extern int SingleWhenStill;  // views are single-buffered except while they move
extern int MoveWire;         // outlines alone while a view moves
extern int MoveTexture;      // textures also while a view moves
extern int WindowLabels;     // views are labelled
extern int FastUpdates;      // only the view in hand is drawn while something moves
extern int TextureAvailable; // the renderer has textures; set when the first window opens
