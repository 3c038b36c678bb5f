#include "gooey/toolkit_test.h"

#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/gadget.h"
#include "gooey/text_filters.h"
#include "gooey/text_input.h"
#include "gooey/utf8.h"

#include "platform/events.h"

#include <cstring>

using namespace std::string_literals;

namespace {

/// What the callbacks saw: the text, and "!" after it when Return was pressed.
std::vector<std::string> Seen;
char Buffer[40];
char Other[40];

void NoteText() {
    Seen.push_back(Buffer + (TextReturnReal ? "!"s : ""s));
}

} // namespace

class GadgetText : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        Seen.clear();
        Open("Text", 100, 100, 400, 200);
    }

    static Gadget* Add(int flags, const char* text, int size = sizeof Buffer, TextFilter filter = nullptr) {
        return AddTextInput({.X = 10,
                             .Y = 20,
                             .Width = 300,
                             .Flags = flags,
                             .Label = "Name:",
                             .Text = text,
                             .Buffer = Buffer,
                             .Size = size,
                             .Filter = filter,
                             .Callback = NoteText});
    }

    static int CursorOf(Gadget* gadget) { return GadgetData<TextInput>(gadget).Cursor; }
};

TEST_F(GadgetText, PartsArePlacedByLabelAndFont) {
    struct Case {
        const char* Name;
        int Width, Flags;
        const char* Label;
        int LabelX, LabelY, BoxX, BoxY, BoxWidth, Height;
    };

    int normal = StringWidth("Name:"), small = SmallWidth("Name:");
    const Case cases[] = {
        {"left", 300, 0, "Name:", 10, 32, 10 + normal + 16, 32, 300 - normal - 24, 38},
        {"left, small", 300, TextSmallFont, "Name:", 10, 31, 10 + small + 16, 31, 300 - small - 24, 33},
        {"no label", 300, 0, nullptr, 10, 32, 26, 32, 276, 38},
        {"own width", -100, 0, nullptr, 10, 32, 22, 32, 100, 38},
        {"above", 300, TextLabelAbove, "Name:", 2, 66, 10, 32, 276, 68},
        {"above, small", 300, TextLabelAbove | TextSmallFont, "Name:", 2, 61, 10, 31, 276, 58},
    };
    for (const Case& test : cases) {
        Gadget* gadget = AddTextInput({.X = 10,
                                       .Y = 20,
                                       .Width = test.Width,
                                       .Flags = test.Flags,
                                       .Label = test.Label,
                                       .Buffer = Buffer,
                                       .Size = sizeof Buffer});
        const TextInput& input = GadgetData<TextInput>(gadget);
        EXPECT_EQ(input.LabelX, test.LabelX) << test.Name;
        EXPECT_EQ(input.LabelY, test.LabelY) << test.Name;
        EXPECT_EQ(input.BoxX, test.BoxX) << test.Name;
        EXPECT_EQ(input.BoxY, test.BoxY) << test.Name;
        EXPECT_EQ(input.BoxWidth, test.BoxWidth) << test.Name;
        EXPECT_EQ(GooeyRight, test.BoxX + test.BoxWidth + 16) << test.Name;
        EXPECT_EQ(InputHeight(test.Flags), test.Height) << test.Name;
    }
}

TEST_F(GadgetText, KeysEdit) {
    struct Case {
        const char* Name;
        const char* Text;
        const char* Script;
        const char* Result;
        int Cursor;
    };

    const Case cases[] = {
        {"typing", "ab", "type \"c d1\"", "abc d1", 6},
        {"no punctuation without a filter", "ab", "type \"-.c\"", "abc", 3},
        {"backspace", "abc", "key Backspace", "ab", 2},
        {"backspace at the start", "abc", "key Home Backspace", "abc", 0},
        {"arrows", "abc", "key Left Left\ntype X", "aXbc", 2},
        {"arrows stop at the ends", "ab", "key Right Left Left Left\ntype X", "Xab", 1},
        {"up and down", "abc", "key Up\ntype X\nkey Down\ntype Y", "XabcY", 5},
        {"home and end", "abc", "key Home\ntype X\nkey End\ntype Y", "XabcY", 5},
        {"delete", "abc", "key Home Delete", "bc", 0},
        {"escape empties", "abc", "key Escape", "", 0},
        {"selection is replaced", "abcd", "key Left Shift+Left Shift+Left\ntype X", "aXd", 2},
        {"selection is deleted", "abcd", "key Shift+Home Delete", "", 0},
        {"leaving a selection", "abcd", "key Shift+Left Shift+Left Left\ntype X", "abXcd", 3},
        {"words", "one two  three", "key Ctrl+Left\ntype X\nkey Ctrl+Left Ctrl+Left\ntype Y", "one Ytwo  Xthree", 5},
        {"words to the right", "one two", "key Home Ctrl+Right\ntype X", "one Xtwo", 5},
        {"select all", "one two", "key Ctrl+a\ntype X", "X", 1},
        {"cut and paste", "one two", "key Ctrl+Shift+Left Ctrl+x Home Ctrl+v", "twoone ", 3},
        {"copy and paste", "one", "key Ctrl+a Ctrl+c End Ctrl+v", "oneone", 6},
        {"word before the cursor", "one two", "key Ctrl+Backspace", "one ", 4},
        {"by character", "a\xC3\xA9\xE2\x82\xAC", "key Backspace Left\ntype x", "ax\xC3\xA9", 2},
        {"beyond ascii", "a", "type \"\xC3\xA9\xC3\xA8\"\nkey Left Backspace", "a\xC3\xA8", 1},
    };
    for (const Case& test : cases) {
        Gadget* gadget = Add(0, test.Text);
        ActivateText(gadget, 1);
        Play("in Text\nmove 390 190\n"s + test.Script);
        EXPECT_STREQ(Buffer, test.Result) << test.Name;
        EXPECT_EQ(CursorOf(gadget), test.Cursor) << test.Name;
        // An active input consumes every key.
        for (const SeenEvent& event : Events)
            EXPECT_NE(event.Device, gl::KEYBD) << test.Name;
        Events.clear();
        gadget->Visible = 0;
        DeactivateText(gadget);
    }
}

