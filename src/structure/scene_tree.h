#pragma once

#include "store/records.h"

#include <vector>

struct Gadget;
struct GadgetItem;

// A scene as a tree of boxes: children in the column to the right of their parent, siblings below each other. It fills
// a scroll window, in the scene builder and where files are merged (then without eyes: Mergeing). The layout is kept in
// the branches, y growing downwards; a branch's y is the bottom of its box.

/// What the last click hit: no branch, its eye or what opens it, or its box.
enum SceneHitPart { SceneHitNothing = 0, SceneHitMark = 1, SceneHitBox = 2 };

extern int SceneHit;

/// What the owner of a tree's scroll window does: lays it out and gives the window its place (ConfigureScroll), draws
/// it (DrawSceneTree), lists what is in sight (ListSceneItems).
struct SceneTreeOwner {
    void (*Configure)(Gadget* scroll);
    void (*Draw)(Gadget* scroll);
    void (*ListItems)(const Gadget* scroll, std::vector<GadgetItem>& items);
};

/// Adds a scroll window for a tree to the current window.
Gadget* AddSceneTree(const SceneTreeOwner& owner);

/// Lays the tree out that begins with a branch (null: nothing), and tells how large it is, in pixels.
void ConfigureScene(Branch* first, int& width, int& height);

/// From now on the tree is the content of this scroll window, as it is scrolled and placed now; the window is current.
void UseSceneArea(const Gadget* scroll);
/// Where the lower left corner of a branch is in the window; 0 when it is not in sight.
int BranchXY(const Branch* branch, int& x, int& y);

/// Draws a tree that has been laid out; `dim`: it hangs below a branch that is hidden.
void SceneDrawer(Branch* first, int dim);
/// Draws it into the scroll window, with its background.
void DrawSceneTree(Branch* first, const Gadget* scroll);

/// What a click at the pointer comes to: opens or closes an eye, selects, expands. 0 when it hits no branch.
int SceneSelect(Branch* first);

/// The branch that is shown before (-1) or after (1) another one; null at the ends.
Branch* NeighbourInTree(Branch* first, const Branch* branch, int direction);

/// The scroll offsets with which the branch is in sight, or else the nearest one that holds it and is not collapsed
/// away.
void ScrollToBranch(Gadget* scroll, Branch* branch);

/// What is in sight, for reports and scripts: each box by its label, with "eye" and "expand".
void ListSceneItems(Branch* first, const Gadget* scroll, std::vector<GadgetItem>& items);

/// The object's name, or the group's own, which may be longer than what is shown.
const char* LabelOfBranch(const Branch* branch);
