#include "interaction/ruler.h"

Window* RulerGizmo;
