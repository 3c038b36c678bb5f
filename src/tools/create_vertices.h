#pragma once

/// The tool that puts vertices on the grid. It runs until Done, which adds them to the object, or Cancel.
void CreateVerticesOnGrid();

/// Makes vertices of the object of the temporary ones, as a change of the running tool; they stay for it to delete.
void AddNewVerticesToObject();
