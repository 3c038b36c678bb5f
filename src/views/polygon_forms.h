#pragma once

#include "store/records.h"
#include "store/walks.h"

// In which sequence, and with which material, texture and write masks, polygons are drawn. Where the drawing goes - to
// the graphics layer, into a fingerprint, through a clipper - is its target's business.

/// What is drawn of a list of polygons and of their sub-polygons.
enum class PolygonForm {
    Plain,           // all, filled, without textures
    Untextured,      // those without textures, filled
    Textured,        // the others, filled
    Outline,         // the outlines of those that are not selected
    FacingOutline,   // the same with normals, for lines that face the eye
    SelectedOutline, // all outlines
};

inline constexpr int PolygonFormCount = 6;

/// Of a polygon or of one that lies on it.
inline bool ShowsTexture(const Polygon* polygon) {
    if (polygon->Texture)
        return true;
    for (const Polygon* subPolygon : EverySubPolygon(polygon))
        if (subPolygon->Texture)
            return true;
    return false;
}

/// Draws polygons of a form one after the other. A Target has:
/// SetMaterial(const Material*), SetTexture(const Texture*), SetTextureGeneration(bool), SetDepthWrites(bool),
/// SetColourWrites(bool), Fill(const Polygon*, const Material*, bool withTextureCoordinates) and Outline(const
/// Polygon*).
template <class Target>
class PolygonDrawer {
  public:
    /// Nothing is known of what is bound, but that there is no texture for forms that need none.
    PolygonDrawer(PolygonForm form, Target& target) : Form(form), Out(target) {
        TextureKnown = Form != PolygonForm::Textured;
    }

    /// A polygon with all that lies on it. In a list of selected ones what lies on another of them comes with that.
    void Draw(const Polygon* polygon) {
        if (Form != PolygonForm::SelectedOutline && polygon->Parent && polygon->Parent->Selected)
            return;
        switch (Form) {
        case PolygonForm::Plain:
            return Fill(polygon, false);
        case PolygonForm::Untextured:
            if (!ShowsTexture(polygon))
                Fill(polygon, false);
            return;
        case PolygonForm::Textured:
            if (ShowsTexture(polygon))
                Fill(polygon, true);
            return;
        case PolygonForm::SelectedOutline:
            return OutlineUnlessSelectedBelow(polygon);
        default:
            return Outline(polygon);
        }
    }

  private:
    /// What lies on a polygon is drawn over it whatever the depths, which are the polygon's in the end.
    void Fill(const Polygon* polygon, bool textured) {
        if (!polygon->FirstChild)
            return FillOne(polygon, textured);
        Out.SetDepthWrites(false);
        FillOne(polygon, textured);
        for (const Polygon* subPolygon : EverySubPolygon(polygon))
            FillOne(subPolygon, textured);
        Out.SetColourWrites(false);
        Out.SetDepthWrites(true);
        FillOne(polygon, false);
        Out.SetColourWrites(true);
    }

    void FillOne(const Polygon* polygon, bool textured) {
        const Texture* texture = textured ? polygon->Texture : nullptr;
        const Material* material = texture && polygon->TextureMaterial ? polygon->TextureMaterial : polygon->Material;
        const bool generated = texture && (polygon->Flags & PolygonGeneratesTexture);
        if (!MaterialKnown || material != BoundMaterial)
            Out.SetMaterial(material);
        if (!TextureKnown || texture != BoundTexture)
            Out.SetTexture(texture);
        if (Form == PolygonForm::Textured && (!TextureKnown || generated != Generating))
            Out.SetTextureGeneration(generated);
        MaterialKnown = TextureKnown = true;
        BoundMaterial = material;
        BoundTexture = texture;
        Generating = generated;
        Out.Fill(polygon, material, texture && !generated);
    }

    void Outline(const Polygon* polygon) {
        if (!polygon->Selected)
            Out.Outline(polygon);
        for (const Polygon* subPolygon : EverySubPolygon(polygon))
            if (!subPolygon->Selected)
                Out.Outline(subPolygon);
    }

    /// What lies on it down to the next selected polygons, which come by themselves with what lies on them.
    void OutlineUnlessSelectedBelow(const Polygon* root) {
        Out.Outline(root);
        const Polygon* polygon = root->FirstChild;
        while (polygon && polygon != root) {
            if (!polygon->Selected) {
                Out.Outline(polygon);
                if (polygon->FirstChild) {
                    polygon = polygon->FirstChild;
                    continue;
                }
            }
            while (polygon != root && !polygon->NextSibling)
                polygon = polygon->Parent;
            if (polygon != root)
                polygon = polygon->NextSibling;
        }
    }

    const PolygonForm Form;
    Target& Out;
    const Material* BoundMaterial = nullptr;
    const Texture* BoundTexture = nullptr;
    bool MaterialKnown = false, TextureKnown, Generating = false;
};
