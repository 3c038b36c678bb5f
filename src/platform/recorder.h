// How drawing calls reach a recording that is open. For the layer's own modules.
#pragma once

#include <functional>
#include <vector>

namespace gl {

extern bool RecordingOpen;

inline bool Recording() {
    return RecordingOpen;
}

// Keeps a call that changes state in the recording that is open.
void KeepCommand(std::function<void()> command);

// A call that changes state: when a recording is open it is kept there and true is returned; the caller then returns.
template <typename Call>
bool RecordCommand(const Call& call) {
    if (!RecordingOpen)
        return false;
    KeepCommand(call);
    return true;
}

// The same for a call that draws in the current colour, which becomes part of what is kept.
void KeepColoured(std::function<void()> command);

// The same for a setting that has one value: one that the recording has given it already is not kept again, so that the
// primitives before and after it stay together.
bool SettingKnown(int setting, int value);

template <typename Call>
bool RecordSetting(int setting, int value, const Call& call) {
    if (!RecordingOpen)
        return false;
    if (!SettingKnown(setting, value))
        KeepCommand(call);
    return true;
}

// Numbers of such settings; lmbind's are its targets but for materials.
enum RecordedSetting { TextureSetting = 1, EnvironmentSetting, DepthTestSetting, CullingSetting, PatternSetting };

// The same for the bound material, which is kept with the vertices.
bool RecordMaterial(int material);

// The vertices of a primitive, in the coordinates of the caller, with the attributes of the drawing state.
void BeginRecordedPrimitive();
void RecordVertex(double x, double y, double z, double w);
int RecordedVertices();
// The first one's position, three numbers each, `stride` numbers apart.
const float* RecordedPositions(int* stride);
// What they make.
void RecordTriangles(const std::vector<int>& indices);
void RecordLine(bool closed);
void RecordPoints();
// The state's colour or normal has changed.
void RecordColour();
void RecordNormal();

void DeleteAllRecordings();

} // namespace gl