TEST_F(GadgetText, PastingTakesTheFirstLineThroughTheFilter) {
    Gadget* gadget = Add(0, "", 6, PositiveFPFilter);
    ActivateText(gadget, 1);
    gl::SetClipboardText("-1,25.5 m678\n9");
    Play("in Text\nmove 390 190\nkey Ctrl+v");
    EXPECT_STREQ(Buffer, "1.255");
}

TEST_F(GadgetText, FiltersDecide) {
    struct Case {
        const char* Name;
        TextFilter Filter;
        const char* Typed;
        const char* Result;
    };

    const Case cases[] = {
        {"numbers", FPFilter, "1,5", "1.5"},
        {"one stop", FPFilter, "1.5.2,7", "1.527"},
        {"minus at the start", FPFilter, "-1-2", "-12"},
        {"no letters", FPFilter, "x1e5 ", "15"},
        {"positive numbers", PositiveFPFilter, "-1.5", "1.5"},
        {"ascii", AsciiFilter, "a-~ \xC3\xA9_", "a-~ _"},
        {"printable", PrintableFilter, "a-\xC2\xA3\xE2\x82\xAC", "a-\xC2\xA3\xE2\x82\xAC"},
        {"letters", AlphanumericFilter, "a-\xC2\xA3\xC3\x9F\xD0\xB6 1", "a\xC3\x9F\xD0\xB6 1"},
    };
    for (const Case& test : cases) {
        Gadget* gadget = Add(0, "", sizeof Buffer, test.Filter);
        ActivateText(gadget, 1);
        Play("in Text\nmove 390 190\ntype \""s + test.Typed + "\"");
        EXPECT_STREQ(Buffer, test.Result) << test.Name;
        gadget->Visible = 0;
        DeactivateText(gadget);
    }
}

TEST_F(GadgetText, FiltersAreOfferedTheVerticalArrowsFirst) {
    static int steps;
    steps = 0;
    Gadget* gadget = Add(0, "abc", sizeof Buffer, [](int& character, int position, const char*) {
        if (position == -1 && character == UpCharacter)
            return ++steps;
        return 0;
    });
    ActivateText(gadget, 1);
    Play("in Text\nmove 390 190\nkey Up");
    EXPECT_EQ(steps, 1);
    EXPECT_EQ(CursorOf(gadget), 3);
    Play("key Home Down");
    EXPECT_EQ(CursorOf(gadget), 3);
}

TEST_F(GadgetText, TheBufferIsTheLimit) {
    Gadget* gadget = Add(0, "", 10);
    ActivateText(gadget, 1);
    Play("in Text\nmove 390 190\ntype \"0123456789abc\"");
    EXPECT_STREQ(Buffer, "012345678");
    Play("key Backspace\ntype \"\xC3\xA9\"");
    EXPECT_STREQ(Buffer, "01234567");
    testing::internal::CaptureStdout();
    ChangeText(gadget, "12345678\xC3\xA9");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Kirvo: String truncated - 12345678\xC3\xA9\n");
    EXPECT_STREQ(Buffer, "12345678");
    EXPECT_EQ(CursorOf(gadget), 8);
    ChangeText(gadget, nullptr);
    EXPECT_STREQ(Buffer, "");
}

