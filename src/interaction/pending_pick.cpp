#include "interaction/pending_pick.h"

#include "base/slots.h"
#include "gooey/event_loop.h"
#include "gooey/message_table.h"
#include "gooey/messages.h"
#include "gooey/redraw.h"
#include "gooey/window.h"
#include "interaction/input.h"
#include "interaction/selection.h"
#include "platform/system.h"
#include "store/storage.h"
#include "views/display_flags.h"
#include "views/hooks.h"
#include "views/markers.h"
#include "views/status_line.h"
#include "views/viewports.h"

#include <algorithm>

namespace {

/// A place where a pick can wait, and what its hooks and its status have replaced.
struct Waiting {
    const PendingPick* Pick = nullptr;
    ClickHook FormerLeft = nullptr;
    KeyHook FormerKey = nullptr;
    const std::int16_t* FormerStatus = nullptr;
};

Waiting OfTool, OfGridTool;

int ForcedVertices, ShowedVertices;

Waiting& PlaceOf(const PendingPick& pick) {
    return pick.OfGrid ? OfGridTool : OfTool;
}

int CountOf(const PendingPick& pick) {
    return pick.Count ? *pick.Count : 0;
}

void ShowStatus(const PendingPick& pick) {
    const std::int16_t* status = pick.Status[CountOf(pick)];
    if (pick.OfGrid)
        GridStatus = status ? msg(*status) : nullptr;
    else
        StatusList = status;
    DirtyModelWindows();
}

void SetCount(const PendingPick& pick, int count) {
    if (pick.Count)
        *pick.Count = count;
}

void GiveBack(Waiting& place) {
    const Waiting ended = place;
    place = {};
    const PendingPick& pick = *ended.Pick;
    SetCount(pick, 0);
    (pick.OfGrid ? LeftGridFunc : LeftClickFunc) = ended.FormerLeft;
    (pick.OfGrid ? GridKeyFunc : KeyCheckFunc) = ended.FormerKey;
    if (pick.OfGrid)
        GridStatus = nullptr;
    else
        StatusList = ended.FormerStatus;
    if (pick.Wants == PendingPick::Kind::Vertices)
        UnforceVerticesShown();
    if (pick.Disables && *pick.Disables) {
        EnableWindow(*pick.Disables);
        DirtyWindow(*pick.Disables);
    }
    DirtyModelWindows();
    CallSlot(pick.Ended);
}

/// 0 when there was nothing under the pointer.
int FindPicked(const PendingPick& pick, View* view, Picked& picked) {
    picked = {.View = view, .Point = {}, .Vertex = nullptr, .Polygon = nullptr, .ScenePolygon = nullptr};
    switch (pick.Wants) {
    case PendingPick::Kind::Vertices: {
        Vertex* const vertex = SelectSingleVertex(view);
        if (!vertex)
            return 0;
        std::copy_n(vertex->Position, 3, picked.Point);
        picked.Vertex = ObjectIsolated ? vertex : nullptr;
        return 1;
    }
    case PendingPick::Kind::Polygon:
        if (ObjectIsolated)
            picked.Polygon = SelectSinglePolygon(view);
        else
            picked.ScenePolygon = SelectScenePolygon(view);
        return picked.Polygon || picked.ScenePolygon;
    default:
        return 1;
    }
}

PickAnswer AnswerTo(const PendingPick& pick, View* view) {
    const PickAnswer entered = pick.Enter ? pick.Enter(view) : PickAnswer::Taken;
    if (entered != PickAnswer::Taken)
        return entered;
    Picked picked;
    if (!FindPicked(pick, view, picked)) {
        if (pick.MissedMessage)
            TellUser(pick.MissedMessage);
        return pick.Missed;
    }
    const PickAnswer answer = pick.Take(picked);
    FreeSceneSelectPoly();
    const bool goesOn = PickWaits(pick) && answer == PickAnswer::Taken && CountOf(pick) + 1 < pick.Wanted;
    if (!goesOn)
        return answer;
    std::copy_n(picked.Point, 3, pick.Points[CountOf(pick)]);
    ++*pick.Count;
    ShowStatus(pick);
    return PickAnswer::Ignored;
}

void Click(const Waiting& place, View* view) {
    const PendingPick& pick = *place.Pick;
    const PickAnswer answer = AnswerTo(pick, view);
    DirtyModelWindows();
    if (answer == PickAnswer::Refused)
        gl::ringbell();
    else if (answer != PickAnswer::Ignored)
        EndPick(pick);
}

void Escape(const PendingPick& pick) {
    if (!pick.EscapeTakesBack || CountOf(pick) == 0) {
        EndPick(pick);
        return;
    }
    --*pick.Count;
    ShowStatus(pick);
}

void ClickForTool(View* view) {
    Click(OfTool, view);
}

void ClickForGrid(View* view) {
    Click(OfGridTool, view);
}

void KeyForTool(View* view, int character) {
    if (character == EscapeCharacter)
        Escape(*OfTool.Pick);
    else if (OfTool.FormerKey)
        OfTool.FormerKey(view, character);
    else
        CheckSafeKeys(view, character);
}

void KeyForGrid(View* view, int character) {
    if (character == EscapeCharacter)
        Escape(*OfGridTool.Pick);
    else
        CheckSafeKeys(view, character);
}

void DrawPoints(const Waiting& place, View* view) {
    if (place.Pick && CountOf(*place.Pick) > 0)
        DrawPickedPoints(view, *place.Pick->Points, CountOf(*place.Pick));
}

bool Disables(const Waiting& place, const Window* window) {
    return place.Pick && place.Pick->Disables && *place.Pick->Disables == window;
}

} // namespace

void BeginPick(const PendingPick& pick) {
    Waiting& place = PlaceOf(pick);
    if (place.Pick)
        GiveBack(place);
    SetCount(pick, 0);
    ClickHook& left = pick.OfGrid ? LeftGridFunc : LeftClickFunc;
    KeyHook& key = pick.OfGrid ? GridKeyFunc : KeyCheckFunc;
    place = {&pick, left, key, StatusList};
    left = pick.OfGrid ? ClickForGrid : ClickForTool;
    key = pick.OfGrid ? KeyForGrid : KeyForTool;
    if (pick.Wants == PendingPick::Kind::Vertices)
        ForceVerticesShown();
    if (pick.Disables && *pick.Disables)
        DisableWindow(*pick.Disables);
    ShowStatus(pick);
}

void EndPick(const PendingPick& pick) {
    if (PickWaits(pick))
        GiveBack(PlaceOf(pick));
}

int PickWaits(const PendingPick& pick) {
    return PlaceOf(pick).Pick == &pick;
}

void EndPickOfTool() {
    if (OfTool.Pick)
        GiveBack(OfTool);
}

void DrawPickedVertices(View* view) {
    DrawPoints(OfTool, view);
    DrawPoints(OfGridTool, view);
}

Window* ViewportOfPick(const Window* disabled) {
    return disabled && (Disables(OfTool, disabled) || Disables(OfGridTool, disabled)) ? Viewport[0] : nullptr;
}

void ForceVerticesShown() {
    if (ForcedVertices++ > 0)
        return;
    ShowedVertices = ShowVertices;
    ShowVertices = 1;
    DirtyModelWindows();
}

void UnforceVerticesShown() {
    if (--ForcedVertices > 0)
        return;
    // Who has hidden them meanwhile meant it.
    ShowVertices = ShowVertices && ShowedVertices;
    DirtyModelWindows();
}
