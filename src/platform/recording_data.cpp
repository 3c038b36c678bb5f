#include "platform/recording_data.h"

#include <algorithm>

#include <epoxy/gl.h>

#include "platform/graphics_context.h"

namespace gl {

namespace {

void Upload(unsigned target, unsigned* name, const void* data, size_t bytes, long* total) {
    glGenBuffers(1, name);
    glBindBuffer(target, *name);
    glBufferData(target, static_cast<long>(bytes), data, GL_STATIC_DRAW);
    *total += static_cast<long>(bytes);
}

// Reads a buffer of graphics memory back.
template <typename Element>
std::vector<Element> Download(unsigned name, int count) {
    std::vector<Element> elements(count);
    if (count == 0)
        return elements;
    const auto bytes = static_cast<long>(count * sizeof(Element));
    glBindBuffer(GL_ARRAY_BUFFER, name);
    if (const void* data = glMapBufferRange(GL_ARRAY_BUFFER, 0, bytes, GL_MAP_READ_BIT)) {
        std::copy_n(static_cast<const Element*>(data), count, elements.data());
        glUnmapBuffer(GL_ARRAY_BUFFER);
    }
    return elements;
}

void DescribeRests(int attribute, size_t stride, size_t offset) {
    glEnableVertexAttribArray(attribute);
    glVertexAttribPointer(attribute, 3, GL_FLOAT, false, static_cast<int>(stride),
                          reinterpret_cast<const void*>(offset));
}

} // namespace

void VertexStore::release() {
    glDeleteVertexArrays(1, &arrays);
    const unsigned buffers[3] = {vertices, rests, indices};
    glDeleteBuffers(3, buffers);
    *this = {};
}

ObjectRecording::~ObjectRecording() {
    if (!GraphicsReady())
        return;
    if (store.arrays || wideStore.arrays)
        ForgetBatchState(); // their names may be given again
    store.release();
    wideStore.release();
}

void ObjectRecording::upload() {
    vertexCount = static_cast<int>(vertices.size());
    indexCount = static_cast<int>(indices.size());
    glGenVertexArrays(1, &store.arrays);
    glBindVertexArray(store.arrays);
    Upload(GL_ARRAY_BUFFER, &store.vertices, vertices.data(), vertices.size() * sizeof(Vertex), &store.bytes);
    DescribeVertices(sizeof(Vertex));
    if (precise) {
        Upload(GL_ARRAY_BUFFER, &store.rests, rests.data(), rests.size() * sizeof(PositionRest), &store.bytes);
        DescribeRests(PositionRestAttribute, sizeof(PositionRest), 0);
    }
    Upload(GL_ELEMENT_ARRAY_BUFFER, &store.indices, indices.data(), indices.size() * sizeof(uint32_t), &store.bytes);
    ForgetBatchState();
    std::vector<Vertex>().swap(vertices);
    std::vector<PositionRest>().swap(rests);
    std::vector<uint32_t>().swap(indices);
}

void ObjectRecording::widenLines() {
    const auto ends = Download<Vertex>(store.vertices, vertexCount);
    const auto endRests = Download<PositionRest>(store.rests, precise ? vertexCount : 0);
    const auto segments = Download<uint32_t>(store.indices, indexCount);
    std::vector<LineVertex> corners;
    std::vector<std::array<PositionRest, 2>> cornerRests; // of its own end and of the other
    std::vector<uint32_t> cornerIndices;
    for (Run& run : runs) {
        if (run.shape != Shape::Segments)
            continue;
        run.firstWide = static_cast<int>(cornerIndices.size());
        for (int i = run.first; i < run.first + run.count; i += 2) {
            const uint32_t pair[2] = {segments[i], segments[i + 1]};
            const auto first = static_cast<uint32_t>(corners.size());
            for (int end = 0; end < 2; end++)
                for (float side : {-1.0f, 1.0f}) {
                    LineVertex corner = {ends[pair[end]], {}, {static_cast<float>(end), side, 0}};
                    std::copy_n(ends[pair[1 - end]].position, 3, corner.otherEnd);
                    corners.push_back(corner);
                    if (precise)
                        cornerRests.push_back({endRests[pair[end]], endRests[pair[1 - end]]});
                }
            for (uint32_t corner : {0, 1, 2, 2, 1, 3})
                cornerIndices.push_back(first + corner);
        }
    }
    glGenVertexArrays(1, &wideStore.arrays);
    glBindVertexArray(wideStore.arrays);
    Upload(GL_ARRAY_BUFFER, &wideStore.vertices, corners.data(), corners.size() * sizeof(LineVertex), &wideStore.bytes);
    DescribeLineVertices();
    if (precise) {
        constexpr size_t stride = sizeof cornerRests[0];
        Upload(GL_ARRAY_BUFFER, &wideStore.rests, cornerRests.data(), cornerRests.size() * stride, &wideStore.bytes);
        DescribeRests(PositionRestAttribute, stride, 0);
        DescribeRests(OtherEndRestAttribute, stride, sizeof(PositionRest));
    }
    Upload(GL_ELEMENT_ARRAY_BUFFER, &wideStore.indices, cornerIndices.data(), cornerIndices.size() * sizeof(uint32_t),
           &wideStore.bytes);
    ForgetBatchState();
}

} // namespace gl
