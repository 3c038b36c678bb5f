#pragma once

/// The tool that puts vertices on the grid. It runs until Done, which adds them to the object, or Cancel.
void CreateVerticesOnGrid();
