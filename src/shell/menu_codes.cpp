#include "shell/commands.h"

#include <algorithm>
#include <iterator>

namespace {

/// The commands of item numbers that follow each other from First on.
struct CodesOfItems {
    int First;
    std::span<const int> Codes;
};

constexpr int FileCodes[] = {168, 172, 257, 258, 259, 260};
constexpr int EditCodes[] = {262, 179, 177, 156, 175, 120, 154};
constexpr int ViewCodes[] = {116, 102, 108, 117, 98, 114, 51, 119, 46, 44, 263, 148};
constexpr int VertexCodes[] = {264, 265, 266, 270, 272, 273, 163, 274, 275};
constexpr int PolygonCodes[] = {276, 159, 167, 277, 283, 282, 286, 146, 145, 290, 291, 292, 293, 287, 288,
                                289, 158, 294, 295, 296, 297, 298, 299, 300, 301, 302, 303, 304, 284, 285};
constexpr int ObjectCodes[] = {111, 107, 306, 305, 307, 308, 309, 310};
constexpr int SceneCodes[] = {323, 169, 324, 325, 326, 327, 113};
constexpr int AttributeCodes[] = {311, 312, 313, 314, 315, 316, 317, 318, 319, 320, 321, 322};
constexpr int GizmoCodes[] = {103, 109, 101, 99};
constexpr int SettingCodes[] = {9, 173, 176, 328, 329, 330, 334, 335, 333, 336, 331, 332, 337};

constexpr int AddedSettingCodes[] = {401};
constexpr int PointedAtCodes[] = {402};

constexpr CodesOfItems Menus[] = {
    {11, FileCodes},    {18, EditCodes},     {25, ViewCodes},         {37, VertexCodes},
    {46, PolygonCodes}, {76, ObjectCodes},   {84, SceneCodes},        {91, AttributeCodes},
    {103, GizmoCodes},  {107, SettingCodes}, {17, AddedSettingCodes}, {122, PointedAtCodes},
};

struct HelpItem {
    int Item;
    const char* Page;
};

constexpr HelpItem HelpItems[] = {
    {120, "TutorIndex"},
    {121, "ReferenceIndex"},
    {123, "WhatsNew"},
    {124, "LastMinute"},
};

} // namespace

int CodeOfItem(int item) {
    for (const CodesOfItems& menu : Menus)
        if (item >= menu.First && item < menu.First + static_cast<int>(menu.Codes.size()))
            return menu.Codes[item - menu.First];
    return 0;
}

const char* ManualPageOfItem(int item) {
    const auto found = std::find_if(std::begin(HelpItems), std::end(HelpItems),
                                    [&](const HelpItem& help) { return help.Item == item; });
    return found == std::end(HelpItems) ? nullptr : found->Page;
}
