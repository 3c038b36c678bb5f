#pragma once

/// Starts the tool that drops copies of the current object onto the scene where the user clicks. It needs a scene that
/// places something.
void PlantObject();

/// Releases what it remembers of a run.
void FreePlantList();
