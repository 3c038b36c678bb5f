#include "model_mutator.h"
#include "reading.h"

#include "base/directories.h"
#include "base/memory.h"
#include "files/writer.h"
#include "store/clean_up.h"
#include "store/integrity.h"
#include "store/material_list.h"
#include "store/objects.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/scene.h"
#include "store/structure_editing.h"
#include "support/temporary_directory.h"
#include "support/test_seed.h"
#include "textures/texture_library.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>

namespace {

/// A small random model in the store. Polygons have LightGroups of their own, by which they can be told apart.
class RandomModel {
  public:
    RandomModel(unsigned seed, const std::filesystem::path& images) : Random(seed) {
        for (int i = 0; i < 3; ++i) {
            Material* material = NewMaterial();
            RenameMaterial(material, ("material" + std::to_string(i)).c_str());
            for (float& component : material->Ambient)
                component = Fraction();
            material->Alpha = Fraction();
            AddMaterial(material);
            Materials.push_back(material);
        }
        for (const char* name : {"a.rgb", "b.rgb"})
            Textures.push_back(AddTexture((images / name).c_str()));
        Textures[0]->MinFilter = 291;
        Textures[1]->ClampS = 1;
        for (int i = 0; i < 1 + Below(3); ++i)
            AddRandomObject(i);
        AddRandomBranches(Scene(), 0);
    }

  private:
    int Below(int n) { return static_cast<int>(Random() % static_cast<unsigned>(n)); }

    float Fraction() { return static_cast<float>(Below(1000)) / 1000; }

    template <class T>
    T* OneOf(const std::vector<T*>& choices) {
        return choices[Below(static_cast<int>(choices.size()))];
    }

    void AddRandomObject(int number) {
        Object* object = AddObject(("object" + std::to_string(number)).c_str(), 1, 0);
        object->Attributes = Below(2);
        object->View[0].Valid = Below(2);
        object->View[0].Zoom = Fraction();
        Objects.push_back(object);
        std::vector<Vertex*> vertices;
        for (int i = 0; i < 12; ++i)
            vertices.push_back(AddVertex(i + Fraction(), Below(100), Below(100)));
        for (int i = 0; i < 1 + Below(3); ++i) {
            AddSubObject(("part" + std::to_string(i)).c_str());
            for (int j = 0; j < Below(4); ++j)
                AddRandomPolygon(vertices, nullptr, 0);
        }
        for (int i = 0; i < Below(3); ++i) {
            AddLod(("level" + std::to_string(i)).c_str())->Distance = Below(5);
            for (SubObject* subObject : EverySubObject(object))
                if (Below(2))
                    AddLodBead(subObject)->Shown = Below(2);
        }
    }

    void AddRandomPolygon(const std::vector<Vertex*>& vertices, Polygon* parent, int depth) {
        PolygonBead* beads = nullptr;
        const int first = Below(12);
        for (int i = 0; i < 3 + Below(5); ++i)
            AddPolygonBead(beads, vertices[(first + i) % 12])->TexCoord[0] = Fraction();
        Polygon* polygon = AddPolygon(beads, parent);
        polygon->Material = OneOf(Materials);
        polygon->Lighting = static_cast<std::uint8_t>(Below(3));
        polygon->LightGroup = ++Groups;
        if (Below(2)) {
            polygon->Texture = OneOf(Textures);
            polygon->TextureMaterial = OneOf(Materials);
        }
        for (int i = 0; depth < 3 && i < Below(3); ++i)
            AddRandomPolygon(vertices, polygon, depth + 1);
    }

    void AddRandomBranches(Branch* parent, int depth) {
        Branch* previous = nullptr;
        for (int i = 0; i < Below(3); ++i) {
            previous = previous ? AddBranch(previous, BranchAsSibling) : AddBranch(parent, BranchAsChild);
            previous->Name = CopyOfString(("branch" + std::to_string(i)).c_str());
            previous->Visible = Below(2);
            if (Below(2)) {
                previous->Object = OneOf(Objects);
                previous->Transform[3][1] = Fraction();
            }
            if (depth < 4)
                AddRandomBranches(previous, depth + 1);
        }
    }

