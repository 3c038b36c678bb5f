#pragma once

/// Makes the side windows known that tools disable or that open at start-up, in the order of opening.
void RegisterToolWindows();
