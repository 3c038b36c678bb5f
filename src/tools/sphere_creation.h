#pragma once

/// Adds a sphere about a point (3 doubles, model space, metres) to the current object, in the current material and
/// lighting; with `textured` the current texture is laid round it. Its vertices are joined with each other and with
/// those of the object that lie at the same places. No undo snapshot is taken.
void AddSphereToModel(const double* centre, double radius, int depth, bool textured);
