#pragma once

#include "gooey/report.h"

#include <nlohmann/json_fwd.hpp>

/// The members of a report that tell of the model and of how it is shown, beside the windows.
void ReportModel(nlohmann::ordered_json& report);

/// The tree of the scene, "scene", a branch a line.
ReportText ReportScene();
