#pragma once

#include "base/file_identity.h"

#include <optional>
#include <string>

// The files that a checkpoint consists of, in the home directory: the model "CheckPoint.kirvo", and
// ".kirvo_checkpoint_info" with the directory and name of the file that it stands for, a line each. A third line tells
// how long those two are, which checkpoint they belong to, and which version of the model's file the work began with.
// Both are whole at every moment, and belong to each other.
//
// Several programs of one user do not share them: each holds a lock on its files as long as it runs. The first has the
// names above, a second one the same with "-2", and so on.

/// The directory and name of the model that a checkpoint was made of, and its file as the program knew it.
struct CheckpointOrigin {
    std::string Path, Name;
    /// Empty where an older program has not said.
    std::optional<FileIdentity> Known = std::nullopt;
};

/// Takes the files of this program: those that an ended one has left a checkpoint in, otherwise the first that are
/// free. 0 when too many programs run. Nothing is taken twice.
int TakeCheckpointFiles();

/// Gives them back, for other programs to use.
void GiveBackCheckpointFiles();

/// The name of the checkpoint; "" when this program has taken no files.
std::string CheckpointName();

/// Whether there is a checkpoint that can be opened.
int CheckpointExists();

/// What the information file says about the checkpoint. 0 when there is none.
int ReadCheckpointOrigin(CheckpointOrigin& origin);

/// Makes a checkpoint of the main file of the store in place of the older one, which stays when that fails: 0, with
/// errno set. Whoever may read the model's file may read it; without one only its owner.
int WriteCheckpoint(const CheckpointOrigin& origin);

/// Deletes checkpoint and information.
void RemoveCheckpoint();

/// Gives the checkpoint a name under which no program looks for one, and deletes its information. The name, or "".
std::string PutCheckpointAside();
