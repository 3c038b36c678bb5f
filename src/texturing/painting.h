#pragma once

/// Starts painting: the whole texture on the one selected quadrilateral, which the tool turns by quarters. Tells when
/// something else is selected.
void StartPainting();
