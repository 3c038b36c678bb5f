#include "tools/curve_menus.h"

#include "interaction/curve_editing.h"

int KeyOfCurveItem(int item) {
    static constexpr int keys[] = {CurvePointKey, CurveDeleteKey, 'c', 'b', 'l', 'n', 'h'};
    return item >= CurvePointItem && item <= CurveHighItem ? keys[item - CurvePointItem] : 0;
}

std::int32_t CurvePointCheck(const Elist& list) {
    return list.Current ? SimpleMenuCheck(list.Current->CurvePoint) : MenuDisabled;
}

std::int32_t CurveDeleteCheck(const Elist& list) {
    return list.Current ? 0 : MenuDisabled;
}
