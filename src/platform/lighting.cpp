#include "platform/lighting.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <optional>
#include <vector>

#include "platform/batch.h"
#include "platform/definitions.h"
#include "platform/drawing_state.h"
#include "platform/recorder.h"
#include "platform/surface.h"
#include "platform/vertices.h"

namespace gl {

uint32_t LightingDefinitions = 0;

namespace {

// Definitions by their numbers; numbers are small and dense.
template <typename Definition>
struct Table {
    std::vector<std::optional<Definition>> entries;

    const Definition* find(int index) const {
        return index > 0 && index < static_cast<int>(entries.size()) && entries[index] ? &*entries[index] : nullptr;
    }

    // Gives a number a definition; pending drawing takes the former one.
    void set(int index, const Definition& definition) {
        const Definition* former = find(index);
        if (former && *former == definition)
            return;
        FlushDrawing();
        LightingDefinitions = NewVersion();
        if (index >= static_cast<int>(entries.size()))
            entries.resize(index + 1);
        entries[index] = definition;
    }
};

Table<MaterialDefinition> Materials;
Table<LightDefinition> Lights;
Table<ModelDefinition> Models;

constexpr int MostDefinitions = 1 << 20;

// Where a property's values go and how many there are; null for a token that the kind does not have.
struct Property {
    float* values;
    int count;
};

Property MaterialProperty(MaterialDefinition& m, float token) {
    if (token == EMISSION)
        return {m.emission.data(), 3};
    if (token == AMBIENT)
        return {m.ambient.data(), 3};
    if (token == DIFFUSE)
        return {m.diffuse.data(), 3};
    if (token == SPECULAR)
        return {m.specular.data(), 3};
    if (token == SHININESS)
        return {&m.shininess, 1};
    if (token == ALPHA)
        return {&m.alpha, 1};
    return {nullptr, 0};
}

Property LightProperty(LightDefinition& l, float token) {
    if (token == AMBIENT)
        return {l.ambient.data(), 3};
    if (token == LCOLOR)
        return {l.colour.data(), 3};
    if (token == POSITION)
        return {l.position.data(), 4};
    return {nullptr, 0};
}

Property ModelProperty(ModelDefinition& m, float token) {
    if (token == AMBIENT)
        return {m.ambient.data(), 3};
    if (token == TWOSIDE)
        return {&m.twoSided, 1};
    return {nullptr, 0};
}

template <typename Definition>
void Define(Table<Definition>& table, int index, int count, const float* list,
            Property (*propertyOf)(Definition&, float)) {
    const Definition* former = list ? table.find(index) : nullptr;
    Definition definition = former ? *former : Definition();
    const float* end = list && count > 0 ? list + count : nullptr;
    while (list && list != end && *list != LMNULL) {
        const Property property = propertyOf(definition, *list);
        if (!property.values || (end && list + 1 + property.count > end)) {
            std::fprintf(stderr, "Graphics: property %g in the definition of %d is not known\n",
                         static_cast<double>(*list), index);
            break;
        }
        std::copy_n(list + 1, property.count, property.values);
        list += 1 + property.count;
    }
    table.set(index, definition);
}

} // namespace

const MaterialDefinition* FindMaterialDefinition(int index) {
    return Materials.find(index);
}

const LightDefinition* FindLightDefinition(int index) {
    return Lights.find(index);
}

const ModelDefinition* FindModelDefinition(int index) {
    return Models.find(index);
}

void ForgetLightingDefinitions() {
    Materials.entries.clear();
    Lights.entries.clear();
    Models.entries.clear();
    LightingDefinitions = NewVersion();
}

void lmdef(int kind, int index, int count, const float* properties) {
    if (index < 1 || index > MostDefinitions) {
        std::fprintf(stderr, "Graphics: definition number %d is out of range\n", index);
        return;
    }
    switch (kind) {
    case DEFMATERIAL:
        Define(Materials, index, count, properties, MaterialProperty);
        break;
    case DEFLIGHT:
        Define(Lights, index, count, properties, LightProperty);
        break;
    case DEFLMODEL:
        Define(Models, index, count, properties, ModelProperty);
        break;
    default:
        std::fprintf(stderr, "Graphics: there is no definition of kind %d\n", kind);
        return;
    }
    StateChanged = true;
}

void lmbind(int target, int index) {
    if (target == MATERIAL ? RecordMaterial(index) : RecordSetting(target, index, [=] { lmbind(target, index); }))
        return;
    DrawingState& state = State();
    LightingState& lighting = state.Lighting;
    if (target == MATERIAL) {
        if (lighting.material != index)
            StateChanged = true;
        lighting.material = index;
    } else if (target == LMODEL) {
        if (lighting.model == index)
            return;
        lighting.model = index;
        state.LightingVersion = NewVersion();
        StateChanged = true;
    } else if (target >= LIGHT0 && target <= LIGHT7) {
        BoundLight light = {index, {0, 0, 1, 0}};
        if (const LightDefinition* definition = FindLightDefinition(index)) {
            const Matrix4& m = EffectiveViewing();
            const auto& p = definition->position;
            for (int i = 0; i < 4; i++)
                light.position[i] =
                    static_cast<float>(p[0] * m[i] + p[1] * m[4 + i] + p[2] * m[8 + i] + p[3] * m[12 + i]);
        }
        BoundLight& bound = lighting.lights[target - LIGHT0];
        if (bound == light)
            return;
        bound = light;
        state.LightingVersion = NewVersion();
        StateChanged = true;
    }
}

int getlmbind(int target) {
    const LightingState& lighting = State().Lighting;
    if (target == MATERIAL)
        return lighting.material;
    if (target == LMODEL)
        return lighting.model;
    return target >= LIGHT0 && target <= LIGHT7 ? lighting.lights[target - LIGHT0].definition : 0;
}

} // namespace gl
