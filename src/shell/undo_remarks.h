#pragma once

// The Undo commands as the user gives them: the status line then says what was undone or done again.

/// The action that is about to be carried out: what a snapshot taken meanwhile, or by the tool that it starts, undoes.
void BeginAction(const char* name);
void EndAction();

/// A snapshot of the object or the scene has been taken. For the slots of the store.
void NoteObjectSnapshot();
void NoteSceneSnapshot();

void UndoObjectAction();
void UndoSceneAction();
