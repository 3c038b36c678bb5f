#include "tools/grid_points.h"

#include "base/slots.h"
#include "store/lists.h"
#include "store/new_vertices.h"
#include "views/moves.h"
#include "views/viewports.h"

#include <algorithm>

const int AxisList[DefaultView2DCount][2] = {{0, 1}, {0, 1}, {1, 2}, {1, 2}, {0, 2}, {0, 2}};

namespace {

void MoveInPlaneOf(const View* view, double* coordinate, const double* point) {
    if (view->Perspective)
        for (int axis = 0; axis < 3; ++axis)
            coordinate[axis] = point[axis];
    else
        for (const int axis : AxisList[view->Direction])
            coordinate[axis] = point[axis];
}

class PointDrag : public ViewDrag {
  public:
    PointDrag(View* view, double* coordinate, int button, void (*moved)())
        : ViewDrag(view, button),
          Coordinate(coordinate),
          Moved(moved) {
        std::copy_n(coordinate, 3, Before);
    }

  protected:
    bool Step() override {
        double point[3];
        if (!GridPointUnderPointer(Dragged, point))
            return false;
        double last[3];
        std::copy_n(Coordinate, 3, last);
        MoveInPlaneOf(Dragged, Coordinate, point);
        if (std::equal(last, last + 3, Coordinate))
            return false;
        CallSlot(Moved);
        return true;
    }

    bool Cancel() override {
        std::copy_n(Before, 3, Coordinate);
        CallSlot(Moved);
        return true;
    }

  private:
    double* Coordinate;
    void (*Moved)();
    double Before[3];
};

} // namespace

Vertex* MakeVertexOnGrid(View* view, int drag) {
    double point[3];
    if (!GridPointUnderPointer(view, point))
        return nullptr;
    Vertex* made = AddNewVertex(point[0], point[1], point[2]);
    if (drag) {
        for (Vertex* vertex : Along<&Vertex::Next>(NewVertices))
            vertex->Selected = vertex == made;
        DragCoordAroundGrid(view, made->Position, gl::LEFTMOUSE, nullptr);
    }
    DirtyModelWindows();
    return made;
}

void DragCoordAroundGrid(View* view, double* coordinate, int button, void (*moved)()) {
    PointDrag(view, coordinate, button, moved).Run();
}
