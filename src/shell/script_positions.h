#pragma once

#include <string>

/// The window positions "model:X,Y,Z" and "vertex:N" in a model view: where a point of the model, or a vertex of the
/// current object in list order, appears; and the toolkit's own. For gl::ScriptPosition.
bool FindModelPosition(const std::string& word, int window, int& x, int& y, std::string& error);
