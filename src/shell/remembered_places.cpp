#include "shell/remembered_places.h"

int LodScale;
int TestVar = 6;
