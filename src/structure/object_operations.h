#pragma once

// Creating, naming, copying and deleting whole objects of the current file. Questions and prompts come from here; what
// they ask for happens when they are answered.

/// Makes an object current that has nothing in it: one that is there already, else a new one.
void CreateNewObject();

/// Asks, then deletes the current object and every branch of the scene that shows it.
void ChuckObjectAway();

/// Asks for another name of the current object; one that is taken is refused.
void RenameObject();

/// Asks for a name and makes a copy of the current object of that name, which becomes current.
void MakeCopyOfObject();

/// Asks, then leaves nothing of the model but the current object, with the materials and textures that it uses. The
/// model then has the object's name.
void DeleteAllButObject();

/// Writes counts and sizes of the current object, and the memory in use, to the debug stream.
void ShowObjectInfo();

/// Whether the current object turns to the eye in scene views.
void ToggleBillboard();

/// After a change of the list of objects: the model views and the windows that show objects are drawn again.
void RedrawObjectWindows();
