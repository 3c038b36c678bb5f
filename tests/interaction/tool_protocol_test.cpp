#include "interaction/views_test.h"

#include "gooey/button.h"
#include "gooey/event_loop.h"
#include "gooey/message_table.h"
#include "gooey/tool_window.h"
#include "views/status_line.h"

namespace {

std::string Heard;

void Say(const std::string& text) {
    Heard += (Heard.empty() ? "" : ", ") + text;
}

constexpr std::int16_t Status[] = {79, 0};

int TypeKey(View*, int character) {
    if (character != 'a')
        return 0;
    BeforeToolChange();
    AddVertex(1, 2, 3);
    Say("a");
    return 1;
}

const Tool Plain = {
    .Left = DummyClickFunc,
    .Key = TypeKey,
    .Status = Status,
    .Buttons = Tool::Bar::DoneAndCancel,
    .Done = [] { Say("done"); },
    .Leave = [] { Say("leave"); },
    .FreezeSmallViewports = true,
};

const Tool Other = {.Right = DummyClickFunc, .Buttons = Tool::Bar::Cancel, .Leave = [] { Say("other leaves"); }};

Window* SideWindowHandle;
int SideWindowEnabled = 1;

const ToolWindow SideWindow = {
    .Title = "Side",
    .Handle = &SideWindowHandle,
    .Width = 120,
    .Height = 80,
    .DisabledByTools = true,
    .Enabled = &SideWindowEnabled,
};

class ToolProtocol : public ViewsTest {
  protected:
    void SetUp() override {
        ViewsTest::SetUp();
        Heard.clear();
        TheInputSlots.DoSafeCommand = [](int code) {
            Say("safe " + std::to_string(code));
            return 1;
        };
        RegisterToolWindow(SideWindow);
    }

    static void ExpectAllGivenBack() {
        EXPECT_FALSE(SystemBusy());
        EXPECT_FALSE(WindowsFrozen);
        EXPECT_FALSE(BadStuffDisabled);
        Settle();
        EXPECT_FALSE(ToolBarActive());
    }
};

TEST_F(ToolProtocol, TakesWhatTheToolDeclaresAndGivesItBack) {
    DirtyOnTextureChange = DirtyOnLightingChange = DirtyOnMaterialChange = 1;
    BeginTool(Plain);
    EXPECT_TRUE(ToolRuns(Plain));
    EXPECT_TRUE(SystemBusy() && WindowsFrozen && ToolBarActive());
    Settle();
    EXPECT_EQ(StatusText(), msg(79));
    // What the tool itself exchanges is given back as well.
    MiddleClickFunc = [](View*) { return 1; };
    RightClickFunc = DummyClickFunc;
    LeftShift = RightAlt = LeftCtrl = 1;
    SendToolKey(nullptr, ' ');
    EXPECT_EQ(Heard, "done, leave");
    EXPECT_FALSE(ToolRuns(Plain));
    EXPECT_FALSE(LeftShift || RightAlt || LeftCtrl);
    EXPECT_FALSE(DirtyOnTextureChange || DirtyOnLightingChange || DirtyOnMaterialChange);
    ExpectAllGivenBack();
}

TEST_F(ToolProtocol, KeysThatTheToolLeavesAreSafeCommands) {
    BeginTool(Plain);
    Heard.clear();
    InView("move 50 50\nkey a A w");
    EXPECT_EQ(Heard, "a, a, safe 119");
}

TEST_F(ToolProtocol, CancelUndoesAllChangesAndOnlyThose) {
    AddVertex(0, 0, 0);
    CopyCurrentObject();
    AddVertex(9, 9, 9);

    // Nothing changed: what could be undone before still can.
    BeginTool(Plain);
    EXPECT_FALSE(ToolHasChanged());
    SendToolKey(nullptr, CancelKey);
    ExpectAllGivenBack();
    EXPECT_EQ(Vertices(), 2u);
    Undo();
    EXPECT_EQ(Vertices(), 1u);

    BeginTool(Plain);
    SendToolKey(nullptr, 'a');
    SendToolKey(nullptr, 'a');
    EXPECT_TRUE(ToolHasChanged());
    EXPECT_EQ(Vertices(), 3u);
    SendToolKey(nullptr, CancelKey);
    EXPECT_EQ(Vertices(), 1u);

    // Done keeps them, and Undo takes back all at once.
    BeginTool(Plain);
    SendToolKey(nullptr, 'a');
    SendToolKey(nullptr, 'a');
    SendToolKey(nullptr, ' ');
    EXPECT_EQ(Vertices(), 3u);
    Undo();
    EXPECT_EQ(Vertices(), 1u);
}

TEST_F(ToolProtocol, TheMiddleButtonIsTheToolsIn2dViewsOnly) {
    static int presses;
    presses = 0;
    const Tool greedy = {.Middle = [](View*) { return ++presses; }};
    for (const int direction : {0, Direction3D}) {
        Show(direction);
        const Matrix before = Shown().ViewMatrix;
        BeginTool(greedy);
        InView("drag middle 200 200 260 200");
        EXPECT_EQ(Shown().ViewMatrix == before, direction == 0);
        ClearControl();
    }
    EXPECT_EQ(presses, 1);
}

TEST_F(ToolProtocol, ASecondToolCancelsTheFirst) {
    BeginTool(Plain);
    SendToolKey(nullptr, 'a');
    Heard.clear();
    BeginTool(Other);
    EXPECT_EQ(Heard, "leave");
    EXPECT_FALSE(SideWindowEnabled);
    EXPECT_EQ(Vertices(), 0u);
    EXPECT_TRUE(ToolRuns(Other));
    EXPECT_EQ(LeftClickFunc, nullptr);
    EXPECT_EQ(StatusList, nullptr);
    Settle();
    EXPECT_TRUE(ToolBarActive());
    EXPECT_FALSE(WindowsFrozen);
}

TEST_F(ToolProtocol, TheBarsButtonsAreTheirCodes) {
    BeginTool(Plain);
    Settle();
    Button("Done");
    EXPECT_EQ(Heard, "done, leave");
    Heard.clear();
    EXPECT_TRUE(SideWindowEnabled);
    BeginTool(Other);
    EXPECT_FALSE(SideWindowEnabled);
    Settle();
    Button("Cancel");
    EXPECT_EQ(Heard, "other leaves");
    EXPECT_TRUE(SideWindowEnabled);
    ExpectAllGivenBack();
}

} // namespace
