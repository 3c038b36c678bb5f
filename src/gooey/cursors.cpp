#include "gooey/cursors.h"

#include "gooey/window.h"

#include "base/debug.h"

#include "platform/capabilities.h"
#include "platform/cursors.h"

#include <vector>

namespace {

/// A row of a picture as bits, the leftmost pixel in bit size - 1.
std::uint32_t RowOf(const char* row, int size) {
    std::uint32_t bits = 0;
    for (int column = 0; column < size && row[column]; ++column)
        if (row[column] != ' ')
            bits |= 1u << (size - 1 - column);
    return bits;
}

/// All bits from the highest set one to the lowest.
std::uint32_t SpanOf(std::uint32_t bits) {
    if (!bits)
        return 0;
    std::uint32_t span = bits;
    for (int shift = 1; shift < 32; shift *= 2)
        span |= span >> shift;
    return span & ~((bits & -bits) - 1);
}

/// The picture and the silhouette around it, a row each, bottom row first.
struct Mask {
    std::vector<std::uint32_t> Picture, Silhouette;
};

Mask MakeMask(const char* const* picture, int size) {
    std::uint32_t all = size == 32 ? 0xFFFFFFFF : (1u << size) - 1;
    Mask mask;
    for (int row = size - 1; row >= 0; --row)
        mask.Picture.push_back(RowOf(picture[row], size));
    for (int row = 0; row < size; ++row) {
        std::uint32_t dilated = mask.Picture[row];
        if (row > 0)
            dilated |= mask.Picture[row - 1];
        if (row + 1 < size)
            dilated |= mask.Picture[row + 1];
        dilated |= dilated << 1 | dilated >> 1;
        mask.Silhouette.push_back(SpanOf(dilated & all) ^ mask.Picture[row]);
    }
    return mask;
}

/// Rows as words of 16 bits, the left word first.
void AppendWords(const std::vector<std::uint32_t>& rows, int size, std::uint16_t*& words) {
    for (std::uint32_t row : rows) {
        if (size == 32)
            *words++ = static_cast<std::uint16_t>(row >> 16);
        *words++ = static_cast<std::uint16_t>(row);
    }
}

void MakePlanes(std::uint16_t* planes, const char* const* picture, int size) {
    Mask mask = MakeMask(picture, size);
    AppendWords(mask.Picture, size, planes);
    AppendWords(mask.Silhouette, size, planes);
}

void DefineCursor(const char* const* picture, int index, int hotX, int hotY, int withMask, int size) {
    std::uint16_t planes[128];
    MakePlanes(planes, picture, size);
    bool twoPlanes = withMask && gl::getgdesc(gl::GD_CURSOR_PLANES) == 2;
    if (size == 16)
        gl::curstype(twoPlanes ? gl::C16X2 : gl::C16X1);
    else
        gl::curstype(twoPlanes ? gl::C32X2 : gl::C32X1);
    gl::defcursor(index, planes);
    gl::curorigin(index, hotX, size - 1 - hotY);
}

/// An octagon three pixels thick, rows 2 to 28, columns 1 to 30, with STOP in the middle.
constexpr const char* BusyPicture[32] = {
    "                                ", //
    "                                ", //
    "         XXXXXXXXXXXXXX         ", //
    "        XXXXXXXXXXXXXXXX        ", //
    "       XXXXXXXXXXXXXXXXXX       ", //
    "      XXXX            XXXX      ", //
    "     XXXX              XXXX     ", //
    "    XXXX                XXXX    ", //
    "   XXXX                  XXXX   ", //
    "  XXXX                    XXXX  ", //
    " XXXX                      XXXX ", //
    " XXX                        XXX ", //
    " XXX  XXX XXXXX  XXX  XXXX  XXX ", //
    " XXX X   X  X   X   X X   X XXX ", //
    " XXX X      X   X   X X   X XXX ", //
    " XXX  XXX   X   X   X XXXX  XXX ", //
    " XXX     X  X   X   X X     XXX ", //
    " XXX X   X  X   X   X X     XXX ", //
    " XXX  XXX   X    XXX  X     XXX ", //
    " XXX                        XXX ", //
    " XXXX                      XXXX ", //
    "  XXXX                    XXXX  ", //
    "   XXXX                  XXXX   ", //
    "    XXXX                XXXX    ", //
    "     XXXX              XXXX     ", //
    "      XXXX            XXXX      ", //
    "       XXXXXXXXXXXXXXXXXX       ", //
    "        XXXXXXXXXXXXXXXX        ", //
    "         XXXXXXXXXXXXXX         ", //
    "                                ", //
    "                                ", //
    "                                ", //
};

/// The smaller one of developer builds.
constexpr const char* SmallBusyPicture[16] = {
    "                ", //
    "     XXXXXX     ", //
    "    X      X    ", //
    "   X        X   ", //
    "  X          X  ", //
    " X            X ", //
    " X            X ", //
    " X  XXXXXXXX  X ", //
    " X  XXXXXXXX  X ", //
    " X            X ", //
    " X            X ", //
    "  X          X  ", //
    "   X        X   ", //
    "    X      X    ", //
    "     XXXXXX     ", //
    "                ", //
};

} // namespace

void DefineCursor16(const char* const* picture, int index, int hotX, int hotY, int withMask) {
    DefineCursor(picture, index, hotX, hotY, withMask, 16);
}

void DefineCursor32(const char* const* picture, int index, int hotX, int hotY, int withMask) {
    DefineCursor(picture, index, hotX, hotY, withMask, 32);
}

void MakeMask16(std::uint16_t planes[32], const char* const* picture) {
    MakePlanes(planes, picture, 16);
}

void MakeMask32(std::uint16_t planes[128], const char* const* picture) {
    MakePlanes(planes, picture, 32);
}

void DefineBusyCursor() {
    if (DeveloperBuild)
        DefineCursor16(SmallBusyPicture, BusyCursor, 8, 8, 1);
    else
        DefineCursor32(BusyPicture, BusyCursor, 16, 16, 1);
}

void SetCursor(int index) {
    if (!CurrentWindow)
        return;
    CurrentWindow->Cursor = static_cast<std::int16_t>(index);
    gl::setcursor(index, 0, 0);
}

void Busy() {
    if (!CurrentWindow)
        return;
    if (CurrentWindow->Cursor != BusyCursor)
        CurrentWindow->SavedCursor = CurrentWindow->Cursor;
    SetCursor(BusyCursor);
}

void Unbusy() {
    // What was busy may have been so inside a window that is disabled on its own account.
    if (CurrentWindow && CurrentWindow->Disabled <= 0)
        SetCursor(CurrentWindow->SavedCursor);
}
