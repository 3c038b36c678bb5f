#include "files/scene_writer.h"

#include "files/fields.h"
#include "files/format.h"
#include "store/accessors.h"

#include <vector>

namespace {

void WriteView(FileWriter& file, int identifier) {
    View& view = *ViewPlace(identifier);
    if (!view.Valid)
        return;
    FieldWriter fields(file);
    fields.Int(TagView, identifier);
    ViewFields(fields, view);
    WriteFileByte(file, TagEnd);
}

void WriteViews(FileWriter& file, int first, int count) {
    for (int i = 0; i < count; ++i)
        WriteView(file, first + i);
}

/// What stands before a branch's children.
void WriteBranchStart(FileWriter& file, Branch* branch) {
    WriteFileString(file, branch->Name ? branch->Name : "Unnamed", LongNameSize);
    FieldWriter fields(file);
    BranchFlagFields(fields, *branch);
}

/// What stands after them.
void WriteBranchEnd(FileWriter& file, const Branch* branch) {
    if (branch->Object) {
        FieldWriter fields(file);
        fields.Int(TagBranchObject, branch->Object->Id);
        fields.MatrixField(TagBranchTransform, branch->Transform);
    }
    WriteFileByte(file, branch->Next ? TagNextBranch : TagEndOfBranches);
}

} // namespace

void WriteSceneTree(FileWriter& file) {
    Branch* branch = Scene()->FirstChild;
    if (!branch)
        return;
    // Not a recursion: no tree is too deep.
    std::vector<Branch*> enclosing;
    WriteFileByte(file, TagBranchList);
    while (branch) {
        WriteBranchStart(file, branch);
        if (branch->FirstChild) {
            WriteFileByte(file, TagBranchList);
            enclosing.push_back(branch);
            branch = branch->FirstChild;
            continue;
        }
        WriteBranchEnd(file, branch);
        while (!branch->Next && !enclosing.empty()) {
            branch = enclosing.back();
            enclosing.pop_back();
            WriteBranchEnd(file, branch);
        }
        branch = branch->Next;
    }
}

void WriteObjectViews(FileWriter& file) {
    WriteView(file, ViewDefaultObject3D);
    WriteViews(file, ViewDefaultObject2D, DefaultView2DCount);
    WriteViews(file, ViewObject, ViewportLimit);
}

void WriteSceneViews(FileWriter& file) {
    WriteView(file, ViewDefaultScene3D);
    WriteViews(file, ViewDefaultScene2D, DefaultView2DCount);
    WriteViews(file, ViewScene, ViewportLimit);
}
