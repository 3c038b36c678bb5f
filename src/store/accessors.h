#pragma once

#include "store/records.h"

#include <cstdint>

// The way to the current object of the current file and to its lists. What returns a reference may be assigned to; what
// returns a pointer is for reading. Missing or stale pieces that a model must have are made on the way: see each group.

/// Fills an empty file's needs when its first object is made, outside merging: the default materials, then the default
/// textures. Each is skipped when null; the new object is current when they run.
struct FirstObjectSlots {
    void (*MakeDefaultMaterials)() = nullptr;
    void (*LoadDefaultTextures)() = nullptr;
};

extern FirstObjectSlots TheFirstObjectSlots;

Object*& FirstObject();

/// In a file without objects makes the object "Unnamed", with default materials and textures unless merging; the work
/// then counts as saved.
Object*& CurrentObject();

/// Both make the root, named "Scene", when there is none.
Branch*& Scene();
Branch*& SelectedBranch();

Material*& FirstMaterial();
Texture*& FirstTexture();

/// Shared by both files; may be null.
Material*& CurrentMaterial();
Texture*& CurrentTexture();

// Of the current object.

Vertex*& FirstVertex();
Polygon*& FirstPolygon();
Vertex* FirstLooseVertex();
Vertex* FirstSelectedVertex();
Polygon* FirstSelectedPolygon();

/// Makes "SubObject1" when the object has no sub-object.
SubObject*& FirstSubObject();

/// As FirstSubObject; selects the first sub-object when the selected one is null or not in the list.
SubObject*& SelectedSubObject();

/// Makes "Lod1", with the first sub-object in it, when the object has no level of detail.
Lod*& FirstLod();

/// As FirstLod; selects the first level when the selected one is not in the list. Null stays null: nothing is selected.
Lod*& SelectedLod();

/// View 0 to 2.
View& ObjectView(int number);
View& DefaultObject3D();
/// Direction 0 to 5.
View& DefaultObject2D(int direction);
WorkAreaRecord& ObjectWorkArea();

char*& ObjectName();
std::int32_t& ObjectId();
std::int32_t& ObjectAttributes();
std::int32_t& GridIndex();
std::int32_t& GridSteps();

/// Three doubles each, model space.
double* ObjectMin();
double* ObjectMax();

/// Brings the object up to date first when its connections are stale, except while the radius itself is being computed.
double& ObjectRadius();

std::int32_t& ConnectionsOK();
std::int32_t& NormalsOK();
std::int32_t& PolygonSelectionChanged();
std::int32_t& VertexSelectionChanged();
