#pragma once

#include "files/format.h"
#include "files/old_axes.h"
#include "files/primitives.h"
#include "store/records.h"

#include <cmath>

// The tagged fields that are read and written by the same rule, each said once. A function ...Fields names a record's
// fields to an archive: FieldReader takes from the file the one whose tag has been read, FieldWriter writes all of them
// in the order in which they are named.

/// Reads the field that belongs to one tag. A number that is not finite is the context's error.
class FieldReader {
  public:
    FieldReader(FileCursor& file, int tag, int contextError) : File(file), Tag(tag), ContextError(contextError) {}

    /// Whether a field with the tag has been named.
    bool Matched() const { return Found; }

    template <int N>
    void Floats(int tag, float (&values)[N]) {
        if (Matches(tag) && ReadFileFloats(File, values, N))
            ExpectFinite(values, N);
    }

    void Float(int tag, float& value) {
        if (Matches(tag) && ReadFileFloats(File, &value, 1))
            ExpectFinite(&value, 1);
    }

    void Real(int tag, double& value) {
        if (Matches(tag) && ReadFileReals(File, &value, 1))
            ExpectFinite(&value, 1);
    }

    void Int(int tag, std::int32_t& value) {
        if (Matches(tag))
            ReadFileInts(File, &value, 1);
    }

    void Byte(int tag, std::int32_t& value) {
        if (Matches(tag))
            ReadFileByte(File, value);
    }

    void MatrixField(int tag, Matrix& value) {
        if (!Matches(tag) || !ReadFileMatrix(File, value))
            return;
        for (int row = 0; row < 4; ++row)
            ExpectFinite(value[row], 4);
        if (HasOldAxes())
            TurnOldAxes(value);
    }

    /// A point that need not be there.
    void OptionalPoint(int tag, std::int32_t& present, double (&values)[3]) {
        if (!Matches(tag) || !ReadFileReals(File, values, 3))
            return;
        ExpectFinite(values, 3);
        present = 1;
    }

  private:
    bool Matches(int tag) {
        const bool matches = tag == Tag;
        Found = Found || matches;
        return matches;
    }

    template <class Scalar>
    void ExpectFinite(const Scalar* values, int n) {
        for (int i = 0; i < n; ++i)
            if (!std::isfinite(values[i]))
                SetError(ContextError);
    }

    FileCursor& File;
    int Tag;
    int ContextError;
    bool Found = false;
};

class FieldWriter {
  public:
    explicit FieldWriter(FileWriter& file) : File(file) {}

    template <int N>
    void Floats(int tag, const float (&values)[N]) {
        WriteFileByte(File, tag);
        WriteFileFloats(File, values, N);
    }

    void Float(int tag, float value) {
        WriteFileByte(File, tag);
        WriteFileFloats(File, &value, 1);
    }

    void Real(int tag, double value) {
        WriteFileByte(File, tag);
        WriteFileReals(File, &value, 1);
    }

    void Int(int tag, std::int32_t value) {
        WriteFileByte(File, tag);
        WriteFileInt(File, value);
    }

    void Byte(int tag, std::int32_t value) {
        WriteFileByte(File, tag);
        WriteFileByte(File, value);
    }

    void MatrixField(int tag, const Matrix& value) {
        WriteFileByte(File, tag);
        WriteFileMatrix(File, value);
    }

    void OptionalPoint(int tag, std::int32_t present, const double (&values)[3]) {
        if (!present)
            return;
        WriteFileByte(File, tag);
        WriteFileReals(File, values, 3);
    }

  private:
    FileWriter& File;
};

/// All but the name.
template <class Archive>
void MaterialFields(Archive& archive, Material& material) {
    archive.Floats(TagAmbient, material.Ambient);
    archive.Floats(TagDiffuse, material.Diffuse);
    archive.Floats(TagSpecular, material.Specular);
    archive.Floats(TagEmission, material.Emission);
    archive.Float(TagShininess, material.Shininess);
    archive.Float(TagAlpha, material.Alpha);
}

template <class Archive>
void TextureFields(Archive& archive, Texture& texture) {
    archive.Float(TagMinFilter, texture.MinFilter);
    archive.Float(TagMagFilter, texture.MagFilter);
    archive.Int(TagFast, texture.Fast);
    archive.Int(TagClampS, texture.ClampS);
    archive.Int(TagClampT, texture.ClampT);
}

template <class Archive>
void ObjectIdentityFields(Archive& archive, Object& object) {
    archive.Int(TagObjectId, object.Id);
    archive.Int(TagObjectAttributes, object.Attributes);
}

template <class Archive>
void ObjectGridFields(Archive& archive, Object& object) {
    archive.Int(TagGridIndex, object.GridIndex);
    archive.Int(TagGridSteps, object.GridSteps);
}

template <class Archive>
void ViewFields(Archive& archive, View& view) {
    archive.Byte(TagPerspective, view.Perspective);
    archive.Byte(TagDirection, view.Direction);
    archive.MatrixField(TagViewMatrix, view.ViewMatrix);
    archive.MatrixField(TagProjection, view.Projection);
    archive.MatrixField(TagGridMatrix, view.GridMatrix);
    archive.Real(TagZoom, view.Zoom);
    archive.OptionalPoint(TagCentre, view.HasCentre, view.Centre);
}

template <class Archive>
void BranchFlagFields(Archive& archive, Branch& branch) {
    archive.Int(TagBranchVisible, branch.Visible);
    archive.Int(TagBranchCollapsed, branch.Collapsed);
}
