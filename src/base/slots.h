#pragma once

/// Calls a slot, a function that an upper floor may have filled in; an empty one is skipped.
template <class... Parameters, class... Arguments>
void CallSlot(void (*slot)(Parameters...), Arguments&&... arguments) {
    if (slot)
        slot(arguments...);
}
