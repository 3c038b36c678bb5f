#pragma once

struct Sweep;

// Where the profile goes along the path. `frame` is a direction (3 doubles) that is carried from joint to joint: it
// says in which plane the path turned last.

/// Puts the profile's points at the beginning of the path, across it: x to the right of it, y upwards.
void PlaceProfile(Sweep& sweep, double* frame);
/// Carries them along, to the mitre planes where the path turns. Where it turns back, the profile is reflected.
void SweepProfile(Sweep& sweep, double* frame);
/// Turns the profile about the y axis of its own, which becomes the z axis.
void RevolveProfile(Sweep& sweep);
