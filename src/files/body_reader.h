#pragma once

#include "files/material_numbers.h"
#include "files/polygon_reader.h"
#include "files/primitives.h"
#include "files/scene_reader.h"
#include "store/records.h"
#include "store/storage.h"

#include <cstdint>
#include <map>
#include <string_view>

/// Reads the tagged body of a model file into the current file of the store.
class BodyReader {
  public:
    explicit BodyReader(FileCursor& file) : File(file), Polygons(file, Materials) {}

    /// Empties the current file and reads the body up to its end tag. After an error the store holds what was read
    /// before it. The reader serves for one body.
    void Read();

    /// Whether each object is finished when it has been read: textures, duplicate vertices, order. Clear it only to
    /// measure the parsing alone.
    bool FinishObjects = true;

  private:
    void Finish();
    void ShowWantedViewports() const;

    void ReadSetting();
    void ReadSettingValue(int number, std::int32_t size);

    void ReadTexture(bool withFields);
    Texture* ReadTextureRecord();

    void ReadObject();
    void FinishObject(Object* object);
    void ReadSubObject();
    void ReadLod();
    /// Both give null, with an error recorded, when the sub-object is unknown.
    SubObject* ReadMemberByIndex();
    SubObject* ReadMemberByName();

    FileCursor& File;
    MaterialNumbers Materials;
    PolygonReader Polygons;
    ObjectsById Objects;
    std::int32_t WantedViewports = NoViewports;

    // The sub-objects of the object that is being read; of equal ones the one read last counts.
    std::map<std::int32_t, SubObject*> SubObjectsByIndex;
    std::map<std::string_view, SubObject*> SubObjectsByName;
};
