#include "store/clean_up.h"

#include "base/debug.h"
#include "geometry/vectors.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/connections.h"
#include "store/normals.h"
#include "store/selection_lists.h"
#include "store/sorting.h"

void CleanUpObject() {
    Object* object = CurrentObject();
    const bool stale = !object->ConnectionsOK || !object->NormalsOK;
    if (!object->ConnectionsOK) {
        Trace("Connections remade\n");
        KeepObjectSorted();
        MakeConnections();
        object->ConnectionsOK = 1;
        object->NormalsOK = 0;
        object->VertexSelectionChanged = object->PolygonSelectionChanged = 1;
    }
    if (!object->NormalsOK) {
        Trace("Normals calculated\n");
        GenerateNormals();
        object->NormalsOK = 1;
    }
    if (object->VertexSelectionChanged)
        ConnectSelectedVertices();
    if (object->PolygonSelectionChanged)
        ConnectSelectedPolygons();
    if (stale)
        ObjectWasCleanedUp(object);
}

void ChangeObjectRadius(const double* point) {
    const double radius = LengthOfVector(point) * 1.1;
    double& objectRadius = ObjectRadius();
    if (objectRadius < radius)
        objectRadius = radius;
}
