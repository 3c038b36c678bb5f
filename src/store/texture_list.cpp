#include "store/texture_list.h"

#include "store/accessors.h"
#include "store/polygon_scan.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/walks.h"

#include <cstring>

namespace {

using TextureList = LinkedList<&Texture::Next, &Texture::Prev>;

TailHint<&Texture::Next, &Texture::Prev> LastTexture;

} // namespace

void AddTextureToList(Texture* texture) {
    LastTexture.Append(FirstTexture(), texture);
    if (!Mergeing)
        CurrentTexture() = texture;
    WorkSaved = 0;
}

Texture* TextureExists(const char* fileName) {
    for (Texture* texture : Along<&Texture::Next>(FirstTexture()))
        if (std::strcmp(texture->FileName, fileName) == 0)
            return texture;
    return nullptr;
}

void DeleteTexture(Texture* texture) {
    if (texture == CurrentTexture())
        CurrentTexture() = texture->Next ? texture->Next : texture->Prev;
    TextureList::Remove(FirstTexture(), texture);
    LastTexture.Forget(texture);
    FreeTexture(texture);
    WorkSaved = 0;
}

void DeleteCurrentTexture() {
    if (Texture* texture = CurrentTexture())
        DeleteTexture(texture);
}

void FreeAllTextures() {
    for (Texture* texture : Along<&Texture::Next>(FirstTexture())) {
        LastTexture.Forget(texture);
        FreeTexture(texture);
    }
    FirstTexture() = nullptr;
    if (!Mergeing)
        CurrentTexture() = nullptr;
}

int TexturesAreTheSame(const Texture* a, const Texture* b) {
    return a->Fast == b->Fast && a->ClampS == b->ClampS && a->ClampT == b->ClampT && a->MinFilter == b->MinFilter &&
           a->MagFilter == b->MagFilter && std::strcmp(a->FileName, b->FileName) == 0;
}

Texture* FindTexture(const Texture* texture) {
    for (Texture* candidate : Along<&Texture::Next>(FirstTexture()))
        if (TexturesAreTheSame(candidate, texture))
            return candidate;
    return nullptr;
}

void SearchAndReplaceTexture(Texture* old, Texture* replacement) {
    ForEverySinglePolygonEver([=](Polygon* polygon) {
        if (polygon->Texture == old)
            polygon->Texture = replacement;
    });
    WorkSaved = 0;
}
