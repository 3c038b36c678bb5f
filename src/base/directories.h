#pragma once

#include "base/file_names.h"

/// The user's home directory, from the environment variable HOME.
extern char HomeDir[MaxFileName];

/// The installation directory: it holds the program, the manual, the converters and the fonts.
extern char KirvoDir[MaxFileName];

/// Full name of the defaults file, in the home directory.
extern char DefaultFile[MaxFileName];

/// 1 when the installation has a manual.
extern int ManualFound;

/// Directory and name of the current model file; the name is empty when there is no file.
extern char FilePath[MaxFileName];
extern char FileName[MaxFileName];

/// Sets HomeDir, DefaultFile, KirvoDir and ManualFound. The installation is the first of these that is one: the folder
/// Kirvo in the home directory, the environment variable KIRVOHOME, the working directory, the directory of
/// `programPath` (the program as it was started). Without one, tells how to install and ends with exit status 0;
/// without a usable home directory, ends with a message and exit status 1.
void FindDirectories(const char* programPath);

/// Writes the working directory to a buffer of MaxFileName bytes. Returns 0, and leaves the buffer as it was, when
/// there is none (it was removed) or its name does not fit.
int WorkingDirectory(char (&destination)[MaxFileName]);