TEST_F(GadgetText, CallsBackAsTheFlagsSay) {
    struct Case {
        const char* Name;
        int Flags;
        std::vector<std::string> Seen;
    };

    const Case cases[] = {
        {"return", 0, {"xy!"}},
        {"changes", TextReportsChanges, {"x", "xy", "xy!"}},
        {"deactivation", TextReportsDeactivation, {"xy", "xy!"}},
    };
    for (const Case& test : cases) {
        Seen.clear();
        Gadget* gadget = Add(test.Flags, "");
        ActivateText(gadget, 1);
        Play("in Text\nmove 390 190\ntype xy\nkey Left Return");
        EXPECT_EQ(Seen, test.Seen) << test.Name;
        EXPECT_FALSE(TextIsActive(gadget)) << test.Name;
        Events.clear();
        Play("key q");
        EXPECT_EQ(Events.size(), 1u) << test.Name;
        gadget->Visible = 0;
    }
}

TEST_F(GadgetText, OnlyOneInputOfAWindowIsActive) {
    Gadget* first = Add(TextReportsDeactivation, "one");
    Gadget* second = AddTextInput(
        {.X = 10, .Y = 80, .Width = 300, .Label = "Other:", .Text = "two", .Buffer = Other, .Size = sizeof Other});
    ActivateText(first, 0);
    Play("in Text\nclick left 200 100");
    EXPECT_FALSE(TextIsActive(first));
    EXPECT_TRUE(TextIsActive(second));
    EXPECT_EQ(Seen, std::vector<std::string>{"one"});
    Play("key Tab");
    EXPECT_TRUE(TextIsActive(first));
    EXPECT_FALSE(TextIsActive(second));
    Play("key Shift+Tab");
    EXPECT_TRUE(TextIsActive(second));
}

TEST_F(GadgetText, ClicksPlaceTheCursorAndDragsSelect) {
    Gadget* gadget =
        AddTextInput({.X = 10, .Y = 20, .Width = 300, .Text = "mmmm nnnn", .Buffer = Buffer, .Size = sizeof Buffer});
    int left = 26, m = StringWidth("m");
    auto at = [&](double characters) { return std::to_string(left + static_cast<int>(characters * m)) + " 40\n"; };
    Play("in Text\nclick left " + at(1.4));
    EXPECT_EQ(CursorOf(gadget), 2);
    Play("wait 60\nclick left " + at(12));
    EXPECT_EQ(CursorOf(gadget), 9);
    Play("wait 60\nmove " + at(0.5) + "press left\nmove " + at(2.5) + "release left\ntype X");
    EXPECT_STREQ(Buffer, "mXm nnnn");
    ChangeText(gadget, "mmmm nnnn");
    Play("wait 60\ndoubleclick left " + at(1.5) + "type X");
    EXPECT_STREQ(Buffer, "X nnnn");
}

TEST_F(GadgetText, ALongTextScrollsWithTheCursor) {
    Gadget* gadget = AddTextInput({.X = 10, .Y = 20, .Width = 100, .Buffer = Buffer, .Size = sizeof Buffer});
    const TextInput& input = GadgetData<TextInput>(gadget);
    ActivateText(gadget, 1);
    Play("in Text\nmove 390 190\ntype \"mmmmmmmmmmmmmmmmmmmm\"");
    EXPECT_EQ(input.Scroll, StringWidth(Buffer) - (input.BoxWidth - 2));
    Play("key Home");
    EXPECT_EQ(input.Scroll, 0);
}

TEST(Utf8, CharactersAreCountedAndKeptWhole) {
    struct Case {
        const char* Text;
        int Characters;
    };

    for (const Case& test : {Case{"", 0}, Case{"abc", 3}, Case{"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", 3},
                             Case{"\xC3", 1}, Case{"\xE2\x82", 2}, Case{"\xC0\x80", 2}, Case{"\xED\xA0\x80", 3}})
        EXPECT_EQ(CharactersIn(test.Text), test.Characters) << test.Text;
    for (int codePoint : {0x41, 0xE9, 0x20AC, 0xFFFD, 0x1F600, 0x10FFFF}) {
        std::string bytes = EncodeCodePoint(codePoint);
        const char* at = bytes.c_str();
        EXPECT_EQ(NextCodePoint(at), codePoint);
        EXPECT_EQ(*at, '\0');
    }
    EXPECT_EQ(EncodeCodePoint(0xD800), "");
    EXPECT_EQ(WholeCharactersWithin("a\xE2\x82\xAC", 3), 1u);
    EXPECT_EQ(WholeCharactersWithin("a\xE2\x82\xAC", 4), 4u);
    EXPECT_EQ(ByteOfCharacter("\xC3\xA9x", 1), 2u);
    EXPECT_EQ(ByteOfCharacter("\xC3\xA9x", 9), 3u);
}
