#pragma once

// How far the scene reaches: the boxes of its branches and the radius that its views are fitted to. Computed again when
// SceneChangedSize is set.

/// Flag: the radius is that of placed objects; 0 when the scene places none.
extern int LastSceneRadValid;

/// Of a sphere about the origin, metres, that holds every object placed in the scene with a tenth to spare. Without
/// one: the current object's, but 1000 at least. Also sets Min and Max of the branches.
double SceneRadius();

/// The lowest and highest corner of the whole scene as of the last SceneRadius, 3 doubles each; all 0 when it places no
/// object.
void GetSceneBox(const double*& min, const double*& max);
