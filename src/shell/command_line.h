#pragma once

/// 1 when the program started without a file opens the last one again.
extern int DoAutoLoad;

/// Takes the model file from the command line. With one argument that names a file, with or without the model
/// extension, sets FilePath, in full, and FileName. Otherwise they stay as the defaults file left them, or, when
/// DoAutoLoad is 0, FilePath becomes the home directory and FileName empty.
void CheckArgs(int argumentCount, char* const arguments[]);
