#include "files/body_reader.h"

#include "base/file_names.h"
#include "base/memory.h"
#include "files/fields.h"
#include "files/file_information.h"
#include "files/file_slots.h"
#include "files/items.h"
#include "files/reader.h"
#include "files/reading_progress.h"
#include "files/settings.h"
#include "store/accessors.h"
#include "store/duplicates.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/sorting.h"
#include "store/storage.h"
#include "store/structure_editing.h"
#include "store/texture_list.h"
#include "store/walks.h"
#include "textures/texture_definition.h"
#include "textures/texture_library.h"

#include <cmath>
#include <cstdio>

void BodyReader::Read() {
    ResetStorage();
    WorkSaved = 0;
    CurrentObjectNumber = -1;
    for (int tag; ReadFileByte(File, tag);) {
        NoteParsingProgress(File.Left());
        switch (tag) {
        case TagEnd:
            Finish();
            return;
        case TagMaterialSection:
            Materials.ReadSection(File);
            break;
        case TagObject:
            ReadObject();
            break;
        case TagBranchList:
            ReadSceneTree(File, Objects);
            break;
        case TagSetting:
            ReadSetting();
            break;
        case TagShortTexture:
        case TagTexture:
            ReadTexture(tag == TagTexture);
            break;
        case TagTextureDirectory: {
            char ignored[LongNameSize];
            ReadFileString(File, ignored);
            break;
        }
        case TagView:
            ReadView(File);
            break;
        default:
            SkipUnknownItem(File, UnknownData);
        }
    }
}

/// Once, whatever the file says how often: opening and closing viewports is work.
void BodyReader::ShowWantedViewports() const {
    if (WantedViewports == NoViewports)
        return;
    if (TheStorageSlots.ChangeNoViewports)
        TheStorageSlots.ChangeNoViewports();
    else
        NoViewports = NoViewports == 1 ? ViewportLimit : 1;
}

void BodyReader::Finish() {
    Materials.AddToFile();
    if (!Mergeing) {
        SelectedBranch() = nullptr;
        const auto current = Objects.find(CurrentObjectNumber);
        Object*& currentObject = CurrentObject(); // in a file without objects this makes one
        currentObject = current != Objects.end() ? current->second : FirstObject();
        SelectLod(FirstLod());
        CurrentTexture() = FirstTexture();
        DefineAllTextures();
    }
    SortObjectList();
    if (!Mergeing)
        ShowWantedViewports();
}

// Settings

void BodyReader::ReadSetting() {
    int number;
    std::int32_t size;
    if (!ReadFileByte(File, number) || !ReadFileCount(File, size))
        return;
    if (Mergeing)
        SkipFileBytes(File, size);
    else
        ReadSettingValue(number, size);
}

void BodyReader::ReadSettingValue(int number, std::int32_t size) {
    const FileSetting* setting = FindFileSetting(number);
    if (!setting) {
        SkipFileBytes(File, size);
    } else if (setting->Line) {
        ReadFileString(File, setting->Line, FileInformationSize);
    } else if (number == SettingNoViewports) {
        ReadFileInts(File, &WantedViewports, 1);
    } else {
        ReadFileInts(File, setting->Value, 1);
    }
}

// Textures

/// The texture whose number and path follow. Without an image it keeps the path, for when the image comes back; null is
/// an error.
Texture* BodyReader::ReadTextureRecord() {
    std::int32_t number;
    char path[LongNameSize];
    if (!ReadFileInts(File, &number, 1) || !ReadFileString(File, path))
        return nullptr;
    char found[MaxFileName];
    if (number < 0) {
        SetError(BadTexture);
        return nullptr;
    }
    Texture* texture = FindTextureFile(path, found) ? AddTexture(found) : nullptr;
    if (!texture) {
        TexturesMissing = 1;
        texture = NewTexture();
        texture->FileName = CopyOfString(path);
        AddTextureToList(texture);
    }
    texture->Index = number;
    return texture;
}

void BodyReader::ReadTexture(bool withFields) {
    Texture* texture = ReadTextureRecord();
    if (!withFields)
        return;
    Texture settings{};
    ReadItems(File, BadTexture, [&](int tag) {
        std::int32_t ignored;
        const bool counted = tag == TagMinFilter || tag == TagMagFilter || tag == TagFast;
        if (tag == TagClampBoth || (counted && FileVersion < WideMaterialsVersion))
            ReadFileCount(File, ignored);
        if (tag == TagClampBoth)
            tag = TagClampS;
        FieldReader field(File, tag, BadTexture);
        TextureFields(field, settings);
        if (tag == TagClampS)
            settings.ClampT = settings.ClampS;
        return field.Matched();
    });
    if (!texture)
        return;
    texture->MinFilter = settings.MinFilter;
    texture->MagFilter = settings.MagFilter;
    texture->ClampS = settings.ClampS;
    texture->ClampT = settings.ClampT;
    texture->Fast = settings.Fast;
}

