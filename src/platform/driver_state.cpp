#include "platform/driver_state.h"

#include <epoxy/gl.h>

#include "platform/drawing_state.h"

namespace gl {

namespace {

DriverState Set;
bool Known = false;
unsigned BoundProgram = 0, BoundArrays = 0;
long Changes = 0;
bool Desktop = true; // asking the driver takes longer than drawing
// A distance more for lines that face the eye.
constexpr int ClipDistances = ClipPlanes + 1;

void Switch(unsigned capability, bool on) {
    if (on)
        glEnable(capability);
    else
        glDisable(capability);
}

constexpr unsigned Factors[] = {GL_ZERO,      GL_ONE,
                                GL_DST_COLOR, GL_ONE_MINUS_DST_COLOR,
                                GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA,
                                GL_DST_ALPHA, GL_ONE_MINUS_DST_ALPHA};

// BF_SC and BF_MSC share their numbers with BF_DC and BF_MDC: each means the colour of the other side.
unsigned SourceFactor(uint8_t factor) {
    return Factors[factor & 7];
}

unsigned DestinationFactor(uint8_t factor) {
    return factor == BF_SC ? GL_SRC_COLOR : factor == BF_MSC ? GL_ONE_MINUS_SRC_COLOR : Factors[factor & 7];
}

} // namespace

void ApplyDriverState(const DriverState& wanted) {
    const bool all = !Known;
    if (all)
        Desktop = epoxy_is_desktop_gl();
    if (all) {
        glEnable(GL_SCISSOR_TEST);
        glDisable(GL_STENCIL_TEST);
        glCullFace(GL_BACK);
        glPolygonOffset(1, 1);
        glActiveTexture(GL_TEXTURE0);
        if (epoxy_is_desktop_gl())
            glEnable(GL_PROGRAM_POINT_SIZE);
    }
    if (all || wanted.framebuffer != Set.framebuffer)
        glBindFramebuffer(GL_FRAMEBUFFER, wanted.framebuffer);
    if (all || wanted.viewport != Set.viewport)
        glViewport(wanted.viewport.x, wanted.viewport.y, wanted.viewport.width, wanted.viewport.height);
    if (all || wanted.scissor != Set.scissor)
        glScissor(wanted.scissor.x, wanted.scissor.y, wanted.scissor.width, wanted.scissor.height);
    if (all || wanted.nearDepth != Set.nearDepth || wanted.farDepth != Set.farDepth)
        glDepthRangef(wanted.nearDepth, wanted.farDepth);
    if (all || wanted.depthTest != Set.depthTest)
        Switch(GL_DEPTH_TEST, wanted.depthTest);
    if (all || wanted.depthFunction != Set.depthFunction)
        glDepthFunc(GL_NEVER + wanted.depthFunction);
    if (all || wanted.depthWrite != Set.depthWrite)
        glDepthMask(wanted.depthWrite);
    if (all || wanted.colourMask != Set.colourMask)
        glColorMask(wanted.colourMask & 1, (wanted.colourMask & 2) != 0, (wanted.colourMask & 4) != 0,
                    (wanted.colourMask & 8) != 0);
    if (all || wanted.sourceFactor != Set.sourceFactor || wanted.destinationFactor != Set.destinationFactor) {
        Switch(GL_BLEND, wanted.sourceFactor != BF_ONE || wanted.destinationFactor != BF_ZERO);
        glBlendFunc(SourceFactor(wanted.sourceFactor), DestinationFactor(wanted.destinationFactor));
    }
    if (all || wanted.cullBack != Set.cullBack)
        Switch(GL_CULL_FACE, wanted.cullBack);
    if (all || wanted.clockwiseFronts != Set.clockwiseFronts)
        glFrontFace(wanted.clockwiseFronts ? GL_CW : GL_CCW);
    if (all || wanted.alphaToCoverage != Set.alphaToCoverage)
        Switch(GL_SAMPLE_ALPHA_TO_COVERAGE, wanted.alphaToCoverage);
    if (Desktop && (all || wanted.multisample != Set.multisample))
        Switch(GL_MULTISAMPLE, wanted.multisample);
    if (all || wanted.polygonOffset != Set.polygonOffset)
        Switch(GL_POLYGON_OFFSET_FILL, wanted.polygonOffset);
    if (Desktop)
        for (int i = 0; i < ClipDistances; i++)
            if (all || ((wanted.clipPlanes ^ Set.clipPlanes) >> i & 1))
                Switch(GL_CLIP_DISTANCE0 + i, wanted.clipPlanes >> i & 1);
    if (all || wanted.texture != Set.texture)
        glBindTexture(GL_TEXTURE_2D, wanted.texture);
    Set = wanted;
    Known = true;
}

const DriverState& CurrentDriverState() {
    return Set;
}

void BindProgram(unsigned name) {
    if (name != BoundProgram) {
        glUseProgram(name);
        Changes++;
    }
    BoundProgram = name;
}

void BindArrays(unsigned name) {
    if (name != BoundArrays) {
        glBindVertexArray(name);
        Changes++;
    }
    BoundArrays = name;
}

void ForgetDriverState() {
    Known = false;
    BoundProgram = BoundArrays = 0;
    Changes++;
}

long BindingChanges() {
    return Changes;
}

} // namespace gl
