#pragma once

struct Window;

// Setting switching distances by eye: a tool with a window beside the model view. Its slider takes the eye away from
// the current object, which is shown in the level of detail that is seen from there; levels stand beside the slider at
// the distances where they end, and are dragged to others.

/// Starts the tool, in object mode; nothing while another one runs.
void DoLodSetup();

/// The distance of the eye at which the current object is no larger than a pixel or so, metres, in the main view as it
/// is set up; no farther than the farthest switching distance.
double DefaultVanish();
