#pragma once

// The canonical order of a model's lists. Equal keys come out in the reverse of their previous order.

/// Sorts the current object's sub-objects by name (byte order), then its levels of detail.
void SortObject();

/// SortObject unless the sub-objects are in order: those of equal names stay as they are, else each clean-up would turn
/// them round, and a file would change whenever it is loaded and saved.
void KeepObjectSorted();

/// Sorts the current object's levels of detail by ascending distance, unless they are; 1 when it sorted.
int SortLods();

/// Sorts the current file's objects by name, ignoring case.
void SortObjectList();
