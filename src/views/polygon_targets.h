#pragma once

#include "store/records.h"

#include <cstdint>
#include <vector>

// Where drawn polygons go: see PolygonDrawer.

/// What is drawn, as a number: two sequences with the same number look the same.
class Fingerprint {
  public:
    void SetMaterial(const Material* material) { Add(1, static_cast<std::uint64_t>(material ? material->GLIndex : 0)); }

    void SetTexture(const Texture* texture) { Add(2, static_cast<std::uint64_t>(texture ? texture->GLId : 0)); }

    void SetTextureGeneration(bool on) { Add(3, on); }

    void SetDepthWrites(bool on) { Add(4, on); }

    void SetColourWrites(bool on) { Add(5, on); }

    void Fill(const Polygon* polygon, const Material* material, bool withTextureCoordinates);
    void Outline(const Polygon* polygon);

    std::uint64_t Value() const { return State; }

    bool Nothing() const { return !Anything; }

  private:
    void Mix(std::uint64_t word) {
        State = (State ^ word) * 0x9E3779B97F4A7C15U;
        State ^= State >> 29;
    }

    void Add(std::uint64_t kind, std::uint64_t value) { Mix(kind << 40 ^ value); }

    template <class Number>
    void MixNumbers(const Number* numbers, int count);

    std::uint64_t State = 0x243F6A8885A308D3U;
    bool Anything = false;
};

/// The graphics layer, to be recorded.
class GraphicsTarget {
  public:
    /// With normals for lines that face the eye; each edge is then drawn with every polygon that has it.
    explicit GraphicsTarget(bool facingLines) : Facing(facingLines) {}

    void SetMaterial(const Material* material);
    void SetTexture(const Texture* texture);
    void SetTextureGeneration(bool on);
    void SetDepthWrites(bool on);
    void SetColourWrites(bool on);
    void Fill(const Polygon* polygon, const Material* material, bool withTextureCoordinates);
    void Outline(const Polygon* polygon);

  private:
    /// The edges drawn so far, in a table with open addressing.
    class EdgeSet {
      public:
        /// False when it is there already, in either direction.
        bool Insert(const Vertex* a, const Vertex* b);

      private:
        struct Edge {
            const Vertex *A, *B;
        };

        static std::size_t HashOf(const Edge& edge);
        Edge* Find(const Edge& edge);
        void Grow();

        std::vector<Edge> Table;
        std::size_t Count = 0;
    };

    bool BindUnlit(const Material* material, bool unlit);

    bool Facing;
    bool UnlitIsBound = false;
    EdgeSet Drawn;
};

/// The graphics layer at once, clipped to the work area in software. Outlines only of polygons that face the eye when
/// `facingOnly` is set.
class ClippedTarget : public GraphicsTarget {
  public:
    explicit ClippedTarget(bool facingOnly) : GraphicsTarget(false), FacingOnly(facingOnly) {}

    void Fill(const Polygon* polygon, const Material* material, bool withTextureCoordinates);
    void Outline(const Polygon* polygon);

  private:
    bool FacingOnly;
};
