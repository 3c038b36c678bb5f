#include "platform/outline_filling.h"

#include <GL/glu.h>

#include <deque>

namespace gl {

namespace {

// What the tessellator is given and gives back. Its points are addresses that stay: here those of the numbers of
// points.
struct Filling {
    std::vector<OutlinePoint>& Points;
    std::vector<int>& Triangles;
    std::deque<int> Numbers;
    bool Failed = false;

    int* Add(double x, double y) {
        Points.push_back({x, y});
        return &Numbers.emplace_back(static_cast<int>(Points.size()) - 1);
    }
};

Filling& Of(void* user) {
    return *static_cast<Filling*>(user);
}

void OnVertex(void* number, void* user) {
    Of(user).Triangles.push_back(*static_cast<int*>(number));
}

void OnCrossing(GLdouble place[3], void* [4], GLfloat[4], void** number, void* user) {
    *number = Of(user).Add(place[0], place[1]);
}

void OnError(GLenum, void* user) {
    Of(user).Failed = true;
}

// Its presence makes all triangles come one by one rather than in strips and fans.
void OnEdgeFlag(GLboolean, void*) {}

template <class Function>
_GLUfuncptr Callback(Function* function) {
    return reinterpret_cast<_GLUfuncptr>(function);
}

} // namespace

bool FillOutline(const std::vector<std::vector<OutlinePoint>>& rings, std::vector<OutlinePoint>& points,
                 std::vector<int>& triangles) {
    points.clear();
    triangles.clear();
    GLUtesselator* tessellator = gluNewTess();
    if (!tessellator)
        return false;
    Filling filling = {points, triangles, {}};
    gluTessCallback(tessellator, GLU_TESS_VERTEX_DATA, Callback(OnVertex));
    gluTessCallback(tessellator, GLU_TESS_COMBINE_DATA, Callback(OnCrossing));
    gluTessCallback(tessellator, GLU_TESS_ERROR_DATA, Callback(OnError));
    gluTessCallback(tessellator, GLU_TESS_EDGE_FLAG_DATA, Callback(OnEdgeFlag));
    gluTessProperty(tessellator, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
    gluTessNormal(tessellator, 0, 0, 1);
    gluTessBeginPolygon(tessellator, &filling);
    for (const auto& ring : rings) {
        gluTessBeginContour(tessellator);
        for (const OutlinePoint& point : ring) {
            GLdouble place[3] = {point.X, point.Y, 0};
            gluTessVertex(tessellator, place, filling.Add(point.X, point.Y));
        }
        gluTessEndContour(tessellator);
    }
    gluTessEndPolygon(tessellator);
    gluDeleteTess(tessellator);
    if (filling.Failed)
        triangles.clear();
    return !filling.Failed;
}

} // namespace gl
