#include "textures/texture_commands.h"

#include "base/debug.h"
#include "base/directories.h"
#include "base/slots.h"
#include "gooey/file_listing.h"
#include "gooey/file_selector.h"
#include "gooey/message_table.h"
#include "gooey/messages.h"
#include "store/accessors.h"
#include "store/texture_list.h"
#include "textures/picture_problems.h"
#include "textures/pictures.h"
#include "textures/texture_changes.h"
#include "textures/texture_definition.h"
#include "textures/texture_library.h"
#include "textures/texture_usage.h"

namespace {

/// An image is looked for where the last one was, the first one beside the model.
void SelectImage(void (*callback)(int, const char*, const char*)) {
    const char* directory = *LastTextureDir ? LastTextureDir : *FilePath ? FilePath : nullptr;
    DoFileSelector(FileToOpen | FileShowsPicture, directory, LastTextureName, nullptr, callback, nullptr);
}

/// After the texture's image has changed.
void ShowTexture(Texture* texture) {
    DefineTexture(texture);
    if (TheTextureChangeSlots.ChangeTextureSelection)
        TheTextureChangeSlots.ChangeTextureSelection(texture);
    else
        CurrentTexture() = texture;
    CallSlot(TheTextureDefinitionSlots.DirtyTextureGizmo);
}

/// Tells why a file gives no texture, if it does not. All of it is looked at, not the header alone: once it is a
/// texture, nobody would be told.
bool IsUsable(const std::string& path) {
    PixelBlock block;
    const std::string problem = ReadPicture(path.c_str(), block);
    if (problem == FileIsNoImage)
        TellUser(MsgTextureError);
    else if (!problem.empty())
        TellUserS((std::string(msg(MsgTextureError)) + "\n\n" + problem).c_str());
    return problem.empty();
}

void LoadChosenTexture(int, const char* directory, const char* name) {
    Trace("Load texture %s/%s\n", directory, name);
    LoadTextureFile(PathIn(directory, name).c_str());
}

void TakeChosenTexture(int, const char* directory, const char* name) {
    Texture* texture = CurrentTexture();
    const std::string path = PathIn(directory, name);
    if (!texture || !IsUsable(path))
        return;
    RememberTextureLocation(path.c_str());
    RenameTexture(texture, path.c_str());
    ShowTexture(texture);
    CallSlot(TheTextureChangeSlots.DirtyModelWindows);
    TextureAppChange();
}

void RemovePolygonReferences(int ok) {
    if (ok)
        FinishTextureDelete();
}

void DeleteThemAll(int ok) {
    if (ok)
        FinishDeletingAllTextures();
}

} // namespace

void LoadTextureFile(const char* path) {
    if (!IsUsable(path))
        return;
    Texture* texture = AddTexture(path);
    if (!texture) {
        TellUser(MsgTextureError);
        return;
    }
    ShowTexture(texture);
    TextureAppChange();
}

void LoadTexture() {
    SelectImage(LoadChosenTexture);
}

void ReplaceTexture() {
    SelectImage(TakeChosenTexture);
}

void DoTextureDelete() {
    const Texture* texture = CurrentTexture();
    if (!texture)
        return;
    FlagUsedTextures();
    if (texture->Used)
        DoOkCancel(msg(MsgTextureInUse), RemovePolygonReferences);
    else
        FinishTextureDelete();
}

void DeleteAllTextures() {
    DoOkCancel(msg(MsgDeleteAllTextures), DeleteThemAll);
}
