#pragma once

/// Fills the slots through which lower floors call upper ones; once at start-up, before anything uses them. A slot
/// whose upper side does not exist stays null.
void FillSlots();
