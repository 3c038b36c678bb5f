#pragma once

/// Connects views, menus, tools and commands with each other: fills the slots of the lower of each two, and registers
/// what the tools draw over the model. A part of FillSlots.
void FillInteractionSlots();
