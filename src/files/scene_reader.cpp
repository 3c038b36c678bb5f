#include "files/scene_reader.h"

#include "base/memory.h"
#include "files/fields.h"
#include "files/items.h"
#include "store/accessors.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/undo.h"

#include <vector>

namespace {

/// A new branch with the name that follows in the file; null, with an error recorded, when none does.
Branch* ReadNewBranch(FileCursor& file, Branch* place, BranchDirection direction) {
    char name[LongNameSize];
    if (!ReadFileString(file, name))
        return nullptr;
    Branch* branch = AddBranch(place, direction);
    branch->Name = CopyOfString(name);
    return branch;
}

void ReadBranchObject(FileCursor& file, Branch* branch, const ObjectsById& objects) {
    std::int32_t id;
    if (!ReadFileInts(file, &id, 1))
        return;
    const auto found = objects.find(id);
    if (found == objects.end())
        SetError(UnknownTreeObject);
    else
        branch->Object = found->second;
}

/// Reads an item of a branch that is no list. False when the tag is unknown.
bool ReadBranchItem(FileCursor& file, int tag, Branch* branch, const ObjectsById& objects) {
    if (tag == TagBranchObject) {
        ReadBranchObject(file, branch, objects);
        return true;
    }
    FieldReader field(file, tag, BadTree);
    BranchFlagFields(field, *branch);
    field.MatrixField(TagBranchTransform, branch->Transform);
    return field.Matched();
}

} // namespace

void ReadSceneTree(FileCursor& file, const ObjectsById& objects) {
    // Not a recursion: the tree may be as deep as the file is long.
    std::vector<Branch*> enclosing;
    Branch* branch = ReadNewBranch(file, Scene(), BranchAsChild);
    for (int tag; branch && ReadFileByte(file, tag);) {
        switch (tag) {
        case TagBranchList:
            enclosing.push_back(branch);
            branch = ReadNewBranch(file, branch, BranchAsChild);
            break;
        case TagEndOfBranches:
            if (enclosing.empty())
                return;
            branch = enclosing.back();
            enclosing.pop_back();
            break;
        case TagNextBranch:
            branch = ReadNewBranch(file, branch, BranchAsSibling);
            if (!branch)
                SetError(BadTree);
            break;
        default:
            if (!ReadBranchItem(file, tag, branch, objects))
                SkipUnknownItem(file, BadTree);
        }
    }
}

void ReadView(FileCursor& file) {
    std::int32_t identifier;
    if (!ReadFileInts(file, &identifier, 1))
        return;
    View view{};
    ReadItems(file, BadView, [&](int tag) {
        FieldReader field(file, tag, BadView);
        ViewFields(field, view);
        return field.Matched();
    });
    if (FileError)
        return;
    // In the 3D view it tells the plane of the grid, 255 for one that was aligned by hand.
    if (!view.Perspective && view.Direction >= DefaultView2DCount) {
        SetError(BadView);
        return;
    }
    view.Valid = view.Stale = 1;
    if (IsSceneView(identifier) ? Mergeing : !FirstObject())
        return;
    if (View* place = ViewPlace(identifier))
        CopyView(*place, view);
}