    std::mt19937 Random;
    std::vector<Material*> Materials;
    std::vector<Texture*> Textures;
    std::vector<Object*> Objects;
    int Groups = 0;
};

std::string Describe(const Object* object, const Polygon* polygon) {
    std::ostringstream text;
    text << object->Name << ' ' << polygon->SubObject->Name << ' ' << polygon->LightGroup << " in "
         << (polygon->Parent ? polygon->Parent->LightGroup : 0) << ' ' << polygon->Material->Name << ' '
         << int{polygon->Lighting};
    if (polygon->Texture)
        text << ' ' << polygon->Texture->FileName << ' ' << polygon->TextureMaterial->Name;
    for (const PolygonBead* bead : EveryBead(polygon)) {
        for (const double coordinate : bead->Vertex->Position)
            text << ' ' << static_cast<float>(coordinate);
        if (polygon->Texture)
            text << ' ' << bead->TexCoord[0];
    }
    return text.str();
}

/// All that a model file keeps, in an order that reading does not change.
std::vector<std::string> DescribeModel() {
    std::vector<std::string> lines;
    Object* current = CurrentObject();
    for (Object* object : EveryObject(*CurrentFile)) {
        CurrentObject() = object;
        CleanUpObject();
        for (const Polygon* polygon : EveryPolygon(object))
            lines.push_back(Describe(object, polygon));
        for (const Lod* lod : EveryLod(object)) {
            lines.push_back(std::string(object->Name) + ' ' + lod->Name + ' ' + std::to_string(lod->Distance));
            for (const LodBead* bead : EveryLodBead(lod))
                lines.back() += std::string(" ") + bead->SubObject->Name + (bead->Shown ? "+" : "-");
        }
        lines.push_back(std::string(object->Name) + std::to_string(object->Attributes) +
                        std::to_string(object->View[0].Valid ? object->View[0].Zoom : -1) + " " +
                        std::to_string(ListOf<&Vertex::Next>(object->FirstVertex).size()));
    }
    CurrentObject() = current;
    std::sort(lines.begin(), lines.end());
    for (const Material* material : Along<&Material::Next>(FirstMaterial()))
        lines.push_back(std::string(material->Name) + std::to_string(material->Ambient[1]) +
                        std::to_string(material->Alpha));
    for (const Texture* texture : Along<&Texture::Next>(FirstTexture()))
        lines.push_back(std::string(texture->FileName) + std::to_string(texture->MinFilter) +
                        std::to_string(texture->ClampS) + std::to_string(texture->ClampT));
    for (Branch* branch : EveryBranch(Scene()))
        lines.push_back(std::string(branch->Name) + std::to_string(branch->Visible) +
                        (branch->Object ? branch->Object->Name : "") +
                        std::to_string(static_cast<float>(branch->Transform[3][1])));
    return lines;
}

/// A picture of one grey pixel.
void WriteImage(const std::filesystem::path& name) {
    std::filesystem::create_directories(name.parent_path());
    std::string bytes = ModelBytes().Short(474).Short(1).Short(2).Short(1).Short(1).Short(1).Bytes();
    bytes.resize(513);
    std::ofstream(name, std::ios::binary) << bytes;
}

class RandomModels : public FilesTest {
  protected:
    RandomModels() : File(Directory.Path() / "model.kirvo") {
        CopyFileName(FilePath, Directory.Path().c_str());
        WriteImage(Directory.Path() / "textures" / "a.rgb");
        WriteImage(Directory.Path() / "textures" / "b.rgb");
    }

    ~RandomModels() override { *FilePath = '\0'; }

    std::string Written() {
        EXPECT_TRUE(WriteKirvo(File.c_str()));
        std::ifstream file(File, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::string WrittenRandomModel(unsigned seed) {
        ResetStorage();
        RandomModel(seed, Directory.Path() / "textures");
        return Written();
    }

    /// Reads it: true when that went well, and the model could be cleaned up and written again. Otherwise the store
    /// must be empty.
    static bool IsSoundOrRefused(const std::string& file) {
        if (!ReadQuietly(file)) {
            EXPECT_FALSE(FirstObject());
            EXPECT_FALSE(FirstMaterial());
            EXPECT_FALSE(FirstTexture());
            return false;
        }
        for (Object* object : EveryObject(*CurrentFile)) {
            CurrentObject() = object;
            CheckIntegrity();
            CleanUpObject();
            CheckIntegrity();
        }
        return true;
    }

    TemporaryDirectory Directory;
    std::string File;
};

TEST_F(RandomModels, ComeBackAsTheyWereWritten) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(seed);
        const std::string first = WrittenRandomModel(seed);
        const std::vector<std::string> model = DescribeModel();
        EXPECT_EQ(Written(), first);
        ASSERT_TRUE(ReadQuietly(first)) << Ferr[FileErrorNumber];
        EXPECT_FALSE(InformationLost || TexturesMissing);
        EXPECT_EQ(DescribeModel(), model);
        EXPECT_EQ(Written(), first) << "a file that is read and written stays the same";
    }
}

TEST_F(RandomModels, DamagedOnesAreReadOrRefusedButNeverHarmTheStore) {
    int good = 0;
    for (unsigned seed = 0; seed < 20; ++seed) {
        const std::string whole = WrittenRandomModel(seed);
        std::mt19937 random(seed);
        for (int i = 0; i < 200; ++i) {
            std::string damaged = whole;
            for (unsigned changes = 1 + random() % 4; changes; --changes) {
                // Header line and marker are left alone, so that the body is what is tried.
                const std::size_t place = 21 + random() % (damaged.size() - 21);
                switch (random() % 3) {
                case 0:
                    damaged[place] = static_cast<char>(random());
                    break;
                case 1:
                    damaged.erase(place, random() % 8);
                    break;
                default:
                    damaged.insert(place, 1, static_cast<char>(random() % 90));
                }
            }
            good += IsSoundOrRefused(damaged);
        }
    }
    EXPECT_GT(good, 100); // many changes are harmless: else nothing behind the first error was tried
}

// KIRVO_MUTANTS asks for more of them.
TEST_F(RandomModels, MutantsAreReadOrRefusedAndComeBackAsTheyWereRead) {
    const unsigned mutants = FromEnvironment("KIRVO_MUTANTS", 400), seed = TestSeed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    ModelMutator mutator(seed);
    unsigned good = 0;
    for (unsigned i = 0; i < mutants; ++i) {
        SCOPED_TRACE(i);
        const std::string mutant = mutator.Mutate(WrittenRandomModel(seed + i / 20), std::size_t{1} << 20);
        if (!IsSoundOrRefused(mutant))
            continue;
        ++good;
        // What was read once is written and read without loss from the second time on.
        const std::string first = Written();
        ASSERT_TRUE(ReadQuietly(first)) << Ferr[FileErrorNumber];
        const std::string second = Written();
        ASSERT_TRUE(ReadQuietly(second));
        EXPECT_EQ(Written(), second);
    }
    EXPECT_GT(good, mutants / 4);
}

} // namespace
