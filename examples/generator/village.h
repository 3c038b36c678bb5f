#pragma once

/// Builds the village in the empty store.
void BuildVillage();
