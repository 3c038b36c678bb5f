// How drawing calls reach a recording that is open. For the layer's own modules.
#pragma once

#include <functional>
#include <vector>

namespace gl {

extern bool RecordingOpen;

inline bool Recording() {
    return RecordingOpen;
}

// A call that changes state: when a recording is open it is kept there and true is returned; the caller then returns.
void KeepCommand(std::function<void()> command);

template <typename Call>
bool RecordCommand(const Call& call) {
    if (!RecordingOpen)
        return false;
    KeepCommand(call);
    return true;
}

// The vertices of a primitive, in the coordinates of the caller, with the attributes of the drawing state.
void BeginRecordedPrimitive();
void RecordVertex(double x, double y, double z, double w);
int RecordedVertices();
// Their positions relative to the first, three numbers each.
std::vector<float> RecordedPositions();
// What they make.
void RecordTriangles(const std::vector<int>& indices);
void RecordLine(bool closed);
void RecordPoints();
// The recording leaves a colour or normal behind.
void RecordColour();
void RecordNormal();

void DeleteAllRecordings();

} // namespace gl
