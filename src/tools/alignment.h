#pragma once

// Moving things so that their bounding box lies at the origin, along one axis or all.

/// What of the box comes to lie at 0; other coordinates stay.
enum Alignment {
    AlignCentre = 0,   // the middle in x, y and z
    AlignStanding = 1, // the middle in x and y, the lowest z
    AlignLowX = 2,     // one coordinate each: the lowest, the middle, the highest
    AlignMiddleX = 3,
    AlignHighX = 4,
    AlignLowY = 5,
    AlignMiddleY = 6,
    AlignHighY = 7,
    AlignLowZ = 8,
    AlignMiddleZ = 9,
    AlignHighZ = 10,
};

/// What was subtracted last: 3 doubles.
extern double LastAlignOffset[3];

/// Aligns the vertices of the current object whose Mark is set; the undo snapshot is taken first. 0 when there is none.
int DoAlign(int alignment);

/// The vertices of the selected polygons, which must be some.
void AlignPolygons(int alignment);

/// The whole object; where it is placed in the scene it stays.
void AlignObject(int alignment);
