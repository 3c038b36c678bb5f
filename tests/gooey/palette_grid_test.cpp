#include "gooey/palette_grid.h"
#include "gooey/toolkit_test.h"

#include "gooey/draw.h"
#include "gooey/gadget_skeleton.h"
#include "gooey/pointer.h"
#include "gooey/redraw.h"
#include "gooey/report.h"
#include "gooey/scroll_window.h"
#include "platform/snapshots.h"

#include <algorithm>

namespace {

struct Swatch {
    std::string Name;
    std::int32_t Slot = 0;
};

std::vector<Swatch> Swatches;
void* CurrentSwatch;
std::vector<std::string> Drawn;

std::uint32_t PixelAt(int x, int y) {
    return gl::WindowPicture(CurrentWindow->Gid).at(x, y) & 0xFFFFFF;
}

Swatch* As(const void* entry) {
    return static_cast<Swatch*>(const_cast<void*>(entry));
}

const PaletteEntries Entries = {
    .First = []() -> void* { return Swatches.empty() ? nullptr : Swatches.data(); },
    .Next = [](const void* entry) -> void* { return entry == &Swatches.back() ? nullptr : As(entry) + 1; },
    .Current = [] { return CurrentSwatch; },
    .SlotOf = [](void* entry) -> std::int32_t& { return As(entry)->Slot; },
    .NameOf = [](const void* entry) { return As(entry)->Name.c_str(); },
    .Draw =
        [](void* entry, int x, int y) {
            Drawn.push_back(As(entry)->Name);
            SetColour(0x00FF00);
            DrawBox(x + 3, y + 3, 68, 85, ShadeFull);
        },
};

PaletteGrid Grid = {.EntryWidth = 74, .EntryHeight = 91, .Entries = &Entries};

class PaletteGrids : public ToolkitTest {
  protected:
    Window* Target = nullptr;

    void OpenPalette(int count, int width = 620, int height = 183 + 91) {
        Swatches.clear();
        for (int i = 0; i < count; ++i)
            Swatches.push_back({"swatch " + std::to_string(i)});
        CurrentSwatch = count ? &Swatches[0] : nullptr;
        Target = Open("Palette", 10, 100, width, height);
        AddPaletteGrid(Grid);
        Settle();
        Drawn.clear();
    }

    std::vector<GadgetItem> Items() const { return GadgetsOf(Target).back().Description.Items; }

    static std::string NameUnderPointer() {
        const void* entry = PaletteEntryAtPointer(Grid);
        return entry ? As(entry)->Name : "none";
    }
};

} // namespace

TEST_F(PaletteGrids, LayRowsOutAndScroll) {
    struct Case {
        int Count, Width, Columns, ContentHeight;
    };

    // The width between two steps shows fewer columns, and all entries can still be reached.
    for (const Case& test : {Case{9, 620, 8, 182}, Case{8, 620, 8, 91}, Case{9, 612, 7, 182}, Case{8, 612, 7, 182},
                             Case{0, 620, 8, 0}, Case{3, 60, 0, 273}}) {
        OpenPalette(test.Count, test.Width);
        int x = 0, y = 0;
        Grid.Slot = 0;
        Grid.Columns = 0;
        EXPECT_EQ(PaletteXYCalc(Grid, x, y), test.Columns > 0) << test.Width;
        EXPECT_EQ(Grid.Columns, test.Columns) << test.Width;
        EXPECT_EQ(ScrollOf(Grid.ScrollGadget).ContentH, test.ContentHeight) << test.Count << " in " << test.Width;
        ShutWindow(Target);
        EXPECT_EQ(Grid.ScrollGadget, nullptr);
    }
    OpenPalette(9);
    EXPECT_EQ(Items().size(), 8u) << "the ninth is in the second row";
    Play("in Palette\nkey PageDown");
    ASSERT_EQ(Items().size(), 1u);
    EXPECT_EQ(Items()[0].Box.X, Grid.X);
    EXPECT_EQ(Items()[0].Label, "swatch 8");
    ShowPaletteEntry(Grid, &Swatches[3]);
    EXPECT_TRUE(Items()[0].On);
    EXPECT_EQ(Grid.Scroll, 0);
}

TEST_F(PaletteGrids, FindTheEntryUnderThePointer) {
    OpenPalette(9, 620, 183 + 2 * 91);
    const std::pair<const char*, const char*> cases[] = {
        {"move \"item:swatch 0\"", "swatch 0"},
        {"move \"item:swatch 7\"", "swatch 7"},
        {"move \"item:swatch 8\"", "swatch 8"},
        {"move 200 200", "none"}, // a cell without entry
        {"move 610 200", "none"}, // the scroll bar
        {"move 300 20", "none"},
    };
    for (const auto& [script, name] : cases) {
        Play("in Palette\n" + std::string(script));
        ReadMousePos();
        EXPECT_EQ(NameUnderPointer(), name) << script;
    }
}

TEST_F(PaletteGrids, ShowChangesInPlace) {
    OpenPalette(3);
    Grid.Slot = 0;
    int x, y;
    ASSERT_TRUE(PaletteXYCalc(Grid, x, y));
    const std::uint32_t background = BackgroundOf(Target), highlight = White, black = Black;
    EXPECT_EQ(PixelAt(x, y), highlight);
    EXPECT_EQ(PixelAt(x + 2, y + 2), black);
    EXPECT_EQ(PixelAt(x + 74, y), background);
    EXPECT_EQ(PixelAt(x + 3 * 74 + 30, y + 30), black) << "a cell without entry";
    EXPECT_EQ(PixelAt(x + 3 * 74, y), background);

    MovePaletteHighlight(Grid, &Swatches[0], &Swatches[2]);
    CurrentSwatch = &Swatches[2];
    EXPECT_TRUE(Drawn.empty()) << "only the frames change";
    EXPECT_EQ(PixelAt(x, y), background);
    EXPECT_EQ(PixelAt(x + 2 * 74, y), highlight);
    EXPECT_EQ(Grid.Highlighted, 2);
    RedrawPaletteEntry(Grid, &Swatches[1]);
    EXPECT_EQ(Drawn, std::vector<std::string>{"swatch 1"});

    ShutWindow(Target);
    RedrawPaletteEntry(Grid, &Swatches[1]);
    MovePaletteHighlight(Grid, nullptr, &Swatches[1]);
    EXPECT_EQ(Drawn.size(), 1u);
}
