#pragma once

#include "files/model_bytes.h"
#include "support/temporary_directory.h"
#include "textures/made_image.h"

#include <fstream>
#include <iterator>
#include <string>

/// What MadeModel can have wrong with it.
struct ModelFaults {
    bool TextureMissing = false;
    bool NewerData = false;
    bool PolygonWithoutArea = false;
    bool BytesBehindTheEnd = false;
    bool VertexNumberTooHigh = false;
};

/// A model that has something of everything: a textured square with a sub-polygon on it and a loose vertex beside it,
/// two sub-objects, two levels of detail, a second object without polygons, and a scene of four branches.
inline std::string MadeModel(const std::string& texturePath, const ModelFaults& faults = {}) {
    ModelBytes model("3.05");
    model.Byte(10);
    model.Byte(11).Int(0).Byte(18).String("Red brick").Byte(13).Floats({0.8, 0.2, 0.1}).Byte(16).Float(32).End();
    model.Byte(11).Int(1).Byte(18).String("unused \033[31m").Byte(17).Float(1.5).End().End();
    model.Byte(80).Int(4).String(texturePath).Byte(81).Float(290).Byte(85).Int(1).Byte(86).Int(0).End();

    model.Byte(40).String("house").Byte(44).Int(3).Byte(48).Int(1);
    model.Vertices({0, 0, 0, 2, 0, 0, 2, 3, 0, 0, 3, 0, 0.5, 0.5, 0, 1, 0.5, 0, 1, 1, 0, 9, 9, -0.0});
    model.Byte(41).String("walls").Byte(45).Int(5);
    model.OpenPolygon({0, 1, 2, 3}).Byte(34).Int(4).Byte(36).Short(0);
    model.OpenPolygon({4, 5, 6}).End().End();
    if (faults.VertexNumberTooHigh)
        model.OpenPolygon({0, 1, 8}).End();
    model.End();
    model.Byte(41).String("roof").Byte(45).Int(6).OpenPolygon({0, 1, 2}).End();
    if (faults.PolygonWithoutArea)
        model.OpenPolygon({0, 1, 0}).End().OpenPolygon({2, 3}).End();
    model.End();
    if (faults.NewerData)
        model.Unknown(99, 3);
    model.Byte(42).String("near").Byte(43).Float(100).Byte(45).Int(5).Byte(49).Int(1).End();
    model.Byte(42).String("far").Byte(43).Float(1000).End().End();

    model.Byte(40).String("tree").Byte(44).Int(7).Vertices({}).End();

    const auto placed = [&](int object, double x) {
        model.Byte(53).Int(object).Byte(55).Floats({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, 2, 3, 1});
    };
    model.Byte(50).String("street").Byte(50).String("first");
    placed(3, 1);
    model.Byte(52).String("second").Byte(56).Int(0);
    placed(7, -4);
    model.Byte(51).Byte(52).String("empty").Byte(51);
    model.Byte(60).Byte(3).Count(4).Int(3);
    model.Byte(60).Byte(12).Count(9).String("My house");
    model.Byte(60).Byte(9).Count(4).Int(0).End();
    if (faults.BytesBehindTheEnd)
        model.Raw("rest");
    return model.Bytes();
}

/// A directory with model files and images in it.
class ModelDirectory {
  public:
    std::string Path(const std::string& name) const { return directory.Path() / name; }

    std::string Write(const std::string& name, const std::string& bytes) const {
        std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
        std::ofstream(Path(name), std::ios::binary) << bytes;
        return Path(name);
    }

    std::string Read(const std::string& name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// An image of 3 channels, 2 by 2, its values counted from 1 in the order of the file.
    std::string WriteImage(const std::string& name) const {
        MadeImage image(2, 2, 3);
        image.Append({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
        return Write(name, {image.Bytes.begin(), image.Bytes.end()});
    }

  private:
    TemporaryDirectory directory;
};
