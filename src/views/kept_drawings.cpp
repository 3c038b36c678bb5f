#include "views/kept_drawings.h"

#include "base/debug.h"
#include "geometry/matrices.h"
#include "materials/material_definitions.h"
#include "platform/matrices.h"
#include "platform/recordings.h"
#include "store/accessors.h"
#include "store/appearance.h"
#include "store/motion.h"
#include "store/normals.h"
#include "store/walks.h"
#include "views/capabilities.h"
#include "views/kept_recording.h"
#include "views/polygon_targets.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <unordered_map>
#include <vector>

int CheckKeptDrawings;
int StaleDrawingsFound;
int PiecesRecorded;

namespace {

/// A piece ends with every polygon whose address is one of that many, so that pieces stay the same when polygons are
/// added or removed elsewhere in the list; and with this many polygons at the latest.
constexpr std::uint64_t UsualPiece = 4096;
constexpr int LargestPiece = 3 * UsualPiece;

bool EndsPiece(const Polygon* polygon) {
    const std::uint64_t mixed = reinterpret_cast<std::uintptr_t>(polygon) / sizeof(void*) * 0x9E3779B97F4A7C15U;
    return (mixed >> 40) % UsualPiece == 0;
}

using PolygonLink = Polygon* Polygon::*;

/// Some polygons of a list in sequence.
struct Stretch {
    const Polygon* First;
    int Count;
};

template <class Target>
void DrawStretch(const Stretch& stretch, PolygonLink next, PolygonForm form, Target& target) {
    PolygonDrawer<Target> drawer(form, target);
    const Polygon* polygon = stretch.First;
    for (int i = 0; i < stretch.Count; ++i, polygon = polygon->*next)
        drawer.Draw(polygon);
}

/// From one polygon of a list on.
Stretch StretchFrom(const Polygon* first, PolygonLink next) {
    Stretch stretch = {first, 0};
    for (const Polygon* polygon = first; polygon; polygon = polygon->*next) {
        ++stretch.Count;
        if (EndsPiece(polygon) || stretch.Count == LargestPiece)
            break;
    }
    return stretch;
}

struct Piece {
    std::uint64_t Looks;
    KeptRecording Kept;
    Stretch Holds;
    /// During a motion: how much of it moves, what must have its normals made anew, and in which step it was recorded.
    Moves Moving = Moves::Nothing;
    std::vector<Polygon*> Changing;
    unsigned RecordedIn = 0;
};

/// Finds out how much of what is drawn moves.
class MotionTarget {
  public:
    explicit MotionTarget(Piece& piece) : Of(piece) {}

    void SetMaterial(const Material*) {}

    void SetTexture(const Texture*) {}

    void SetTextureGeneration(bool) {}

    void SetDepthWrites(bool) {}

    void SetColourWrites(bool) {}

    void Fill(const Polygon* polygon, const Material*, bool) { Outline(polygon); }

    void Outline(const Polygon* polygon) {
        const Moves moves = HowMuchMoves(polygon);
        if (moves != Moves::Nothing)
            Of.Changing.push_back(const_cast<Polygon*>(polygon)); // lists know their polygons as constant here
        if (First)
            Of.Moving = moves;
        else if (moves != Of.Moving)
            Of.Moving = Moves::Something;
        First = false;
    }

  private:
    Piece& Of;
    bool First = true;
};

/// One list of polygons in one form.
class KeptDrawing {
  public:
    /// Brings the pieces up to date; true when they were not.
    bool Update(const Polygon* first, PolygonLink next, PolygonForm form) {
        std::vector<Piece> former;
        former.swap(Pieces);
        std::unordered_multimap<std::uint64_t, Piece*> byLooks;
        for (Piece& piece : former)
            byLooks.emplace(piece.Looks, &piece);
        std::size_t kept = 0;
        while (first) {
            const Stretch stretch = StretchFrom(first, next);
            Fingerprint looks;
            DrawStretch(stretch, next, form, looks);
            for (int i = 0; i < stretch.Count; ++i)
                first = first->*next;
            if (looks.Nothing())
                continue;
            Pieces.push_back({looks.Value(), KeptRecording(), stretch, Moves::Nothing, {}, 0});
            if (const auto found = byLooks.extract(looks.Value())) {
                Pieces.back().Kept = std::move(found.mapped()->Kept);
                ++kept;
            }
        }
        const bool changed = kept != former.size() || kept != Pieces.size();
        former.clear(); // before anything is recorded: both at once need not fit
        for (Piece& piece : Pieces)
            if (piece.Kept.IsEmpty())
                Record(piece, next, form);
        Classified = 0;
        return changed;
    }

