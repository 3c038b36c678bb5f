#pragma once

/// Opens what the user has dropped on the window: a model, after the question about unsaved work, an image as a
/// texture, or a file that a converter imports. Told when it is none of these, or cannot be opened now. For the main
/// loop, after every pass.
void OpenDroppedFiles();
