#include "shell/model_report.h"

#include "base/directories.h"
#include "gooey/program_windows.h"
#include "interaction/modes.h"
#include "interaction/position_gizmo.h"
#include "interaction/position_state.h"
#include "interaction/ruler.h"
#include "materials/material_definitions.h"
#include "palettes/material_commands.h"
#include "store/accessors.h"
#include "store/clean_up.h"
#include "store/polygon_editing.h"
#include "store/scene.h"
#include "store/storage.h"
#include "store/walks.h"
#include "textures/filters.h"
#include "tools/polygon_clipboard.h"
#include "tools/vertex_clipboard.h"
#include "views/grid.h"
#include "views/status_line.h"
#include "views/tool_bar.h"
#include "views/viewports.h"
#include "views/work_area.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

using Json = nlohmann::ordered_json;

namespace {

// Reading a model through the accessors may complete it; that is no work of the user's.
class UntouchedWork {
  public:
    UntouchedWork() : Saved(WorkSaved), Current(CurrentObject()) {}

    ~UntouchedWork() {
        CurrentObject() = Current;
        WorkSaved = Saved;
    }

    UntouchedWork(const UntouchedWork&) = delete;
    UntouchedWork& operator=(const UntouchedWork&) = delete;

  private:
    int Saved;
    Object* Current;
};

std::string Text(const char* text) {
    return text ? text : "";
}

template <class Record>
Json NameOf(const Record* record) {
    return record ? Json(Text(record->Name)) : Json();
}

template <class Range, class Condition>
int Count(Range&& range, Condition condition) {
    int count = 0;
    for (const auto* record : range)
        count += condition(record) ? 1 : 0;
    return count;
}

constexpr auto Any = [](const auto*) { return true; };
constexpr auto IsSelected = [](const auto* record) { return record->Selected != 0; };

Json Numbers(const double* numbers, int count) {
    Json list = Json::array();
    for (int i = 0; i < count; ++i)
        list.push_back(numbers[i]);
    return list;
}

Json Numbers(const Matrix& matrix) {
    return Numbers(&matrix[0][0], 16);
}

Json SubObjectsOf(const Object* object) {
    std::map<const SubObject*, int> polygons;
    for (const Polygon* polygon : EveryPolygon(object))
        ++polygons[polygon->SubObject];
    Json list = Json::array();
    const SubObject* selected = SelectedSubObject();
    for (const SubObject* subObject : EverySubObject(object))
        list.push_back(
            {{"name", Text(subObject->Name)}, {"selected", subObject == selected}, {"polygons", polygons[subObject]}});
    return list;
}

Json LodsOf(const Object* object) {
    FirstLod();
    Json list = Json::array();
    const Lod* selected = SelectedLod();
    for (const Lod* lod : EveryLod(object)) {
        Json members = Json::array();
        for (const LodBead* bead : EveryLodBead(lod))
            members.push_back(Text(bead->SubObject->Name));
        list.push_back({{"name", Text(lod->Name)},
                        {"selected", lod == selected},
                        {"distance", lod->Distance},
                        {"members", members}});
    }
    return list;
}

/// How many polygons have each material.
Json MaterialsOf(const Object* object) {
    Json counts = Json::object();
    for (const Polygon* polygon : EveryPolygon(object)) {
        Json& count = counts[polygon->Material ? Text(polygon->Material->Name) : ""];
        count = count.is_null() ? 1 : count.get<int>() + 1;
    }
    return counts;
}

/// How many polygons are unlit, faceted and smooth.
Json LightingOf(const Object* object) {
    int counts[3] = {};
    for (const Polygon* polygon : EveryPolygon(object))
        ++counts[std::min<int>(polygon->Lighting, LightingSmooth)];
    return {counts[0], counts[1], counts[2]};
}

/// How many polygons have textures, how many of them as reflections, and between which coordinates the others lie.
Json TexturesOn(const Object* object) {
    int textured = 0, reflecting = 0;
    Json min, max;
    std::map<std::string, int> files;
    for (const Polygon* polygon : EveryPolygon(object)) {
        if (!polygon->Texture)
            continue;
        ++textured;
        ++files[std::filesystem::path(Text(polygon->Texture->FileName)).filename()];
        if (polygon->Flags & PolygonGeneratesTexture) {
            ++reflecting;
            continue;
        }
        for (const PolygonBead* bead : EveryBead(polygon))
            for (int i = 0; i < 2; ++i) {
                const float coordinate = bead->TexCoord[i];
                min[i] = min[i].is_null() ? coordinate : std::min(min[i].get<float>(), coordinate);
                max[i] = max[i].is_null() ? coordinate : std::max(max[i].get<float>(), coordinate);
            }
    }
    return {{"polygons", textured}, {"reflecting", reflecting}, {"min", min}, {"max", max}, {"files", files}};
}

Json ReportOf(Object* object, const Object* current) {
    CurrentObject() = object;
    CleanUpObject();
    const double radius = ObjectRadius();
    return {{"name", Text(object->Name)},
            {"current", object == current},
            {"vertices", Count(EveryVertex(object), Any)},
            {"polygons", Count(EveryPolygon(object), Any)},
            {"selectedVertices", Count(EveryVertex(object), IsSelected)},
            {"selectedPolygons", Count(EveryPolygon(object), IsSelected)},
            {"looseVertices", Count(Along<&Vertex::NextInSubset>(object->FirstLooseVertex), Any)},
            {"min", Numbers(object->Min, 3)},
            {"max", Numbers(object->Max, 3)},
            {"radius", radius},
            {"undo", object->UndoCopy != nullptr},
            {"attributes", object->Attributes},
            {"grid", {{"index", object->GridIndex}, {"steps", object->GridSteps}}},
            {"materials", MaterialsOf(object)},
            {"lighting", LightingOf(object)},
            {"textured", TexturesOn(object)},
            {"subobjects", SubObjectsOf(object)},
            {"lods", LodsOf(object)}};
}

/// A branch up to its children.
std::string StartOf(const Branch* branch) {
    const Json report = {{"name", Text(branch->Name)},          {"object", NameOf(branch->Object)},
                         {"visible", branch->Visible != 0},     {"selected", branch->Selected != 0},
                         {"collapsed", branch->Collapsed != 0}, {"transform", Numbers(branch->Transform)}};
    std::string text = report.dump(-1, ' ', false, Json::error_handler_t::replace);
    text.pop_back();
    return text + ", \"children\": [";
}

Json ReportOf(const View& view, int viewport) {
    return {{"viewport", viewport},
            {"perspective", view.Perspective != 0},
            {"direction", view.Direction},
            {"zoom", view.Zoom},
            {"viewMatrix", Numbers(view.ViewMatrix)},
            {"gridMatrix", Numbers(view.GridMatrix)},
            {"centre", view.HasCentre ? Numbers(view.Centre, 3) : Json()}};
}

Json Objects() {
    UntouchedWork untouched;
    const Object* current = CurrentObject();
    Json objects = Json::array();
    for (Object* object : EveryObject(*CurrentFile))
        objects.push_back(ReportOf(object, current));
    return objects;
}

Json Materials() {
    Json names = Json::array(), values = Json::array();
    for (const Material* material : Along<&Material::Next>(FirstMaterial())) {
        names.push_back(Text(material->Name));
        values.push_back({{"ambient", material->Ambient},
                          {"diffuse", material->Diffuse},
                          {"specular", material->Specular},
                          {"emission", material->Emission},
                          {"shininess", material->Shininess},
                          {"alpha", material->Alpha}});
    }
    return {{"current", NameOf(CurrentMaterial())}, {"names", names}, {"values", values}};
}

Json Textures() {
    Json files = Json::array();
    for (const Texture* texture : Along<&Texture::Next>(FirstTexture()))
        files.push_back(Text(texture->FileName));
    const Texture* current = CurrentTexture();
    if (!current)
        return {{"current", nullptr}, {"files", files}};
    return {{"current", Text(current->FileName)},
            {"files", files},
            {"filters", {FilterName(current->MinFilter), FilterName(current->MagFilter)}},
            {"lowAccuracy", current->Fast != 0},
            {"clamp", {current->ClampS != 0, current->ClampT != 0}}};
}

Json Views() {
    Json views = Json::array();
    for (int viewport = 0; viewport < NoViewports; ++viewport)
        views.push_back(ReportOf(*ViewOfViewport(viewport), viewport));
    return views;
}

/// The name that the running tool's bar begins with.
Json Tool() {
    if (!ToolBarActive())
        return {};
    for (const GadgetView& gadget : GadgetsOf(MainWindow))
        if (std::strcmp(gadget.Kind->Name, "label") == 0)
            return gadget.Description.Label;
    return {};
}

Json Gizmo() {
    if (!PositionGizmoIsOpen())
        return {};
    const int* locks = Position.Lock;
    return {{"page", Position.Page},
            {"matrix", Numbers(ComposedPosition())},
            {"offsets", Numbers(Position.Offset, 3)},
            {"locks", {locks[0] != 0, locks[1] != 0, locks[2] != 0}},
            {"angle", Position.Angle},
            {"centre", Numbers(Position.Centre, 3)},
            {"axis", Numbers(Position.Axis, 3)},
            {"scales", Numbers(Position.Scale, 3)},
            {"undo", PositionUndoSteps()},
            {"redo", PositionRedoSteps()}};
}

int PolygonsInClipboard() {
    int count = 0;
    for (const Polygon* polygon : Along<&Polygon::Next>(PolygonPasteList))
        count += 1 + Count(EverySubPolygon(polygon), Any);
    return count;
}

Json Clipboard() {
    return {{"polygons", PolygonsInClipboard()},
            {"vertices", Count(Along<&Vertex::Next>(VertexPaste), Any)},
            {"branches", Count(EveryBranch(ScenePaste), Any)},
            {"material", MaterialCopied ? Json(Text(MaterialClipboard->Name)) : Json()}};
}

Json Grid() {
    return {{"visible", GridVisible != 0},
            {"onTop", GridOnTop != 0},
            {"snap", GridSnap != 0},
            {"index", ShownGridIndex()},
            {"steps", ShownGridSteps()}};
}

Json WorkArea() {
    if (!WorkAreaGizmo)
        return {};
    const WorkAreaRecord& area = CurrentWorkArea();
    return {{"centre", Numbers(area.Centre, 3)}, {"halfSize", area.HalfSize}, {"magnification", area.Magnification}};
}

} // namespace

