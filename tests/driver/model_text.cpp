#include "driver/model_text.h"

#include "store/walks.h"

#include <map>
#include <sstream>

namespace {

std::string NameOf(const char* name) {
    return name ? name : "-";
}

/// The numbers of records in list order; of null 0.
template <class Record>
class Numbers {
  public:
    template <class Records>
    explicit Numbers(const Records& records) {
        for (const Record* record : records)
            Number.emplace(record, static_cast<int>(Number.size()) + 1);
    }

    int operator[](const Record* record) const { return record ? Number.at(record) : 0; }

  private:
    std::map<const Record*, int> Number;
};

void Write(const Object* object, std::ostream& text) {
    const Numbers<Vertex> vertices(EveryVertex(object));
    const Numbers<Polygon> polygons(EveryPolygon(object));
    const Numbers<SubObject> subObjects(EverySubObject(object));
    text << "object " << NameOf(object->Name) << ' ' << object->Attributes << '\n';
    for (const Vertex* vertex : EveryVertex(object))
        text << "vertex " << vertex->Position[0] << ' ' << vertex->Position[1] << ' ' << vertex->Position[2] << '\n';
    for (const SubObject* subObject : EverySubObject(object))
        text << "sub-object " << NameOf(subObject->Name) << '\n';
    for (const Polygon* polygon : EveryPolygon(object)) {
        text << "polygon in " << subObjects[polygon->SubObject] << " on " << polygons[polygon->Parent] << ' '
             << int{polygon->Lighting} << ' ' << NameOf(polygon->Material ? polygon->Material->Name : nullptr) << ' '
             << NameOf(polygon->Texture ? polygon->Texture->FileName : nullptr);
        for (const PolygonBead* bead : EveryBead(polygon)) {
            text << "  " << vertices[bead->Vertex];
            if (polygon->Texture)
                text << ' ' << bead->TexCoord[0] << ' ' << bead->TexCoord[1];
        }
        text << '\n';
    }
    for (const Lod* lod : EveryLod(object)) {
        text << "level " << NameOf(lod->Name) << ' ' << lod->Distance;
        for (const LodBead* bead : EveryLodBead(lod))
            text << ' ' << subObjects[bead->SubObject];
        text << '\n';
    }
}

void Write(const Branch* branch, int depth, std::ostream& text) {
    text << "branch " << depth << ' ' << NameOf(branch->Name) << ' '
         << NameOf(branch->Object ? branch->Object->Name : nullptr) << ' ' << branch->Visible;
    if (branch->Object)
        for (int row = 0; row < 4; ++row)
            for (int column = 0; column < 4; ++column)
                text << ' ' << branch->Transform[row][column];
    text << '\n';
    for (const Branch* child : Along<&Branch::Next>(branch->FirstChild))
        Write(child, depth + 1, text);
}

} // namespace

std::string ModelAsText(const FileStruct& file) {
    std::ostringstream text;
    text.precision(17);
    for (const Material* material : Along<&Material::Next>(file.FirstMaterial))
        text << "material " << NameOf(material->Name) << ' ' << material->PackedColour << '\n';
    for (const Object* object : EveryObject(file))
        Write(object, text);
    if (file.Scene)
        Write(file.Scene, 0, text);
    return text.str();
}
