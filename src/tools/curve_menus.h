#pragma once

#include "gooey/menu.h"
#include "store/curves.h"

// The entries that the menus of all curves have, and the keys that they stand for. A menu's own check functions tell
// which curve it is about.

/// Item numbers of the entries.
enum CurveItem : std::int16_t {
    CurvePointItem = 329,
    CurveDeleteItem = 330,
    CurveCloseItem = 331,
    CurveBasisItem = 332,
    CurveLowItem = 333,
    CurveNormalItem = 334,
    CurveHighItem = 335,
};

/// The key of an item; 0 for items of other kinds.
int KeyOfCurveItem(int item);

/// What the entries show beside their labels, for a curve.
std::int32_t CurvePointCheck(const Elist& list);
std::int32_t CurveDeleteCheck(const Elist& list);

/// The submenus of the entries "Curve basis" and "Curve smoothness" of the curve that Curve() returns, and the checks
/// of the others, as a menu table wants them.
template <Elist& (*Curve)()>
struct CurveMenu {
    static std::int32_t Point() { return CurvePointCheck(Curve()); }

    static std::int32_t Delete() { return CurveDeleteCheck(Curve()); }

    static std::int32_t Close() { return SimpleMenuCheck(Curve().Closed); }

    template <int Basis>
    static std::int32_t HasBasis() {
        return ListMenuCheck(Curve().Basis, Basis);
    }

    template <int Level>
    static std::int32_t HasSmoothness() {
        return ListMenuCheck(Curve().Smoothness, Level);
    }

    static constexpr MenuEntry Bases[] = {
        {"B-spline", MenuEntryItem, CurveBasisItem, 0, nullptr, HasBasis<BSpline>},
        {"M-spline", MenuEntryLast, CurveBasisItem, 0, nullptr, HasBasis<MSpline>},
    };
    static constexpr MenuEntry Smoothnesses[] = {
        {"Low", MenuEntryItem, CurveLowItem, 'L', nullptr, HasSmoothness<LowSmoothness>},
        {"Normal", MenuEntryItem, CurveNormalItem, 'N', nullptr, HasSmoothness<NormalSmoothness>},
        {"High", MenuEntryLast, CurveHighItem, 'H', nullptr, HasSmoothness<HighSmoothness>},
    };
    static constexpr MenuEntry PointEntry = {"Curve point",          MenuEntryItem, CurvePointItem,
                                             ShiftLeftMouseShortcut, nullptr,       Point};
    static constexpr MenuEntry DeleteEntry = {"Delete point", MenuEntrySeparated, CurveDeleteItem, -'X', nullptr,
                                              Delete};
    static constexpr MenuEntry BasisEntry = {"Curve basis", MenuEntryItem, 0, 'B', Bases, nullptr};
    static constexpr MenuEntry SmoothnessEntry = {"Curve smoothness", MenuEntryLast, 0, 0, Smoothnesses, nullptr};

    static constexpr MenuEntry CloseEntry(const char* label) {
        return {label, MenuEntryItem, CurveCloseItem, 'C', nullptr, Close};
    }
};
