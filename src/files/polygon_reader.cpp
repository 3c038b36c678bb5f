#include "files/polygon_reader.h"

#include "files/format.h"
#include "files/items.h"
#include "files/old_axes.h"
#include "files/reading_progress.h"
#include "store/accessors.h"
#include "store/lists.h"
#include "store/polygon_editing.h"
#include "store/pools.h"

#include <cmath>

namespace {

/// Bytes of a vertex in a vertex section.
constexpr std::size_t VertexBytes = 12;

bool AreFinite(const float* values, int n) {
    for (int i = 0; i < n; ++i)
        if (!std::isfinite(values[i]))
            return false;
    return true;
}

void ReadVector(FileCursor& file, float (&vector)[3]) {
    if (ReadFileFloats(file, vector, 3) && HasOldAxes())
        TurnOldAxes(vector);
}

} // namespace

void PolygonReader::StartObject(Object* object) {
    Owner = object;
    Group = nullptr;
    LastVertex = nullptr;
    LastPolygon = LastInGroup = nullptr;
    HasVertexNumbers = false;
}

void PolygonReader::ReadVertexSection() {
    std::int32_t n;
    if (!ReadFileInts(File, &n, 1))
        return;
    if (n < 0 || File.Left() / VertexBytes < static_cast<std::size_t>(n)) {
        SetError(BadFile);
        return;
    }
    VertexNumbers.resize(n);
    HasVertexNumbers = true;
    for (Vertex*& vertex : VertexNumbers) {
        NoteParsingProgress(File.Left());
        if (FileError)
            return;
        float position[3];
        ReadVector(File, position);
        vertex = AddVertexAt(position);
        if (!vertex)
            return;
    }
}

/// Null, with an error recorded, when the position is none.
Vertex* PolygonReader::AddVertexAt(const float (&position)[3]) {
    if (!AreFinite(position, 3)) {
        SetError(BadVertex);
        return nullptr;
    }
    Vertex* vertex = NewVertex(position[0], position[1], position[2]);
    LinkedList<&Vertex::Next, &Vertex::Prev>::Append(Owner->FirstVertex, LastVertex, vertex);
    return vertex;
}

PolygonReader::Unfinished PolygonReader::NewUnfinished(Unfinished* parent) {
    Polygon* polygon = NewPolygon();
    LinkedList<&Polygon::Next, &Polygon::Prev>::Append(Owner->FirstPolygon, LastPolygon, polygon);
    LinkedList<&Polygon::NextSibling, &Polygon::PrevSibling>::Append(
        parent ? parent->Polygon->FirstChild : Group->FirstPolygon, parent ? parent->LastChild : LastInGroup, polygon);
    polygon->Parent = parent ? parent->Polygon : nullptr;
    polygon->SubObject = Group;
    polygon->Material = CurrentMaterial();
    polygon->Lighting = static_cast<std::uint8_t>(CurrentLighting);
    polygon->Mark = -1;
    return {polygon, nullptr, nullptr};
}

void PolygonReader::ReadPolygon() {
    // Not a recursion: sub-polygons may be nested as deeply as the file is long.
    Enclosing.clear();
    NoteParsingProgress(File.Left());
    Unfinished unfinished = NewUnfinished(nullptr);
    for (int tag; ReadFileByte(File, tag);) {
        if (tag == TagPolygon) {
            Enclosing.push_back(unfinished);
            unfinished = NewUnfinished(&Enclosing.back());
        } else if (tag != TagEnd) {
            ReadItem(tag, unfinished);
        } else {
            Finish(unfinished.Polygon);
            if (Enclosing.empty())
                return;
            unfinished = Enclosing.back();
            Enclosing.pop_back();
        }
    }
}

void PolygonReader::ReadItem(int tag, Unfinished& unfinished) {
    Polygon* polygon = unfinished.Polygon;
    int byte;
    switch (tag) {
    case TagCorner:
        ReadCorner(unfinished);
        break;
    case TagPolygonMaterial:
        polygon->Material = ReadMaterial();
        break;
    case TagTextureMaterial:
        polygon->TextureMaterial = ReadMaterial();
        break;
    case TagLighting:
        if (!ReadFileByte(File, byte))
            break;
        if (byte > LightingSmooth)
            SetError(UnknownLighting);
        else
            polygon->Lighting = static_cast<std::uint8_t>(byte);
        break;
    case TagPolygonNormal:
        ReadVector(File, polygon->Normal);
        break;
    case TagPolygonTexture:
        ReadFileInts(File, &polygon->Mark, 1);
        break;
    case TagLightGroup:
        ReadFileInts(File, &polygon->LightGroup, 1);
        break;
    case TagPolygonFlags:
        if (ReadFileByte(File, byte))
            polygon->Flags = static_cast<std::uint8_t>(byte);
        break;
    default:
        SkipUnknownItem(File, BadPolygon);
    }
}

Material* PolygonReader::ReadMaterial() {
    int number;
    const int read = FileVersion < WideMaterialsVersion ? ReadFileByte(File, number) : ReadFileShort(File, number);
    return read ? Materials.Use(number) : nullptr;
}

void PolygonReader::Finish(Polygon* polygon) {
    if (!polygon->Material)
        polygon->Material = Materials.UseFirst();
}

void PolygonReader::ReadCorner(Unfinished& unfinished) {
    PolygonBead* bead = nullptr;
    ReadItems(File, BadVertex, [&](int tag) {
        switch (tag) {
        case TagCornerVertex:
        case TagCornerPosition: {
            if (bead) {
                SetError(BadVertex);
                return true;
            }
            float position[3];
            Vertex* vertex = nullptr;
            if (tag == TagCornerVertex)
                vertex = ReadNumberedVertex();
            else if (ReadFileFloats(File, position, 3)) {
                if (HasOldAxes())
                    TurnOldAxes(position);
                vertex = AddVertexAt(position);
            }
            if (vertex)
                bead = AddBead(unfinished, vertex);
            return true;
        }
        case TagCornerTexture:
            if (!bead || (ReadFileFloats(File, bead->TexCoord, 2) && !AreFinite(bead->TexCoord, 2)))
                SetError(BadVertex);
            return true;
        case TagCornerNormal:
            if (bead)
                ReadVector(File, bead->Normal);
            else
                SetError(BadVertex);
            return true;
        case TagCornerIgnored: {
            std::int32_t ignored;
            ReadFileInts(File, &ignored, 1);
            return true;
        }
        default:
            return false;
        }
    });
}

Vertex* PolygonReader::ReadNumberedVertex() {
    std::int32_t number;
    if (!ReadFileInts(File, &number, 1))
        return nullptr;
    if (!HasVertexNumbers) {
        SetError(BadVertex);
        return nullptr;
    }
    if (number < 0 || static_cast<std::size_t>(number) >= VertexNumbers.size()) {
        SetError(BadVertexIndex);
        return nullptr;
    }
    return VertexNumbers[number];
}

PolygonBead* PolygonReader::AddBead(Unfinished& unfinished, Vertex* vertex) {
    PolygonBead* bead = NewPolygonBead();
    bead->Vertex = vertex;
    bead->Polygon = unfinished.Polygon;
    (unfinished.LastBead ? unfinished.LastBead->Next : unfinished.Polygon->Beads) = bead;
    unfinished.LastBead = bead;
    return bead;
}