    /// While some of the polygons move: `way` leads from where they were recorded.
    void DrawMoving(const Motion& motion, const Matrix& way, PolygonLink next, PolygonForm form, std::uint32_t colour) {
        if (Classified != motion.Number)
            Classify(next, form);
        Classified = motion.Number;
        for (Piece& piece : Pieces) {
            if (piece.Moving == Moves::Something && piece.RecordedIn != motion.Step) {
                GenerateNormalsOf(piece.Changing);
                Record(piece, next, form);
                piece.RecordedIn = motion.Step;
                piece.Looks = 0; // of this moment: the next update makes it anew
            }
            const bool taken = piece.Moving == Moves::Everything;
            if (taken) {
                gl::pushmatrix();
                gl::multmatrix(way.Element);
            }
            Draw(piece, form, colour);
            if (taken)
                gl::popmatrix();
        }
    }

    void Draw(PolygonForm form, std::uint32_t colour) const {
        for (const Piece& piece : Pieces)
            Draw(piece, form, colour);
    }

    /// Says that polygons may look different.
    void Doubt() { UpToDate = 0; }

    unsigned UpToDate = 0;  // the Age at the last Update
    unsigned LastDrawn = 0; // the number of the drawing
    unsigned UpdatedIn = 0; // the motion of the last Update, 0 for none
    Matrix UpdatedAt;       // its way at that time

  private:
    static void Draw(const Piece& piece, PolygonForm form, std::uint32_t colour) {
        form >= PolygonForm::Outline ? piece.Kept.Draw(colour) : piece.Kept.Draw();
    }

    static void Record(Piece& piece, PolygonLink next, PolygonForm form) {
        piece.Kept.Record([&] {
            GraphicsTarget target(form == PolygonForm::FacingOutline);
            DrawStretch(piece.Holds, next, form, target);
        });
        ++PiecesRecorded;
    }

    void Classify(PolygonLink next, PolygonForm form) {
        MarkVerticesInMotion();
        for (Piece& piece : Pieces) {
            piece.Changing.clear();
            MotionTarget target(piece);
            DrawStretch(piece.Holds, next, form, target);
            if (piece.Moving != Moves::Something)
                piece.Changing = {};
        }
    }

