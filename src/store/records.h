#pragma once

#include "geometry/matrices.h"
#include "store/view_record.h"

#include <cstdint>

// The records of a model. Plain structures joined by raw pointers; lists are doubly linked through Next and Prev unless
// said otherwise. Coordinates are model space, metres; flags are 0 for false and anything else for true.

struct Vertex;
struct Polygon;
struct PolygonBead;
struct SubObject;
struct Lod;
struct LodBead;
struct Object;
struct Branch;
struct Material;
struct Texture;

/// One corner place of a model, shared by the polygons that meet there. Pooled.
struct Vertex {
    Vertex* Next; // the object's vertices
    Vertex* Prev;
    Vertex* Copy;            // duplicate while an object or a set of polygons is being copied
    Vertex* NextInSubset;    // next on the object's loose or selected list; a vertex is on at most one
    Vertex* NextInGroup;     // scratch link of one running operation
    PolygonBead* Beads;      // first bead that uses the vertex, through NextOnVertex; valid while ConnectionsOK
    std::int32_t Uses;       // number of those beads, 0 for a loose vertex; valid while ConnectionsOK
    std::int32_t Mark;       // scratch number
    std::int32_t Selected;   // flag
    double Position[3];      // x, y, z
    double SavedPosition[3]; // Position at the start of an interactive move
};

/// A ring of beads, and the sub-polygons (holes and decals) drawn on it. Pooled.
struct Polygon {
    Polygon* Next; // every polygon of the object, sub-polygons included
    Polygon* Prev;
    Polygon* NextSibling; // top-level polygons of a sub-object, or children of a parent
    Polygon* PrevSibling;
    Polygon* Parent;     // null for a top-level polygon
    Polygon* FirstChild; // first sub-polygon
    Polygon* Copy;       // duplicate during an object copy
    Polygon* NextSelected;
    ::SubObject* SubObject;      // owner; set for sub-polygons too
    PolygonBead* Beads;          // in ring order; the ring closes from the last to the first
    ::Texture* Texture;          // null when untextured
    std::int32_t Selected;       // flag
    std::int32_t Mark;           // scratch flag
    ::Material* Material;        // of an untextured polygon
    ::Material* TextureMaterial; // used while textured
    std::uint8_t Lighting;       // LightingUnlit, LightingFaceted or LightingSmooth
    std::uint8_t Flags;          // PolygonFlag bits
    std::int32_t LightGroup;     // normals are averaged only within a light group and sub-object
    float Normal[3];             // unit plane normal
};

enum PolygonLighting : std::uint8_t {
    LightingUnlit = 0,   // drawn in the material's PackedColour
    LightingFaceted = 1, // one normal for the polygon
    LightingSmooth = 2   // one normal a bead
};

enum PolygonFlag : std::uint8_t {
    PolygonGeneratesTexture = 0x01, // texture coordinates come from the graphics layer, not from the beads
    PolygonIsSub = 0x02             // brought into line with Parent whenever a file is written
};

/// One corner of a polygon. Pooled, singly linked in ring order.
struct PolygonBead {
    PolygonBead* Next;         // null in the last
    PolygonBead* NextOnVertex; // next bead that uses the same vertex; valid while ConnectionsOK
    ::Vertex* Vertex;
    ::Polygon* Polygon;
    float Normal[3];          // of this corner when the polygon is smooth
    float TexCoord[2];        // u, v
    std::int32_t SmoothState; // scratch of normal smoothing
};

/// A named group of polygons. Pooled.
struct SubObject {
    SubObject* Next;
    SubObject* Prev;
    SubObject* Copy;       // duplicate during an object copy
    char* Name;            // owned
    std::int32_t Index;    // sequence number given while a file is written
    Polygon* FirstPolygon; // top-level polygons, through NextSibling
    std::int32_t Visible;  // flag: belongs to the selected level of detail
    double Max[3], Min[3]; // box of its vertices, computed with the normals
};

/// A level of detail: the sub-objects shown below a switching distance. Pooled.
struct Lod {
    Lod* Next; // ascending Distance
    Lod* Prev;
    char* Name;      // owned
    double Distance; // metres
    LodBead* FirstBead;
};

/// Membership of a sub-object in a level of detail. Pooled.
struct LodBead {
    LodBead* Next;
    LodBead* Prev;
    ::SubObject* SubObject;
    ::Lod* Lod;         // owner
    std::int32_t Shown; // stays visible while the structure editor hides sub-objects
};

/// One model. Owns its vertices, polygons, beads, sub-objects, levels, name and snapshot.
struct Object {
    Object* Next;
    Object* Prev;
    Object* UndoCopy; // snapshot taken before the last undoable change, or null
    char* Name;       // owned
    Vertex* FirstVertex;
    Vertex* FirstLooseVertex;      // unselected and used by no polygon, through NextInSubset
    Vertex* FirstSelectedVertex;   // through NextInSubset
    Polygon* FirstPolygon;         // sub-polygons included
    Polygon* FirstSelectedPolygon; // through NextSelected
    SubObject* FirstSubObject;
    Lod* FirstLod;
    SubObject* SelectedSubObject; // new polygons go into it
    Lod* SelectedLod;             // may be null
    ::View View[ViewportLimit];
    ::View DefaultObject3D;
    ::View DefaultObject2D[DefaultView2DCount];
    WorkAreaRecord WorkArea;
    double Min[3], Max[3];   // box of the vertices, computed with the normals
    double Radius;           // of a sphere about the origin, metres
    std::int32_t GridIndex;  // grid size index
    std::int32_t GridSteps;  // grid subdivision count
    std::int32_t Id;         // sequence number given while a file is written
    std::int32_t Attributes; // ObjectAttribute bits, stored in files

