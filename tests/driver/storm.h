#pragma once

// The script command storm N SEED: what a hurried user does, N times, at random: clicks, drags with all buttons and
// modifier keys, keys, menus, gadgets, windows, undo, save and open, tools left half-way. After each action every rule
// of the store must hold; at the end the program must still come to rest. Each action is written, before it is done, to
// the file "storm.kscript", which this program can play again; it needs the model of the start as "0-original.kirvo",
// too, since the storm opens that now and then. Files are opened and saved in the working directory only.
void InstallStorm();
