#pragma once

#include <cstdint>

struct Polygon;
struct Vertex;
struct View;
struct Window;
struct WorkPoly;

// Picks that wait for a click: the next press of the left button in a view picks a vertex or a polygon for whoever has
// asked, Escape gives up. Meanwhile the status line says what is wanted, all vertices are shown when vertices are, and
// the window of the asker takes no input. At most one waits for the running tool, and one for the tools of the grid,
// which come first.

/// What a click has picked.
struct Picked {
    ::View* View;
    /// Of a vertex: where it is, model space, in scene mode scene space.
    double Point[3];
    /// In object mode the record, else null.
    ::Vertex* Vertex;
    ::Polygon* Polygon;
    /// In scene mode: a copy of the polygon in scene space, which lasts for the call.
    WorkPoly* ScenePolygon;
};

/// What becomes of a pick that waits.
enum class PickAnswer {
    /// It goes on to the next vertex, or ends when it has all.
    Taken,
    /// It waits on, and the bell rings.
    Refused,
    /// It waits on.
    Ignored,
    /// It ends without a result.
    GivenUp,
};

inline constexpr int MostVerticesInPick = 3;

/// All that a pick declares: a constant table.
struct PendingPick {
    enum class Kind {
        Vertices,
        Polygon,
        /// Nothing: the press itself is wanted, for a drag.
        Press,
    };
    Kind Wants = Kind::Vertices;
    /// How many vertices, one after the other.
    int Wanted = 1;
    /// Those picked before the last one, and how many there are: the owner's, room for Wanted - 1; null for a single
    /// vertex. The views show them as red markers.
    double (*Points)[3] = nullptr;
    int* Count = nullptr;

    /// Decides about a view before anything is looked for there; null: all are welcome.
    PickAnswer (*Enter)(View* view) = nullptr;
    /// Decides about what was picked, *Count still being what it was before, and carries out what the last one settles.
    /// May begin another pick or end the tool.
    PickAnswer (*Take)(const Picked& picked);
    /// Nothing was under the pointer; and what the user is told about it, a message number or 0.
    PickAnswer Missed = PickAnswer::Refused;
    int MissedMessage = 0;

    /// The status lists, one for each vertex wanted; of a tool of the grid their first message is shown.
    const std::int16_t* Status[MostVerticesInPick] = {};
    /// Handle of the window that takes no input meanwhile; null: none.
    Window** Disables = nullptr;
    /// Escape takes back the vertex picked last, when there is one.
    bool EscapeTakesBack = false;
    /// Asked by a tool of the grid, not by the running tool.
    bool OfGrid = false;
    /// It has ended, one way or the other, and everything was given back.
    void (*Ended)() = nullptr;
};

/// Waits from now on; one that still waits at the same place is given up first. `pick` stays its owner's.
void BeginPick(const PendingPick& pick);
/// Gives it up; nothing when it does not wait.
void EndPick(const PendingPick& pick);
int PickWaits(const PendingPick& pick);
/// Gives up what waits for the running tool; its end does so by itself.
void EndPickOfTool();

/// Overlay: the vertices that have been picked so far.
void DrawPickedVertices(View* view);

/// The large viewport for a window that takes no input because of a pick, so that Escape works there too; null for
/// other windows.
Window* ViewportOfPick(const Window* disabled);

/// Bracket what needs all vertices shown; after the last end ShowVertices is as it was before the first beginning,
/// unless it was cleared meanwhile.
void ForceVerticesShown();
void UnforceVerticesShown();
