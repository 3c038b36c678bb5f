#pragma once

#include "interaction/selection_sets.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/material_list.h"
#include "store/polygon_editing.h"
#include "store/pools.h"
#include "store/structure_editing.h"
#include "store/texture_list.h"
#include "store/walks.h"

#include <random>
#include <string>
#include <utility>
#include <vector>

/// Fills the current object with what tools may meet: squares in several sub-objects and levels of detail, sharing
/// vertices here and there, turned as `turn` says, with decals on decals, textures, light groups and loose vertices.
class RandomModel {
  public:
    explicit RandomModel(unsigned seed) : Random(seed) {
        for (const char* name : {"Brick", "Glass"}) {
            Materials.push_back(NewMaterial());
            AddMaterial(Materials.back());
            RenameMaterial(Materials.back(), name);
        }
        Textures = {nullptr, NewTexture()};
        AddTextureToList(Textures[1]);
        for (int i = 0; i < 3; ++i) {
            AddSubObject(("Part" + std::to_string(i)).c_str());
            if (i)
                AddLodBead(SelectedSubObject());
            for (int row = 0; row < 4; ++row)
                AddSquare(Number(8), row, i, 1, nullptr);
        }
        AddVertex(1, 2, 30);
        CleanUpObject();
    }

    int Number(int limit) { return static_cast<int>(Random() % static_cast<unsigned>(limit)); }

    /// Some polygons, top-level ones or not; never none.
    void SelectSome() {
        DeselectEverything();
        for (Polygon* polygon : EveryPolygon(CurrentObject()))
            SetPolygonSelected(CurrentObject(), polygon, Number(3) == 0);
        SetPolygonSelected(CurrentObject(), FirstPolygon(), 1);
        CleanUpObject();
    }

  private:
    Vertex* Corner(double x, double y, double z) {
        if (Number(2))
            for (Vertex* vertex : EveryVertex(CurrentObject()))
                if (vertex->Position[0] == x && vertex->Position[1] == y && vertex->Position[2] == z)
                    return vertex;
        return AddVertex(x, y, z);
    }

    void AddSquare(double x, double y, double z, double size, Polygon* parent) {
        PolygonBead* beads = nullptr;
        for (const auto& [right, up] : {std::pair{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
            PolygonBead* bead = AddPolygonBead(beads, Corner(x + right * size, y + up * size, z));
            bead->TexCoord[0] = static_cast<float>(Number(16)) / 4;
            bead->TexCoord[1] = static_cast<float>(right);
        }
        Polygon* square = AddPolygon(beads, parent);
        square->SubObject = parent ? parent->SubObject : square->SubObject;
        square->Material = square->TextureMaterial = Materials[static_cast<std::size_t>(Number(2))];
        square->Texture = Textures[static_cast<std::size_t>(Number(2))];
        square->Lighting = static_cast<std::uint8_t>(Number(3));
        square->LightGroup = Number(3);
        for (int child = 0; size > 0.2 && child < Number(3); ++child)
            AddSquare(x + size / 4 * child, y + size / 4, z, size / 2, square);
    }

    std::mt19937 Random;
    std::vector<Material*> Materials;
    std::vector<Texture*> Textures;
};
