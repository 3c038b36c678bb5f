#include "store/store_checker.h"

#include "store/pools.h"
#include "store/scene.h"
#include "store/storage.h"

#include <cmath>
#include <cstring>
#include <map>
#include <set>
#include <sstream>

namespace {

class Checker {
  public:
    std::string Run(const FileStruct& file) {
        const std::set<const Object*> objects = List(file.FirstObject, "objects");
        if (file.CurrentObject || !objects.empty())
            Expect(objects.count(file.CurrentObject), "the current object is on the list");
        int snapshots = 0;
        for (const Object* object : objects) {
            CheckObject(object);
            if (object->UndoCopy) {
                ++snapshots;
                Expect(!objects.count(object->UndoCopy), "a snapshot is on no list");
                Expect(!object->UndoCopy->UndoCopy, "a snapshot has no snapshot");
                CheckObject(object->UndoCopy);
            }
        }
        Expect(snapshots <= 1, "at most one snapshot");
        const std::set<const Material*> materials = List(file.FirstMaterial, "materials");
        const std::set<const Texture*> textures = List(file.FirstTexture, "textures");
        for (const Object* object : objects)
            for (const Polygon* polygon = object->FirstPolygon; polygon; polygon = polygon->Next) {
                Expect(!polygon->Material || materials.count(polygon->Material), "a polygon's material is the file's");
                Expect(!polygon->Texture || textures.count(polygon->Texture), "a polygon's texture is the file's");
            }
        CheckBranches(file.Scene, nullptr, objects);
        if (&file == &MainFile) {
            // The undo copy and the clipboard show the main file's objects.
            CheckBranches(SceneUndo, nullptr, objects);
            CheckBranches(ScenePaste, nullptr, objects);
        }
        return Problems.str();
    }

  private:
    void Expect(bool holds, const char* rule) {
        if (!holds)
            Problems << "broken: " << rule << '\n';
    }

    template <class Link>
    void ExpectSound(const Link* link) {
        Expect(reinterpret_cast<std::uintptr_t>(link) != PoisonLink, "no link of a released record");
    }

    template <class Record>
    std::set<const Record*> List(const Record* first, const char* name) {
        std::set<const Record*> records;
        const Record* previous = nullptr;
        for (const Record* record = first; record; record = record->Next) {
            if (!records.insert(record).second) {
                Problems << "broken: the list of " << name << " has no loop\n";
                return records;
            }
            Expect(record->Prev == previous, "every record points back");
            previous = record;
        }
        return records;
    }

    void CheckSiblings(const Polygon* first, const Polygon* parent, const SubObject* subObject, int depth) {
        const Polygon* previous = nullptr;
        for (const Polygon* polygon = first; polygon; polygon = polygon->NextSibling) {
            if (!Placed.insert(polygon).second) {
                Expect(false, "a polygon has one place in the structure");
                return;
            }
            Expect(polygon->PrevSibling == previous, "every sibling points back");
            Expect(polygon->Parent == parent, "a polygon knows its parent");
            Expect(polygon->SubObject != nullptr, "a polygon has a sub-object");
            if (!parent)
                Expect(polygon->SubObject == subObject, "a top-level polygon knows its sub-object");
            CheckSiblings(polygon->FirstChild, polygon, subObject, depth + 1);
            previous = polygon;
        }
    }

    void CheckObject(const Object* object) {
        Expect(object->Name != nullptr, "an object has a name");
        const auto vertices = List(object->FirstVertex, "vertices");
        const auto polygons = List(object->FirstPolygon, "polygons");
        const auto subObjects = List(object->FirstSubObject, "sub-objects");
        Placed.clear();
        for (const SubObject* subObject : subObjects) {
            Expect(subObject->Name != nullptr, "a sub-object has a name");
            CheckSiblings(subObject->FirstPolygon, nullptr, subObject, 0);
        }
        Expect(Placed == polygons, "every polygon of the list has a place in the structure, and no other has");

        std::map<const Vertex*, int> uses;
        std::set<const PolygonBead*> beads;
        for (const Polygon* polygon : polygons) {
            ExpectSound(polygon->Beads);
            ExpectSound(polygon->SubObject);
            Expect(subObjects.count(polygon->SubObject), "a polygon's sub-object is the object's");
            for (const PolygonBead* bead = polygon->Beads; bead; bead = bead->Next) {
                if (!beads.insert(bead).second) {
                    Expect(false, "a bead has one place");
                    break;
                }
                Expect(bead->Polygon == polygon, "a bead knows its polygon");
                Expect(vertices.count(bead->Vertex), "a bead's vertex is the object's");
                ++uses[bead->Vertex];
            }
        }
        for (const Lod* lod : List(object->FirstLod, "levels"))
            for (const LodBead* bead : List(lod->FirstBead, "members")) {
                Expect(bead->Lod == lod, "a member knows its level");
                Expect(subObjects.count(bead->SubObject), "a member is a sub-object of the object");
            }
        if (object->ConnectionsOK)
            for (const Vertex* vertex : vertices) {
                int count = 0;
                for (const PolygonBead* bead = vertex->Beads; bead; bead = bead->NextOnVertex, ++count)
                    Expect(bead->Vertex == vertex && beads.count(bead), "a connection leads to a bead of the vertex");
                Expect(count == uses[vertex] && count == vertex->Uses, "connections and uses are complete");
            }
        if (object->ConnectionsOK && object->NormalsOK)
            for (const Vertex* vertex : vertices)
                for (int axis = 0; axis < 3; ++axis)
                    Expect(vertex->Position[axis] >= object->Min[axis] && vertex->Position[axis] <= object->Max[axis],
                           "the box holds every vertex");
    }

    void CheckBranches(const Branch* first, const Branch* parent, const std::set<const Object*>& objects) {
        const Branch* previous = nullptr;
        for (const Branch* branch = first; branch; branch = branch->Next) {
            ExpectSound(branch->Next);
            ExpectSound(branch->Parent);
            Expect(branch->Prev == previous, "every branch points back");
            Expect(branch->Parent == (previous ? nullptr : parent), "only a first child has the parent");
            Expect(!branch->Object || objects.count(branch->Object), "a branch's object is the file's");
            CheckBranches(branch->FirstChild, branch, objects);
            previous = branch;
        }
    }

    std::ostringstream Problems;
    std::set<const Polygon*> Placed;
};

} // namespace

std::string CheckFile(const FileStruct& file) {
    return Checker().Run(file);
}
