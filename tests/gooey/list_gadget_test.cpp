#include "gooey/list_gadget.h"
#include "gooey/toolkit_test.h"

#include "gooey/redraw.h"
#include "gooey/report.h"
#include "gooey/scroll_window.h"

#include <algorithm>

using namespace std::string_literals;

namespace {

/// What the list shows, as its owner keeps it; each name is its own record.
struct Thing {
    std::string Name;
    bool Eye = true;
};

std::vector<Thing*> Things;
const Thing* Current;
std::vector<std::string> Calls;

void FillRows(std::vector<ListRow>& rows) {
    for (const Thing* thing : Things)
        rows.push_back({.Label = thing->Name, .Record = thing, .On = thing == Current, .Dim = !thing->Eye});
}

void ChooseThing(const ListRow& row) {
    Calls.push_back("choose " + row.Label);
    Current = static_cast<const Thing*>(row.Record);
}

void MoveThing(const ListRow& row, int before) {
    Calls.push_back("move " + row.Label + " " + std::to_string(before));
}

const ListMark Eye[] = {
    {.Width = 24, .Label = "eye", .Click = [](const ListRow& row) { Calls.push_back("eye " + row.Label); }}};

} // namespace

class ListGadgets : public ToolkitTest {
  protected:
    std::vector<Thing> Store;
    Gadget* List = nullptr;
    Window* Target = nullptr;

    void SetUp() override {
        ToolkitTest::SetUp();
        Calls.clear();
        Current = nullptr;
        Store.reserve(100);
        Things.clear();
        for (const char* name : {"arch", "barn", "bell", "bench", "cart", "church", "door", "dome"})
            Add(name);
    }

    Thing* Add(const std::string& name) {
        Store.push_back({name});
        Things.push_back(&Store.back());
        return Things.back();
    }

    void OpenList(ListSpec spec) {
        Target = Open("List", 100, 100, 300, 110);
        spec.Box = {0, 0, 300, 110};
        spec.Fill = FillRows;
        spec.Keys = ListKeys::Always;
        spec.FindsByTyping = true;
        spec.Choose = ChooseThing;
        spec.Open = [](const ListRow& row) { Calls.push_back("open " + row.Label); };
        spec.ClickBeside = [] { Calls.push_back("beside"); };
        List = AddList(spec);
        Settle();
        Play("in List\nmove 100 50");
    }

    std::vector<GadgetItem> Items() const { return GadgetsOf(Target).back().Description.Items; }

    std::vector<std::string> PlayCalls(const std::string& script) {
        Calls.clear();
        Play("in List\n" + script);
        return Calls;
    }
};

TEST_F(ListGadgets, AnswersClicksAndKeys) {
    OpenList({.Move = MoveThing});

    struct Case {
        const char* Script;
        std::vector<std::string> Calls;
    };

    const Case cases[] = {
        {"button barn", {"choose barn"}},
        {"wait 60\ndoubleclick left item:bell", {"choose bell", "open bell"}},
        {"wait 60\nbutton barn\nbutton bell", {"choose barn", "choose bell"}},
        {"key Down Down Up", {"choose bench", "choose cart", "choose bench"}},
        {"key End Return", {"choose dome", "open dome"}},
        {"key Home\nwait 120\ntype ch", {"choose arch", "choose cart", "choose church"}},
        {"wait 120\ntype bb", {"choose barn", "choose bell"}},
        {"wait 120\ntype BEN", {"choose barn", "choose bell", "choose bench"}},
        {"wait 120\ntype x\nkey Insert", {}},
        {"key Home\ndrag left item:arch item:bell", {"choose arch", "choose arch", "move arch 3"}},
        {"drag left item:barn item:arch", {"choose barn", "move barn 0"}},
        {"wait 60\nmove item:barn\npress left\nmove item:arch\nkey Escape\nrelease left", {"choose barn"}},
        {"drag left item:arch item:arch", {"choose arch"}},
    };
    for (const Case& test : cases)
        EXPECT_EQ(PlayCalls(test.Script), test.Calls) << test.Script;
    Things.resize(2);
    EXPECT_EQ(PlayCalls("wait 60\nclick left 100 20"), std::vector<std::string>{"beside"});
}

TEST_F(ListGadgets, ListsRowsAndMarksThatShow) {
    OpenList({.Marks = Eye});
    Current = Things[1];
    std::vector<GadgetItem> items = Items();
    ASSERT_GE(items.size(), 8u);
    EXPECT_EQ(items[2].Label, "barn");
    EXPECT_TRUE(items[2].On);
    EXPECT_FALSE(items[0].On);
    EXPECT_EQ(items[3].Label, "barn eye");
    EXPECT_EQ(PlayCalls("button \"bell eye\"\nbutton bell"), (std::vector<std::string>{"eye bell", "choose bell"}));
    for (const GadgetItem& item : Items()) {
        EXPECT_GT(item.Box.Height, 0) << item.Label;
        EXPECT_NE(item.Label, "dome") << "it is scrolled out";
    }
    Add("barn");
    EXPECT_EQ(PlayCalls("key End\nclick left item:barn"), (std::vector<std::string>{"choose barn", "choose barn"}));
    EXPECT_EQ(Current, Things.back());
}

TEST_F(ListGadgets, KeepsItsPlaceWhenRowsComeAndGo) {
    OpenList({});
    ScrollYTo(List, 50);
    auto top = [&] { return Items().front(); };
    GadgetItem before = top();
    Store.push_back({"attic"});
    Things.insert(Things.begin(), &Store.back());
    EXPECT_EQ(top().Label, before.Label);
    EXPECT_EQ(top().Box.Y, before.Box.Y);
    Things.erase(Things.begin(), Things.begin() + 2);
    EXPECT_EQ(top().Label, before.Label);
    // What has become the current one elsewhere is shown.
    Current = Things.back();
    EXPECT_EQ(Items().back().Label, "dome");
    ScrollYTo(List, 0);
    EXPECT_NE(Items().back().Label, "dome") << "the user may look elsewhere";
}

TEST_F(ListGadgets, ScrollsWhileARowIsDraggedBeyondItsEdge) {
    OpenList({.Move = MoveThing});
    EXPECT_EQ(PlayCalls("move item:arch\npress left\nmove 100 40\nmove 100 -200\nwait 60\nrelease left"),
              (std::vector<std::string>{"choose arch", "move arch 8"}));
    EXPECT_GT(ScrollOf(List).VOffset, 0);
}

TEST_F(ListGadgets, WindowsListWhatTheyDrawThemselves) {
    Target = Open("List", 100, 100, 300, 110);
    Target->ItemsFn = [](std::vector<GadgetItem>& items) {
        items.push_back({"point 0", {10, 10, 4, 4}});
        items.push_back({"point 0", {50, 20, 4, 4}, true});
    };
    Events.clear();
    Play("in List\nclick left \"item:point 0#2\"");
    ASSERT_FALSE(Events.empty());
    EXPECT_EQ(Events.back().X, 52);
    EXPECT_NE(Report().find("\"point 0\""), std::string::npos);
}

using ListGadgetsDeathTest = ListGadgets;

TEST_F(ListGadgetsDeathTest, ItemsThatAreNotThereEndTheScript) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    OpenList({});
    EXPECT_EXIT(Play("in List\nmove item:barn#2"), testing::ExitedWithCode(1),
                "test:2: no item \"barn\" number 2, there are 1 in window \"List\"");
    EXPECT_EXIT(Play("in List\nmove item:tower"), testing::ExitedWithCode(1), "no item \"tower\" in window \"List\"");
}