void ReportModel(Json& report) {
    report["file"] = {{"path", FilePath}, {"name", FileName}, {"saved", WorkSaved != 0}};
    report["mode"] = {{"object", ObjectIsolated != 0},
                      {"vertex", WorkMode != 0},
                      {"viewports", NoViewports},
                      {"lighting", CurrentLighting}};
    report["status"] = StatusText();
    report["objects"] = Objects();
    report["materials"] = Materials();
    report["textures"] = Textures();
    report["views"] = Views();
    report["tool"] = Tool();
    report["gizmo"] = Gizmo();
    report["grid"] = Grid();
    report["workArea"] = WorkArea();
    report["ruler"] = RulerGizmoIsOpen() ? Json({{"value", RulerValue()}}) : Json();
    report["clipboard"] = Clipboard();
}

ReportText ReportScene() {
    // Not a recursion, and no indentation: the tree may be as deep as memory is large.
    std::string text = StartOf(Scene());
    std::vector<const Branch*> enclosing;
    for (const Branch* branch = Scene()->FirstChild; branch || !enclosing.empty();) {
        if (branch) {
            text += (branch->Prev ? ",\n " : "\n ") + StartOf(branch);
            enclosing.push_back(branch);
            branch = branch->FirstChild;
        } else {
            text += "]}";
            branch = enclosing.back()->Next;
            enclosing.pop_back();
        }
    }
    return {"scene", text + "]}"};
}
