#include "files/file_slots.h"

FileSlots TheFileSlots;
