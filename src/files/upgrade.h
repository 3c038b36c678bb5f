#pragma once

#include "files/inspection.h"

#include <string>

/// Whether an upgrade may lose what it cannot keep.
enum class UpgradeLoss { Refuse, Accept };

/// Writes the model of the main file, which has been loaded with this report, as a file of the current version. The
/// target, which may be the file itself, appears only when it is complete; images are named as seen from there, those
/// that are missing as before. With UpgradeLoss::Refuse a model is
/// not written that has data of a newer version. Gives the reason of a failure, nothing on success.
std::string UpgradeModel(const LoadReport& report, const std::string& target, UpgradeLoss loss);
