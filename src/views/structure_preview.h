#pragma once

/// Opens the window that shows a fixed example of what an editor of structures and scenes may look like one day, or
/// raises it. It neither reads nor changes the model.
void OpenStructurePreview();
