#include "store/texture_list.h"

#include "base/memory.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/polygon_scan.h"
#include "store/pools.h"
#include "store/storage.h"
#include "store/walks.h"

#include <cstring>
#include <string>
#include <unordered_map>

namespace {

using TextureList = LinkedList<&Texture::Next, &Texture::Prev>;

TailHint<&Texture::Next, &Texture::Prev> LastTexture;

/// The first textures of their names in the list that begins with Head; made when first asked for.
struct NameIndex {
    const Texture* Head = nullptr;
    std::unordered_map<std::string, Texture*> ByName;

    void Forget() {
        Head = nullptr;
        ByName.clear();
    }

    void Add(Texture* texture) { ByName.try_emplace(texture->FileName ? texture->FileName : "", texture); }

    Texture* Find(const char* name) {
        if (Head != FirstTexture()) {
            Forget();
            Head = FirstTexture();
            for (Texture* texture : Along<&Texture::Next>(FirstTexture()))
                Add(texture);
        }
        const auto found = ByName.find(name);
        return found == ByName.end() ? nullptr : found->second;
    }
};

NameIndex Names;

} // namespace

void AddTextureToList(Texture* texture) {
    Texture*& first = FirstTexture();
    if (first && first == Names.Head)
        Names.Add(texture);
    else
        Names.Forget();
    LastTexture.Append(first, texture);
    if (!Mergeing)
        CurrentTexture() = texture;
    WorkSaved = 0;
}

Texture* TextureExists(const char* fileName) {
    return Names.Find(fileName);
}

void RenameTexture(Texture* texture, const char* fileName) {
    char* copy = CopyOfString(fileName);
    Free(texture->FileName);
    texture->FileName = copy;
    Names.Forget();
    WorkSaved = 0;
}

void DeleteTexture(Texture* texture) {
    if (texture == CurrentTexture())
        CurrentTexture() = texture->Next ? texture->Next : texture->Prev;
    TakeTextureOffList(texture);
    FreeTexture(texture);
    WorkSaved = 0;
}

void TakeTextureOffList(Texture* texture) {
    TextureList::Remove(FirstTexture(), texture);
    LastTexture.Forget(texture);
    Names.Forget();
}

void DeleteCurrentTexture() {
    if (Texture* texture = CurrentTexture())
        DeleteTexture(texture);
}

void ExchangeTextureWithNext(Texture* texture) {
    LastTexture.Forget(texture->Next);
    TextureList::ExchangeWithNext(FirstTexture(), texture);
    Names.Forget();
    WorkSaved = 0;
}

void FreeAllTextures() {
    for (Texture* texture : Along<&Texture::Next>(FirstTexture())) {
        LastTexture.Forget(texture);
        FreeTexture(texture);
    }
    Names.Forget();
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
    EveryAppearanceChanged();
    WorkSaved = 0;
}