    std::vector<Piece> Pieces;
    unsigned Classified = 0; // the motion for which it is known what moves
};

/// The drawings of one owner of a list, by form.
using KeptForms = std::array<std::unique_ptr<KeptDrawing>, PolygonFormCount>;

// Never destroyed: at the end of the program the graphics layer may be gone before.
auto& OfSubObjects = *new std::unordered_map<const SubObject*, KeptForms>;
auto& OfSelections = *new std::unordered_map<const Object*, KeptForms>;
/// Grows when everything may look different.
unsigned Age = 1;
std::uint64_t Definitions;
unsigned DrawingNumber; // of views

/// Beyond this many bytes of graphics memory, drawings are given up that this many views have done without.
constexpr long MuchMemory = 768L << 20;
constexpr unsigned UnwantedAfter = 32;

void ReportStale(const char* what) {
    ++StaleDrawingsFound;
    std::fprintf(stderr, "A kept drawing of %s is out of date: nobody told of a change.\n", what);
}

void Draw(KeptForms& forms, const Polygon* first, PolygonLink next, PolygonForm form, std::uint32_t colour,
          const char* what) {
    std::unique_ptr<KeptDrawing>& drawing = forms[static_cast<std::size_t>(form)];
    if (!drawing)
        drawing = std::make_unique<KeptDrawing>();
    const Motion* motion = CurrentMotion();
    if (motion && motion->Of != CurrentObject())
        motion = nullptr;
    const bool inDoubt = drawing->UpToDate != Age;
    if (inDoubt || (CheckKeptDrawings && !motion)) {
        if (motion)
            MakeNormalsInMotion();
        if (drawing->Update(first, next, form) && !inDoubt)
            ReportStale(what);
        drawing->UpToDate = Age;
        drawing->UpdatedIn = motion ? motion->Number : 0;
        if (motion)
            drawing->UpdatedAt = motion->Way;
    }
    drawing->LastDrawn = DrawingNumber;
    if (!motion) {
        drawing->Draw(form, colour);
        return;
    }
    Matrix way = motion->Way;
    if (drawing->UpdatedIn == motion->Number)
        MultMatrix(MatrixInverse(drawing->UpdatedAt), way, way);
    drawing->DrawMoving(*motion, way, next, form, colour);
}

template <class Owner>
void ReleaseUnwanted(std::unordered_map<const Owner*, KeptForms>& drawings) {
    for (auto& [owner, forms] : drawings)
        for (std::unique_ptr<KeptDrawing>& drawing : forms)
            if (drawing && DrawingNumber - drawing->LastDrawn > UnwantedAfter)
                drawing.reset();
}

template <class Owner>
void Doubt(std::unordered_map<const Owner*, KeptForms>& drawings, const Owner* owner, bool outlinesOnly = false) {
    const auto found = drawings.find(owner);
    if (found == drawings.end())
        return;
    for (std::size_t form = outlinesOnly ? static_cast<std::size_t>(PolygonForm::Outline) : 0; form < PolygonFormCount;
         ++form)
        if (found->second[form])
            found->second[form]->Doubt();
}

void PolygonChanged(const Polygon* polygon) {
    Doubt(OfSubObjects, static_cast<const SubObject*>(polygon->SubObject));
    // Whose selection it is in is not known to the polygon.
    if (polygon->Selected)
        for (auto& [object, forms] : OfSelections)
            Doubt(OfSelections, object);
}

void ObjectChanged(Object* object) {
    for (const SubObject* subObject : EverySubObject(object))
        Doubt(OfSubObjects, subObject);
    Doubt(OfSelections, static_cast<const Object*>(object));
}

void SelectionChanged(Object* object) {
    for (const SubObject* subObject : EverySubObject(object))
        Doubt(OfSubObjects, subObject, true);
    Doubt(OfSelections, static_cast<const Object*>(object));
}

void EverythingChanged() {
    ++Age;
}

void SubObjectFreed(SubObject* subObject) {
    OfSubObjects.erase(subObject);
}

void ObjectFreed(Object* object) {
    OfSelections.erase(object);
}

/// Whoever draws first starts this.
void FollowChanges() {
    static const bool following = [] {
        CheckKeptDrawings |= DeveloperBuild;
        ListenToAppearance({PolygonChanged, ObjectChanged, EverythingChanged, ObjectChanged, SelectionChanged, nullptr,
                            SubObjectFreed, ObjectFreed, nullptr, nullptr});
        return true;
    }();
    static_cast<void>(following);
    static unsigned generation;
    if (generation != gl::RecordingGeneration())
        ReleaseKeptDrawings(); // they are lost anyway
    generation = gl::RecordingGeneration();
}

} // namespace

void DrawKept(const SubObject* subObject, PolygonForm form, std::uint32_t colour) {
    FollowChanges();
    Draw(OfSubObjects[subObject], subObject->FirstPolygon, &Polygon::NextSibling, form, colour,
         subObject->Name ? subObject->Name : "a sub-object");
}

void DrawKeptSelection(const Object* object, PolygonForm form, std::uint32_t colour) {
    FollowChanges();
    Draw(OfSelections[object], object->FirstSelectedPolygon, &Polygon::NextSelected, form, colour, "the selection");
}

void NoteDefinitions() {
    std::uint64_t now = static_cast<std::uint64_t>(BlendingAvailable);
    const auto mix = [&now](std::uint64_t word) {
        now = (now ^ word) * 0x9E3779B97F4A7C15U;
        now ^= now >> 29;
    };
    for (const Material* material : Along<&Material::Next>(FirstMaterial())) {
        mix(reinterpret_cast<std::uintptr_t>(material));
        mix(static_cast<std::uint64_t>(material->GLIndex));
        // Their colours are definitions, which recordings use as they are now.
        if (!UnlitMaterial(material))
            mix(material->PackedColour);
        if (!BlendingAvailable)
            mix(static_cast<std::uint64_t>(material->Alpha * 255));
    }
    for (const Texture* texture : Along<&Texture::Next>(FirstTexture())) {
        mix(reinterpret_cast<std::uintptr_t>(texture));
        mix(static_cast<std::uint64_t>(texture->GLId));
    }
    if (now != Definitions)
        ++Age;
    Definitions = now;
}

void LimitKeptDrawings() {
    if (++DrawingNumber % UnwantedAfter || gl::RecordingMemory() < MuchMemory)
        return;
    ReleaseUnwanted(OfSubObjects);
    ReleaseUnwanted(OfSelections);
}

void ReleaseKeptDrawings() {
    OfSubObjects.clear();
    OfSelections.clear();
}
