#pragma once

#include "interaction/bar_gadgets.h"
