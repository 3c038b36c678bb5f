#pragma once

/// The tool that shows the coordinates of the vertex that the user picks, and takes others that are typed. It runs
/// until Done, or until Cancel, which puts the vertex picked last back to where it was then.
void Query_AdjustVertices();
