#include "platform/recordings.h"

#include "platform/recorder.h"

namespace gl {
bool RecordingOpen = false;

void KeepCommand(std::function<void()>) {}

void BeginRecordedPrimitive() {}

void RecordVertex(double, double, double, double) {}

int RecordedVertices() {
    return 0;
}

std::vector<float> RecordedPositions() {
    return {};
}

void RecordTriangles(const std::vector<int>&) {}

void RecordLine(bool) {}

void RecordPoints() {}

void RecordColour() {}

void RecordNormal() {}

void DeleteAllRecordings() {}
} // namespace gl
