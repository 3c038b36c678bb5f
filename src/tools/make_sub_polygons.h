#pragma once

/// The tool that puts the selected polygons on another one, as its sub-polygons: it asks for that one, and then ends.
/// It needs a selected polygon, which it tells.
void PushPolygon();