    // The cache state. Edits only clear or set these; CleanUpObject brings what they guard up to date.
    std::int32_t ConnectionsOK;           // the vertices' Beads and Uses are valid
    std::int32_t NormalsOK;               // normals, Min, Max and Radius are valid
    std::int32_t PolygonSelectionChanged; // the selected-polygon list must be rebuilt
    std::int32_t VertexSelectionChanged;  // the selected- and loose-vertex lists must be rebuilt

    std::int32_t MergeMark; // scratch flag of merging

    double PlacementShift[3]; // of a snapshot: how far its placements move, model space, when Undo brings it back
};

enum ObjectAttribute : std::int32_t {
    ObjectIsBillboard = 0x01 // turns about its z axis to face the eye in scene views
};

/// A node of a scene tree: a placed object, or a group of the branches below it. Pooled. Owns its name and its subtree,
/// not its object.
struct Branch {
    Branch* Prev; // siblings
    Branch* Next;
    Branch* FirstChild;
    Branch* Parent;                                   // set in the first of a sibling list only
    Branch* Copy;                                     // counterpart of a scene copy, both ways
    char* Name;                                       // owned, or null
    std::int32_t X, Y, Width, Height, BoxX, BoxWidth; // layout in the scene builder, pixels
    std::int32_t Collapsed;                           // flag: children are hidden in the scene builder
    std::int32_t Visible;                             // flag: drawn
    ::Object* Object;                                 // null for a group
    Matrix Transform;                                 // places the branch's own object only, never its descendants'
    Matrix MoveStart;                                 // Transform at the start of an interactive move
    std::int32_t Selected;                            // flag
    std::int32_t Copied;                              // scratch flag of the scene clipboard
    double Min[3], Max[3];                            // the object's box in scene space
};

/// Colours of a surface. Not pooled.
struct Material {
    Material* Prev;
    Material* Next;
    std::int32_t GLIndex; // number in the graphics layer, -1 once freed
    std::int32_t Index;   // sequence number given while a file is written
    char* Name;           // owned
    float Ambient[3];     // red, green, blue, 0 to 1
    float Diffuse[3];
    float Specular[3];
    float Emission[3];
    float Shininess;
    float Alpha;                // opacity, 0 to 1
    std::uint32_t PackedColour; // diffuse and alpha in bytes: red lowest, then green, blue, alpha
    std::int32_t Used;          // scratch flag of the used-material sweep
    std::int32_t PaletteSlot;   // where the palette last drew it
};

/// An image file with its filter and clamp settings. Not pooled.
struct Texture {
    Texture* Prev;
    Texture* Next;
    char* FileName;                         // owned
    std::int32_t GLId;                      // definition number in the graphics layer, -1 once freed
    std::int32_t Width, Height, Components; // pixels; bytes a pixel
    std::int32_t Index;                     // sequence number given while a file is written
    std::int32_t Used;                      // scratch flag of the unused-texture sweep
    std::int32_t PaletteSlot;               // where the texture gizmo last drew it
    float Aspect;                           // width divided by height; 1 when the image could not be read
    std::int32_t Fast;                      // flag: a reduced-accuracy format is wanted
    float MinFilter, MagFilter;             // filter tokens, 0 for the default
    std::int32_t ClampS, ClampT;            // flags: clamp instead of repeat
};

struct WorkPolyBead;

/// A polygon under construction, or one taken out of the scene for picking; it owns its corners. Pooled.
struct WorkPoly {
    WorkPoly* Next; // siblings
    WorkPoly* Prev;
    WorkPoly* FirstChild;
    WorkPoly* Parent;
    WorkPolyBead* FirstBead;
    float Normal[3]; // valid after CalcWorkPolyNormal
};

struct WorkPolyBead {
    WorkPolyBead* Next; // ring order
    WorkPolyBead* Prev;
    double Position[3];
    float TexCoord[2];
    std::int32_t Reflex; // 1: concave with respect to the work polygon's normal
};

/// One corner of a polygon that is being clipped for drawing or picking. Pooled, singly linked.
struct ClipBead {
    ClipBead* Next;
    float Position[3]; // model space, or scene space of a placed object
    float Normal[3];
    float TexCoord[2];
    float Eye[3]; // eye space
    std::uint32_t Outcode;
};

/// One file's data.
struct FileStruct {
    Texture* FirstTexture;
    Material* FirstMaterial;
    Branch* Scene; // root, created on first use
    Branch* SelectedBranch;
    Object* FirstObject;
    Object* CurrentObject; // being edited
};
