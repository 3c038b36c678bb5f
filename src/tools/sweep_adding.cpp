#include "tools/sweep_adding.h"

#include "gooey/cursors.h"
#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/duplicates.h"
#include "store/polygon_editing.h"
#include "store/undo.h"
#include "store/walks.h"
#include "store/work_polygons.h"
#include "tools/creation_guards.h"
#include "tools/sweep.h"
#include "views/viewports.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

namespace {

/// Makes the polygons of the cells, region by region: a region is what lies between creases, and is lit by itself.
class RegionMaker {
  public:
    RegionMaker(Sweep& sweep, const Matrix* matrix)
        : Swept(sweep),
          Placement(matrix),
          Textured(SweepIsTextured(sweep)) {
        for (const Polygon* polygon : EveryPolygon(CurrentObject()))
            LastGroup = std::max(LastGroup, polygon->LightGroup);
    }

    void Make() {
        for (SweepCell& cell : Swept.Mesh)
            cell.Done = 0;
        for (int row = 1; row <= RowsOf(Swept); ++row)
            for (int column = 1; column <= ColumnsOf(Swept); ++column)
                if (!CellOf(Swept, row, column).Done)
                    MakeRegion(row, column);
    }

  private:
    void MakeRegion(int firstRow, int firstColumn) {
        int rowsEnd = firstRow + 1, columnsEnd = firstColumn + 1;
        while (rowsEnd <= RowsOf(Swept) && !(CellOf(Swept, rowsEnd, firstColumn).Crease & ProfileCrease))
            ++rowsEnd;
        while (columnsEnd <= ColumnsOf(Swept) && !(CellOf(Swept, firstRow, columnsEnd).Crease & PathCrease))
            ++columnsEnd;
        const int front = GroupOf(firstRow, rowsEnd, firstColumn, columnsEnd), back = front + 1;
        for (int row = firstRow; row < rowsEnd; ++row)
            for (int column = firstColumn; column < columnsEnd; ++column) {
                CellOf(Swept, row, column).Done = 1;
                MakePolygon(row, column, front, back);
            }
    }

    /// The light group of a region, for the backs of its polygons the next one. A region that goes on where a closed
    /// curve begins is lit together with the one there.
    int GroupOf(int firstRow, int rowsEnd, int firstColumn, int columnsEnd) {
        const bool aroundProfile =
            Swept.Profile.Closed && rowsEnd > RowsOf(Swept) && !(CellOf(Swept, 1, firstColumn).Crease & ProfileCrease);
        const bool aroundPath =
            PathIsClosed(Swept) && columnsEnd > ColumnsOf(Swept) && !(CellOf(Swept, firstRow, 1).Crease & PathCrease);
        const auto [group, isNew] =
            Groups.try_emplace({aroundProfile ? 1 : firstRow, aroundPath ? 1 : firstColumn}, LastGroup + 1);
        if (isNew)
            LastGroup += 2;
        return group->second;
    }

    void MakePolygon(int row, int column, int front, int back) const {
        const double* corners[4];
        CornersOf(Swept, row, column, corners);
        PolygonBead* beads = nullptr;
        for (int corner = 0; corner < 4; ++corner) {
            double place[3];
            std::memcpy(place, corners[corner], sizeof place);
            if (Placement)
                TransformCoordinate(place, *Placement, place);
            PolygonBead* bead = AddPolygonBead(beads, AddVertex(place[0], place[1], place[2]));
            if (Textured)
                TextureAtCorner(Swept, row, column, corner, bead->TexCoord);
        }
        Polygon* polygon = AddPolygon(beads, nullptr);
        polygon->LightGroup = front;
        if (Textured) {
            polygon->Texture = CurrentTexture();
            polygon->TextureMaterial = CurrentMaterial();
        }
        if (Swept.InsideOut && !Swept.DoubleSided)
            ReversePolygon(polygon);
        if (!Swept.DoubleSided)
            return;
        Polygon* behind = CopyOfPolygon(polygon, 0);
        ReversePolygon(behind);
        LinkPolygon(behind, nullptr);
        behind->LightGroup = back;
    }

    Sweep& Swept;
    const Matrix* const Placement;
    const bool Textured;
    int LastGroup = 0;
    std::map<std::pair<int, int>, int> Groups; // by the first row and column of their region
};

void AddCaps(Sweep& sweep, const Matrix* matrix) {
    const int lighting = CurrentLighting;
    CurrentLighting = LightingFaceted;
    AddWorkPolyToModel(sweep.Caps, SweepIsTextured(sweep) ? CurrentTexture() : nullptr, sweep.DoubleSided, matrix);
    CurrentLighting = lighting;
}

} // namespace

int AddSweepToModel(Sweep& sweep, const Matrix* matrix) {
    if (!CreationInObjectMode())
        return 0;
    RemakeSweepMesh(sweep);
    if (!HasMesh(sweep) || !PolygonCreationAllowed())
        return 0;
    CopyCurrentObject();
    Busy();
    RegionMaker(sweep, matrix).Make();
    AddCaps(sweep, matrix);
    DeleteDuplicateVertices();
    DeselectAllPolygons();
    DirtyModelWindows();
    Unbusy();
    return 1;
}
