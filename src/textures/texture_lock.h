#pragma once

#include "store/records.h"

#include <span>

// Textures that stay where they are while vertices of their polygons move: the corners then get the coordinates of the
// places that they come to, by the map from the polygon's plane to the texture as it was before. That is how far the
// texture goes on in its plane; across the plane it does not change. Polygons all of whose corners move take their
// texture along, as those do whose coordinates follow no such map.

/// Flag, an option: the functions below do something.
extern int KeepTexturesInPlace;

/// Before the vertices (through NextInGroup) of the current object are moved. Nothing may be deleted until the end.
void LockTextures(Vertex* moving);
/// The vertices have new places.
void FollowLockedTextures();
/// Exchanges the coordinates with those before the move, for undo snapshots.
void SwapLockedTextures();
void UnlockTextures();

/// All of it for a move that is done at once: move() gives the vertices their new places. Uses their NextInGroup.
template <class Move>
void MoveKeepingTextures(std::span<Vertex* const> vertices, Move move) {
    Vertex* first = nullptr;
    for (Vertex* vertex : vertices) {
        vertex->NextInGroup = first;
        first = vertex;
    }
    LockTextures(first);
    move();
    FollowLockedTextures();
    UnlockTextures();
}