void SussTextures() {
    std::map<std::int32_t, Texture*> textures;
    for (Texture* texture : Along<&Texture::Next>(FirstTexture()))
        textures[texture->Index] = texture;
    for (Polygon* polygon : EveryPolygon(CurrentObject())) {
        const auto found = polygon->Mark < 0 ? textures.end() : textures.find(polygon->Mark);
        polygon->Texture = found == textures.end() ? nullptr : found->second;
        // Drawing and writing a textured polygon need both materials.
        if (polygon->Texture && !polygon->TextureMaterial)
            polygon->TextureMaterial = polygon->Material;
    }
}

// Objects

void BodyReader::ReadObject() {
    char name[LongNameSize];
    if (!ReadFileString(File, name))
        return;
    Object* object = AddObject(name, 0, 0);
    Polygons.StartObject(object);
    SubObjectsByIndex.clear();
    SubObjectsByName.clear();
    ReadItems(File, BadFile, [&](int tag) {
        switch (tag) {
        case TagVertexSection:
            Polygons.ReadVertexSection();
            return true;
        case TagSubObject:
            ReadSubObject();
            return true;
        case TagLod:
            ReadLod();
            return true;
        case TagView:
            ReadView(File);
            return true;
        default:
            FieldReader field(File, tag, BadFile);
            ObjectIdentityFields(field, *object);
            ObjectGridFields(field, *object);
            return field.Matched();
        }
    });
    if (!FileError)
        FinishObject(object);
}

void BodyReader::FinishObject(Object* object) {
    Objects[object->Id] = object;
    std::printf("Object: %s\n", object->Name);
    if (FinishObjects) {
        if (FirstTexture()) // else no polygon has one
            SussTextures();
        DeleteDuplicateVertices();
    }
    LinkedList<&Lod::Next, &Lod::Prev>::Reverse(object->FirstLod);
    SortObject();
    SelectLod(FirstLod());
    object->ConnectionsOK = 0;
    if (TheFileSlots.RedefineMaterials)
        TheFileSlots.RedefineMaterials();
    CurrentLighting = LightingFaceted;
}

void BodyReader::ReadSubObject() {
    char name[NameSize];
    if (!ReadFileString(File, name))
        return;
    SubObject* subObject = AddSubObject(name);
    Polygons.StartSubObject(subObject);
    ReadItems(File, BadSubObject, [&](int tag) {
        switch (tag) {
        case TagVertexSection:
            Polygons.ReadVertexSection();
            return true;
        case TagPolygon:
            Polygons.ReadPolygon();
            return true;
        case TagSubObjectIndex:
            ReadFileInts(File, &subObject->Index, 1);
            return true;
        default:
            return false;
        }
    });
    SubObjectsByIndex[subObject->Index] = subObject;
    SubObjectsByName.insert_or_assign(subObject->Name, subObject);
}

SubObject* BodyReader::ReadMemberByIndex() {
    std::int32_t index;
    if (!ReadFileInts(File, &index, 1))
        return nullptr;
    const auto found = SubObjectsByIndex.find(index);
    if (found != SubObjectsByIndex.end())
        return found->second;
    SetError(UndefinedSubObject);
    return nullptr;
}

SubObject* BodyReader::ReadMemberByName() {
    char name[NameSize];
    if (!ReadFileString(File, name))
        return nullptr;
    const auto found = SubObjectsByName.find(name);
    if (found != SubObjectsByName.end())
        return found->second;
    SetError(UndefinedSubObject);
    return nullptr;
}

void BodyReader::ReadLod() {
    char name[NameSize];
    if (!ReadFileString(File, name))
        return;
    Lod* lod = AddLod(name);
    LodBead* last = nullptr;
    ReadItems(File, BadLod, [&](int tag) {
        switch (tag) {
        case TagSubObject:
        case TagSubObjectIndex:
            if (SubObject* member = tag == TagSubObject ? ReadMemberByName() : ReadMemberByIndex()) {
                LodBead* bead = NewLodBead();
                bead->SubObject = member;
                bead->Lod = lod;
                LinkedList<&LodBead::Next, &LodBead::Prev>::Append(lod->FirstBead, last, bead);
            }
            return true;
        case TagLodDistance: {
            float distance;
            if (!ReadFileFloats(File, &distance, 1))
                return true;
            if (!std::isfinite(distance))
                SetError(BadLod);
            lod->Distance = std::fabs(distance);
            return true;
        }
        case TagLodShown: {
            std::int32_t shown;
            if (ReadFileInts(File, &shown, 1) && last)
                last->Shown = shown;
            return true;
        }
        default:
            return false;
        }
    });
}
