#include "views/display_flags.h"

int HideScene;
int HideSubObjects;
