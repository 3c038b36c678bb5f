#pragma once

// Checkpoints: the model is saved at intervals into a file in the home directory (files/checkpoint_files.h), so that
// work survives a crash or a kill. Times are those of a clock that never goes back.

/// Preferences: whether checkpoints are made, and the minutes between them.
extern int MakeCheckpointFiles;
extern int CheckpointTime;

/// The interval begins anew.
void ResetCheckpoint();

/// Makes a checkpoint when one is due and nothing else goes on. For the main loop, after every pass.
void MakeCheckpoint();

/// The program is about to end without a normal end: makes a checkpoint of unsaved work, whatever the user prefers,
/// without drawing anything. Not while a file is being read: the store is half built then. A failure is told on the
/// standard error stream.
void SaveWorkInCheckpoint();

/// Once at start-up: loads the checkpoint that an interrupted program left, if there is one. 1 when that has settled
/// what the model is: the checkpoint's, unsaved; or, when it cannot be read, a new one.
int LoadCheckpoint();

/// What the checkpoint holds has been saved: it must not be taken for newer work.
void ForgetCheckpoint();

/// At the normal end: deletes the checkpoint. One that could not be read, and may still hold work, is kept under
/// another name, which is told on the standard error stream.
void DeleteCheckpoint();
