#pragma once

/// Starts the tool that wraps the current texture around the selected polygons, about the direction of the large view
/// through their middle; how often, and how high it is, are typed into its bar.
void ApplyTextureCylinder();
