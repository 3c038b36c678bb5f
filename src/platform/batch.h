// Batches: primitives gathered in one array until their state changes, then sent in one call. For the layer's own
// modules.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/drawing_state.h"
#include "platform/shaders.h"
#include "platform/surface.h"

namespace gl {

// A vertex on its way to the driver. Positions are in eye coordinates.
struct Vertex {
    float position[3];
    int16_t normal[3]; // unit length, 32767 for 1
    int16_t slot;      // material slot of the batch; -1 unlit
    uint32_t colour;   // 0xAABBGGRR
    float texel[2];
};

// A corner of a line segment that the shader widens.
struct LineVertex {
    Vertex vertex; // of its own end
    float otherEnd[3];
    float line[3]; // see the shader
};

// Glyphs and Picture have positions in the unit cube of the viewport, the others in eye coordinates.
enum class Shape : uint8_t { Triangles, Segments, Points, WideSegments, Glyphs, Picture };

// Says that the drawing state has changed: the next primitive looks whether it still fits the pending batch.
extern bool StateChanged;

// Begins primitives of a shape: sends the pending batch when it does not fit and prepares a new one for the current
// state.
void BeginShape(Shape shape);

// Vertices of the pending batch (of every shape but WideSegments). BeginShape gives the shape.
struct BatchArrays {
    std::vector<Vertex> vertices; // as large as a piece may get; Count are in use
    int count = 0;
    std::vector<uint16_t> indices;
    std::vector<LineVertex> lineVertices;
    bool lit = false; // some vertex may have a slot
};

extern BatchArrays Pending;

// Vertices after which a batch is sent, and the most that one primitive may have in it.
constexpr int PieceVertices = 4096, MostVertices = 16384;

// Sends the pending batch when it has reached the size of a piece. Only between primitives.
void SendFullPiece();

// The slot of the bound material in the pending batch, -1 when vertices with a normal are not lit.
int MaterialSlot();

// The driver's texture that Glyphs or a Picture take; a change sends the pending batch.
void SetImage(unsigned texture);

// False when drawing goes nowhere (no current surface, cursor mode). After BeginShape.
bool CanDraw();
// True while drawing goes to the overlay.
bool DrawingToOverlay();

// Clears within viewport and mask: colour (four components) unless null, depth (0 to 1) unless negative.
void ClearTarget(const float* colour, double depth);

// Tells the driver what the array buffer that is bound holds.
void DescribeVertices(int stride);
void DescribeLineVertices();

// How many batches have been sent since the beginning.
long BatchesSent();

// Set-up and release of buffers with the context.
void OpenBatches();
void CloseBatches();
// See ForgetGraphicsState.
void ForgetBatchState();
// Drops pending drawing and state that refer to a surface about to go.
void ForgetSurface(Surface* surface);

} // namespace gl
