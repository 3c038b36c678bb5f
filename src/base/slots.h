#pragma once

/// Calls a slot, a function that an upper floor may have filled in; an empty one is skipped.
inline void CallSlot(void (*slot)()) {
    if (slot)
        slot();
}
