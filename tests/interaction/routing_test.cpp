#include "gooey/event_loop.h"
#include "interaction/input.h"
#include "interaction/modes.h"
#include "platform/events.h"
#include "platform/input.h"
#include "store/storage.h"
#include "views/hooks.h"
#include "views/status_line.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

/// Which place of its chain a press or key came to; -1: none.
int Taken;
int Key;

template <int Place>
void Click(View*) {
    Taken = Place;
}

template <int Place>
void Type(View*, int character) {
    Taken = Place;
    Key = character;
}

/// Installs the hooks of a chain from the last to the first: each new one must be the one that is called.
template <class Hook, class Offer>
void ExpectPrecedence(const std::vector<Hook*>& chain, const std::vector<Hook>& hooks, Offer offer) {
    for (std::size_t place = chain.size(); place-- > 0;) {
        *chain[place] = hooks[place];
        Taken = -1;
        offer();
        EXPECT_EQ(Taken, static_cast<int>(place));
    }
    for (Hook* hook : chain)
        *hook = nullptr;
}

TEST(Routing, EachChainIsOfferedItsHooksInOrder) {
    View view{};
    const std::vector<ClickHook> clicks = {Click<0>, Click<1>, Click<2>, Click<3>};
    const std::vector<KeyHook> keys = {Type<0>, Type<1>, Type<2>, Type<3>};
    ExpectPrecedence<ClickHook>({&LeftCOGFunc, &LeftGridFunc, &WorkAreaLeftFunc, &LeftClickFunc}, clicks,
                                [&] { StartLeftModel(&view); });
    ExpectPrecedence<ClickHook>({&RightCOGFunc, &RightGridFunc, &WorkAreaRightFunc, &RightClickFunc}, clicks,
                                [&] { StartRightModel(&view); });
    ExpectPrecedence<KeyHook>({&COGKeyFunc, &GridKeyFunc, &WorkAreaKeyFunc, &KeyCheckFunc}, keys,
                              [&] { CheckModelKey(&view, 'a'); });

    // In a 2D view the middle button goes to the tools first.
    MiddleClickFunc = [](View*) { return Taken = 1; };
    StartMiddleModel(&view);
    EXPECT_EQ(Taken, 1);
    MiddleGridFunc = Click<0>;
    StartMiddleModel(&view);
    EXPECT_EQ(Taken, 0);
    MiddleGridFunc = nullptr;
    MiddleClickFunc = nullptr;
}

TEST(Routing, KeysBecomeCommandsOnTheirView) {
    static std::vector<std::pair<char, int>> done;
    done.clear();
    View view{}, other{};
    TheInputSlots.DoActionCommand = [](int code) {
        done.emplace_back('a', code);
        return code == 'a' ? 1 : 0;
    };
    TheInputSlots.DoSafeCommand = [](int code) {
        done.emplace_back('s', code);
        return 1;
    };
    CheckModelKey(&view, 'A');
    CheckModelKey(&view, 'T');
    EXPECT_EQ(KeyView, &view);
    CheckSafeKeys(&other, 'a');
    EXPECT_EQ(KeyView, &other);
    EXPECT_EQ(done, (std::vector<std::pair<char, int>>{{'a', 'a'}, {'a', 't'}, {'s', 't'}, {'s', 'a'}}));
    TheInputSlots = {};
}

TEST(Routing, TabActsAtItsReleaseUnlessAClickUsedIt) {
    constexpr int heldFor = 3; // the keyboard repeats it

    constexpr struct {
        const char* Name;
        bool Held;
        int Clicks;
        int Typed;
    } cases[] = {
        {"let go before its character is read", false, 0, heldFor},
        {"held", true, 0, 1},
        {"held for a click", true, 1, 0},
        {"held for several clicks", true, 3, 0},
        {"held once more", true, 0, 1},
    };

    static int typed;
    View view{};
    LeftClickFunc = DummyClickFunc;
    KeyCheckFunc = [](View*, int character) { typed += character == TabCharacter; };
    for (const auto& c : cases) {
        typed = 0;
        gl::KeyDeviceChanged(gl::TABKEY, c.Held);
        CheckTab(&view, 1);
        for (int i = 0; i < heldFor; ++i)
            CheckModelKey(&view, TabCharacter);
        for (int i = 0; i < c.Clicks; ++i)
            StartLeftModel(&view);
        gl::KeyDeviceChanged(gl::TABKEY, false);
        CheckTab(&view, 0);
        EXPECT_EQ(typed, c.Typed) << c.Name;
    }
    LeftClickFunc = nullptr;
    KeyCheckFunc = nullptr;
}

TEST(Routing, GoingOverToTheSceneWaitsForTheTool) {
    constexpr std::int16_t status[] = {79, 0};
    ObjectIsolated = 1;
    const auto toggles = [] {
        const int before = ObjectIsolated;
        ChangeObjectIsolation();
        return std::exchange(ObjectIsolated, before) != before;
    };
    EXPECT_TRUE(toggles());
    StatusList = status;
    EXPECT_FALSE(toggles());
    StatusList = nullptr;
    LeftGridFunc = DummyClickFunc;
    EXPECT_FALSE(toggles());
    LeftGridFunc = nullptr;
    KeyCheckFunc = Type<0>;
    EXPECT_FALSE(toggles());
    KeyCheckFunc = nullptr;
    EXPECT_TRUE(toggles());
}

} // namespace
