#include "interaction/ring_projector.h"

#include "gooey/window.h"
#include "interaction/drag_box.h"
#include "platform/matrices.h"
#include "store/pools.h"
#include "views/clipping.h"
#include "views/view_transform.h"
#include "views/work_area.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr float NearestW = 0.00001F;
constexpr int MisuseStatus = 666;

double ClipCoordinate(const double* eye, const Matrix& projection, int column) {
    return eye[0] * projection[0][column] + eye[1] * projection[1][column] + eye[2] * projection[2][column] +
           projection[3][column];
}

bool SamePlace(const ScreenCorner& a, const ScreenCorner& b) {
    return a.X == b.X && a.Y == b.Y;
}

/// One step of clipping: keeps what distance(corner) is not negative for.
template <class Distance>
void CutRing(ScreenRing& ring, Distance distance) {
    ScreenRing kept;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const ScreenCorner &here = ring[i], &next = ring[i + 1 < ring.size() ? i + 1 : 0];
        const double inside = distance(here), nextInside = distance(next);
        if (inside >= 0)
            kept.push_back(here);
        if ((inside >= 0) != (nextInside >= 0)) {
            const double part = inside / (inside - nextInside);
            kept.push_back({here.X + (next.X - here.X) * part, here.Y + (next.Y - here.Y) * part,
                            here.Depth + (next.Depth - here.Depth) * part});
        }
    }
    ring.swap(kept);
}

} // namespace

Matrix GetSelectProjection() {
    Matrix projection;
    const int mode = gl::getmmode();
    gl::mmode(gl::MPROJECTION);
    GetGLMatrix(projection);
    gl::mmode(mode);
    return projection;
}

RingProjector::RingProjector(const ShownObject& shown, const Matrix& projection)
    : SelectTransform(shown.ToEye),
      SelectProjection(projection),
      SceneToEye(shown.View->Transform),
      HalfWidth(CurrentWindow->Width / 2.0),
      HalfHeight(CurrentWindow->Height / 2.0),
      Perspective(shown.View->Perspective),
      Mirroring(IsMirroring(shown.ToEye)) {}

bool RingProjector::ProjectEyePoint(const double* eye, ScreenCorner& corner) const {
    const double w = ClipCoordinate(eye, SelectProjection, 3);
    corner = {ClipCoordinate(eye, SelectProjection, 0) / w * HalfWidth + HalfWidth,
              ClipCoordinate(eye, SelectProjection, 1) / w * HalfHeight + HalfHeight,
              ClipCoordinate(eye, SelectProjection, 2) / w};
    return w > 0;
}

bool RingProjector::ProjectPoint(const double* point, ScreenCorner& corner) const {
    double eye[3];
    TransformCoordinate(point, SelectTransform, eye);
    return ProjectEyePoint(eye, corner);
}

double RingProjector::DistanceOf(double depth) const {
    return Perspective ? SelectProjection[3][2] / (depth + SelectProjection[2][2]) : 1;
}

const ScreenRing& RingProjector::Project(const Polygon* polygon) {
    Ring.clear();
    Eyes.clear();
    bool needsClipping = WorkAreaClips();
    for (const PolygonBead* bead : EveryBead(polygon)) {
        double eye[3];
        TransformCoordinate(bead->Vertex->Position, SelectTransform, eye);
        Eyes.insert(Eyes.end(), eye, eye + 3);
        needsClipping |= Perspective && !(eye[2] <= -NearestW);
    }
    if (needsClipping)
        ProjectClipped(polygon);
    else
        for (std::size_t i = 0; i < Eyes.size(); i += 3)
            AddCorner(&Eyes[i]);
    return Ring;
}

void RingProjector::ProjectClipped(const Polygon* polygon) {
    ClipBead* ring = ClipPolygonToWorkArea(MakeClipPolygon(polygon, 0));
    const double* whole = Eyes.data();
    for (ClipBead* corner = ring; corner; corner = corner->Next) {
        double eye[3];
        if (WorkAreaClips()) {
            const double place[3] = {corner->Position[0], corner->Position[1], corner->Position[2]};
            TransformCoordinate(place, SceneToEye, eye);
        } else {
            std::copy_n(whole, 3, eye);
            whole += 3;
        }
        std::copy_n(eye, 3, corner->Eye);
    }
    if (Perspective && ring)
        ring = ClipPolygonToFrontClipPlane(ring);
    for (const ClipBead* corner = ring; corner; corner = corner->Next) {
        const double eye[3] = {corner->Eye[0], corner->Eye[1], corner->Eye[2]};
        AddCorner(eye);
    }
    FreeClippedPolygon(ring);
}

void RingProjector::AddCorner(const double* eye) {
    const float w = static_cast<float>(ClipCoordinate(eye, SelectProjection, 3));
    if (Perspective && w < NearestW) {
        std::fprintf(stderr, "Failure in polygon clip logic %f!\n", static_cast<double>(w));
        std::exit(MisuseStatus);
    }
    ScreenCorner corner;
    ProjectEyePoint(eye, corner);
    Ring.push_back(corner);
}

bool RingProjector::FacesEye(const ScreenRing& ring) const {
    const std::size_t count = ring.size();
    for (std::size_t i = 0; i < count; ++i) {
        const ScreenCorner &a = ring[i], &b = ring[(i + 1) % count], &c = ring[(i + 2) % count];
        if (SamePlace(a, b) || SamePlace(b, c) || SamePlace(a, c))
            continue;
        const double turn = (a.X - b.X) * (c.Y - b.Y) - (c.X - b.X) * (a.Y - b.Y);
        return Mirroring ? turn > 0 : turn < 0;
    }
    return false;
}

void ClipPolygonToDragBox(ScreenRing& ring) {
    CutRing(ring, [](const ScreenCorner& corner) { return corner.X - DragLeft; });
    CutRing(ring, [](const ScreenCorner& corner) { return DragRight - corner.X; });
    CutRing(ring, [](const ScreenCorner& corner) { return DragTop - corner.Y; });
    CutRing(ring, [](const ScreenCorner& corner) { return corner.Y - DragBottom; });
}
