#include "interaction/ruler.h"

#include "interaction/views_test.h"
#include "views/moves.h"

#include <cstdio>

namespace {

std::string Told;
Window* ToldIn;

/// "2.50" for a change, "-2.50" for one during a drag.
void Change(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%s%.2f ", Moving ? "-" : "", value);
    Told += text;
    ToldIn = CurrentWindow;
}

void Release() {
    Told += Moving ? "released early " : "released ";
}

/// Tells what the ruler tells.
class RulerTest : public ViewsTest {
  protected:
    void SetUp() override {
        ViewsTest::SetUp();
        RulerGizmoOpened = 0;
        RulerSize = 0;
        Told.clear();
    }

    void TearDown() override {
        CloseRulerWindow(0);
        ViewsTest::TearDown();
    }

    static void Open(double value = 1) {
        {
            WindowScope scope(Viewport[0]);
            OpenRulerGizmo(
                "Offset:", Change, Release, [] { Told += "cancel"; }, [] { Told += "done"; }, value);
        }
        Settle();
    }

    /// What the owner was told during these commands.
    static std::string Play(const std::string& script) {
        Told.clear();
        ViewsTest::Play("in \"Ruler\"\n" + script);
        return Told;
    }
};

TEST_F(RulerTest, FollowsThePointerWithinTheScale) {
    Open();
    // Ten pixels are a tenth.
    EXPECT_EQ(
        Play("move 124 70\npress left\nmove 134 70\nmove 274 70\nmove 900 70\nmove 2 70\nmove 149 70\nrelease left"),
        "-1.10 -2.50 -5.00 -0.00 -1.25 released ");
    EXPECT_EQ(ToldIn, Viewport[0]);
    EXPECT_EQ(RulerValue(), 1.25);
    EXPECT_FALSE(Moving);
}

TEST_F(RulerTest, TakesTypedValues) {
    Open();

    const struct {
        const char *Typed, *Told;
        double Value;
    } cases[] = {
        {"2.5", "2.50 ", 2.5}, {"7,25", "7.25 ", 7.25},           {"-1", "1.00 ", 1},    {".", "", 1},
        {"", "", 1},           {"123456789", "12345.00 ", 12345}, {"1e5", "15.00 ", 15},
    };

    for (const auto& input : cases) {
        EXPECT_EQ(Play(std::string("field \"Offset:\" \"") + input.Typed + "\""), input.Told) << input.Typed;
        EXPECT_EQ(RulerValue(), input.Value) << input.Typed;
    }
}

TEST_F(RulerTest, TheOtherSizeReadsTheMarkerAnew) {
    Open(2);
    EXPECT_EQ(Play("button \"  10  \""), "4.00 ");
    EXPECT_EQ(Play("button 5"), "2.00 ");
    EXPECT_EQ(Play("field \"Offset:\" 99999\nbutton \"  10  \""), "99999.00 199998.00 ");
    EXPECT_EQ(Play("drag left 500 80 600 80\nbutton 5").substr(Told.size() - 14), "released 5.00 ");
}

TEST_F(RulerTest, TellsItsEndOnce) {
    Open();
    EXPECT_EQ(Play("button \"Done\""), "done");
    EXPECT_EQ(RulerGizmo, nullptr);
    Open();
    EXPECT_EQ(Play("button \"Cancel\""), "cancel");
    Open();
    EXPECT_EQ(Play("close"), "cancel");
    EXPECT_FALSE(BadStuffDisabled);

    // Its owner ends it, and another begins before the window is gone.
    Open();
    Told.clear();
    CloseRulerWindow(1);
    CloseRulerWindow(0);
    EXPECT_FALSE(RulerGizmoIsOpen());
    EXPECT_EQ(Told, "done");
    Open(3);
    EXPECT_TRUE(RulerGizmo && BadStuffDisabled);
    EXPECT_EQ(RulerValue(), 3);

    // Closed in the middle of a drag; at home again where it was.
    Play("place 40 50\nmove 60 70\npress left\nmove 80 70\nclose\nrelease left");
    EXPECT_NE(Told.find("released cancel"), std::string::npos) << Told;
    EXPECT_FALSE(Moving);
    EXPECT_EQ(RulerX, 40);
    Open();
    EXPECT_EQ(RulerGizmo->X, 40);
}

TEST_F(RulerTest, EscapeGivesUpADrag) {
    Open();
    Play("move 124 70\npress left\nmove 274 70\nkey Escape\nrelease left");
    EXPECT_EQ(RulerValue(), 1);
    EXPECT_NE(Told.find("1.00 released"), std::string::npos) << Told;
    EXPECT_TRUE(RulerGizmoIsOpen());
}

} // namespace
