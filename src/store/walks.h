#pragma once

#include "store/lists.h"
#include "store/records.h"

// The walks over a model, all for range-based loops over record pointers. Unless said otherwise the loop may remove or
// release the record it has in hand.

inline Along<&Object::Next> EveryObject(const FileStruct& file) {
    return Along<&Object::Next>(file.FirstObject);
}

inline Along<&Vertex::Next> EveryVertex(const Object* object) {
    return Along<&Vertex::Next>(object->FirstVertex);
}

/// Sub-polygons included.
inline Along<&Polygon::Next> EveryPolygon(const Object* object) {
    return Along<&Polygon::Next>(object->FirstPolygon);
}

inline Along<&SubObject::Next> EverySubObject(const Object* object) {
    return Along<&SubObject::Next>(object->FirstSubObject);
}

inline Along<&Lod::Next> EveryLod(const Object* object) {
    return Along<&Lod::Next>(object->FirstLod);
}

inline Along<&LodBead::Next> EveryLodBead(const Lod* lod) {
    return Along<&LodBead::Next>(lod->FirstBead);
}

/// The top-level polygons of a sub-object.
inline Along<&Polygon::NextSibling> EveryTopPolygon(const SubObject* subObject) {
    return Along<&Polygon::NextSibling>(subObject->FirstPolygon);
}

/// The children of a polygon, without their own descendants.
inline Along<&Polygon::NextSibling> EveryChild(const Polygon* polygon) {
    return Along<&Polygon::NextSibling>(polygon->FirstChild);
}

/// The corners of a polygon in ring order.
inline Along<&PolygonBead::Next> EveryBead(const Polygon* polygon) {
    return Along<&PolygonBead::Next>(polygon->Beads);
}

/// The beads that use a vertex. Needs valid connections.
inline Along<&PolygonBead::NextOnVertex> EveryUse(const Vertex* vertex) {
    return Along<&PolygonBead::NextOnVertex>(vertex->Beads);
}

/// The bead after `bead` in the ring: the polygon's first after its last.
inline PolygonBead* NextInRing(const Polygon* polygon, const PolygonBead* bead) {
    return bead->Next ? bead->Next : polygon->Beads;
}

/// All descendants of a polygon, depth first: a child, then that child's descendants, then the next sibling. The loop
/// must not unlink polygons.
class EverySubPolygon {
  public:
    explicit EverySubPolygon(const Polygon* root) : Root(root) {}

    class Iterator {
      public:
        Iterator(const Polygon* root, Polygon* polygon) : Root(root), Current(polygon) {}

        Polygon* operator*() const { return Current; }

        Iterator& operator++() {
            if (Current->FirstChild) {
                Current = Current->FirstChild;
                return *this;
            }
            while (!Current->NextSibling) {
                Current = Current->Parent;
                if (Current == Root) {
                    Current = nullptr;
                    return *this;
                }
            }
            Current = Current->NextSibling;
            return *this;
        }

        bool operator==(const Iterator& other) const { return Current == other.Current; }

      private:
        const Polygon* Root;
        Polygon* Current;
    };

    Iterator begin() const { return Iterator(Root, Root->FirstChild); }

    Iterator end() const { return Iterator(Root, nullptr); }

  private:
    const Polygon* Root;
};

/// A branch, its following siblings and all their descendants, each before what hangs below it. The loop may change
/// anything but the links.
class EveryBranch {
  public:
    explicit EveryBranch(Branch* first) : First(first) {}

    class Iterator {
      public:
        Iterator() = default;

        explicit Iterator(Branch* first) : First(first), Current(first) {}

        Branch* operator*() const { return Current; }

        Iterator& operator++() {
            if (Current->FirstChild) {
                Current = Current->FirstChild;
                return *this;
            }
            while (!Current->Next) {
                // Only the first of a sibling list knows the parent.
                while (Current != First && Current->Prev)
                    Current = Current->Prev;
                Current = Current == First ? nullptr : Current->Parent;
                if (!Current)
                    return *this;
            }
            Current = Current->Next;
            return *this;
        }

        bool operator==(const Iterator& other) const { return Current == other.Current; }

      private:
        Branch* First = nullptr;
        Branch* Current = nullptr;
    };

    Iterator begin() const { return Iterator(First); }

    Iterator end() const { return Iterator(); }

  private:
    Branch* First;
};

/// All branches below a root, each sibling list in order, children before their parent. The loop may prune the branch
/// in hand.
class EveryBranchBelow {
  public:
    explicit EveryBranchBelow(Branch* root) : Root(root) {}

    class Iterator {
      public:
        Iterator(Branch* root, Branch* branch) : Root(root), Current(branch) { FindFollowing(); }

        Branch* operator*() const { return Current; }

        Iterator& operator++() {
            Current = Following;
            FindFollowing();
            return *this;
        }

        bool operator==(const Iterator& other) const { return Current == other.Current; }

        static Branch* DeepestFirst(Branch* branch) {
            while (branch && branch->FirstChild)
                branch = branch->FirstChild;
            return branch;
        }

      private:
        void FindFollowing() {
            Following = nullptr;
            if (!Current)
                return;
            if (Current->Next) {
                Following = DeepestFirst(Current->Next);
                return;
            }
            const Branch* first = Current;
            while (first->Prev)
                first = first->Prev;
            Following = first->Parent == Root ? nullptr : first->Parent;
        }

        Branch* Root;
        Branch* Current;
        Branch* Following = nullptr;
    };

    Iterator begin() const { return Iterator(Root, Root ? Iterator::DeepestFirst(Root->FirstChild) : nullptr); }

    Iterator end() const { return Iterator(Root, nullptr); }

  private:
    Branch* Root;
};
