#include "views/work_area.h"

#include "gooey/redraw.h"
#include "gooey/window.h"
#include "platform/matrices.h"
#include "platform/state.h"
#include "store/accessors.h"
#include "store/storage.h"
#include "views/capabilities.h"
#include "views/scene_views.h"
#include "views/view_transform.h"

#include <algorithm>
#include <cmath>

Window *WorkAreaGizmo, *WorkAreaWindow;
double WorkAreaLeft, WorkAreaRight, WorkAreaFront, WorkAreaBack, WorkAreaBottom, WorkAreaTop;
int SettingWorkArea;

namespace {

constexpr int FaceCount = 6;

/// a x + b y + c z + d >= 0 is kept; d is the same for all.
float FacePlanes[FaceCount][4] = {{1, 0, 0, 0}, {-1, 0, 0, 0}, {0, -1, 0, 0},
                                  {0, 1, 0, 0}, {0, 0, -1, 0}, {0, 0, 1, 0}};

void SwitchClipPlanes(int mode) {
    if (!WorkAreaGizmo || !ClipPlanesAvailable)
        return;
    for (int face = 0; face < FaceCount; ++face)
        gl::clipplane(face, mode, nullptr);
}

} // namespace

WorkAreaRecord& CurrentWorkArea() {
    WorkAreaRecord& area = ObjectIsolated ? ObjectWorkArea() : SceneWorkArea;
    if (!area.Valid) {
        area = {};
        area.Valid = 1;
        area.TopView = 1;
        area.Magnification = 1;
        area.HalfSize = ShownRadius();
        DirtyWindow(WorkAreaWindow);
    }
    return area;
}

void CalcWorkAreaBox(const WorkAreaRecord& area) {
    WorkAreaLeft = area.Centre[0] - area.HalfSize;
    WorkAreaRight = area.Centre[0] + area.HalfSize;
    WorkAreaFront = area.Centre[1] - area.HalfSize;
    WorkAreaBack = area.Centre[1] + area.HalfSize;
    WorkAreaBottom = area.Centre[2] - area.HalfSize;
    WorkAreaTop = area.Centre[2] + area.HalfSize;
    for (float* plane : FacePlanes)
        plane[3] = static_cast<float>(area.Magnification * area.HalfSize);
}

void DefineWorkAreaClipPlanes() {
    if (!ClipPlanesAvailable)
        return;
    for (int face = 0; face < FaceCount; ++face)
        gl::clipplane(face, gl::CP_DEFINE, FacePlanes[face]);
}

void ClipPlanesOn() {
    SwitchClipPlanes(gl::CP_ON);
}

void ClipPlanesOff() {
    SwitchClipPlanes(gl::CP_OFF);
}

void SetWorkArea(Matrix* matrix, int load) {
    if (!WorkAreaGizmo)
        return;
    const WorkAreaRecord& area = CurrentWorkArea();
    if (load)
        CalcWorkAreaBox(area);
    if (!WorkAreaClips())
        return;
    const double m = area.Magnification;
    const double* centre = area.Centre;
    if (load) {
        DefineWorkAreaClipPlanes();
        gl::scale(m, m, m);
        gl::translate(-centre[0], -centre[1], -centre[2]);
    }
    if (matrix) {
        MultMatrix(ScaleMatrix(m, m, m), *matrix, *matrix);
        MultMatrix(TranslationMatrix(-centre[0], -centre[1], -centre[2]), *matrix, *matrix);
    }
}

double WorkAreaMagnification() {
    return WorkAreaGizmo ? CurrentWorkArea().Magnification : 1;
}

double WorkAreaReach(double radius) {
    if (!WorkAreaGizmo)
        return radius;
    const WorkAreaRecord& area = CurrentWorkArea();
    // The object may have grown or shrunk since the cube was set.
    return WorkAreaClips() ? std::max(radius, area.Magnification * area.HalfSize)
                           : radius + std::hypot(area.Centre[0], area.Centre[1], area.Centre[2]);
}

int WorkAreaClips() {
    return WorkAreaGizmo && (!CurrentWindow || CurrentWindow != WorkAreaWindow);
}

int PointInsideWorkArea(const float* point) {
    if (!WorkAreaGizmo)
        return 1;
    return point[0] >= WorkAreaLeft && point[0] <= WorkAreaRight && point[1] >= WorkAreaFront &&
           point[1] <= WorkAreaBack && point[2] >= WorkAreaBottom && point[2] <= WorkAreaTop;
}

int SceneObjectVisible(const Branch* branch) {
    if (!WorkAreaGizmo)
        return 1;
    const double* min = branch->Min;
    const double* max = branch->Max;
    return min[0] <= WorkAreaRight && max[0] >= WorkAreaLeft && min[1] <= WorkAreaBack && max[1] >= WorkAreaFront &&
           min[2] <= WorkAreaTop && max[2] >= WorkAreaBottom;
}
