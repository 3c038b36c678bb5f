#include "gooey/toolkit_test.h"
#include "support/temporary_directory.h"

#include "gooey/compressed_image.h"
#include "gooey/event_loop.h"
#include "gooey/fonts.h"
#include "gooey/information_window.h"
#include "gooey/manual.h"
#include "gooey/manual_page.h"
#include "gooey/message_table.h"
#include "gooey/messages.h"
#include "gooey/program_windows.h"
#include "gooey/report.h"
#include "gooey/word_wrap.h"

#include "base/directories.h"

#include "platform/system.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <unistd.h>

using namespace std::string_literals;

namespace {

std::vector<int> Answers;
std::vector<std::string> Accepted;
bool Rejects;
char Buffer[10];

void NoteAnswer(int ok) {
    Answers.push_back(ok);
}

void DecideOnText(const TextPromptContinuations& next) {
    Accepted.push_back(Buffer);
    WindowCall(Rejects ? next.Retry : next.Close);
}

} // namespace

class Messages : public ToolkitTest {
  protected:
    void SetUp() override {
        ToolkitTest::SetUp();
        Answers.clear();
        Accepted.clear();
        Rejects = false;
        MainWindow = Open("Main", 20, 20, 500, 400);
        Settle();
    }

    void TearDown() override {
        ToolkitTest::TearDown();
        MainWindow = nullptr;
    }

    static std::string TitleOfMessage() { return MessageWindow ? MessageWindow->Title : ""; }

    static void InMessage(const std::string& script) { Play("in \"" + TitleOfMessage() + "\"\nmove 5 5\n" + script); }
};

TEST(MessageTable, HasItsTextsAtTheirNumbers) {
    struct Case {
        int Number;
        const char* Text;
    };

    // Each text guards the numbers around it.
    constexpr Case cases[] = {
        {0, "Version 1.5b"},
        {18, "Back"},
        {19, ""},
        {21, ""},
        {22, "Error"},
        {56, "First select someting to position..."},
        {66, "You can only do this to one polygon at a time, please select a single polygon"},
        {67, ""},
        {68, "You cannot peak polygons which have subpolygons..."},
        {126, "<Left>=Select \"parent\" polygon"},
        {143, "Please enter some text before you click \"Generate\""},
        {154, "Delete all textures with no undo\n\npossible?"},
        {193, "You must select a Qstrip before you can do this.  (See the reference page \"Selecting things\" for "
              "details on "
              "selecting Qstrips...)"},
        {204, "Padding...do not use"},
        {205, ""},
        {-1, ""},
    };
    for (const Case& test : cases)
        EXPECT_STREQ(msg(test.Number), test.Text) << test.Number;
    int empty = 0;
    for (int number = 0; number < MessageCount; ++number)
        empty += !*msg(number);
    EXPECT_EQ(empty, 4);
}

TEST_F(Messages, BoxesDisableTheMainWindowUntilRead) {
    struct Case {
        void (*Open)();
        const char* Title;
    };

    const Case cases[] = {
        {[] { TellUserS("Text"); }, "Notice"}, {[] { TellUser(36); }, "Error"}, {[] { WarnUser(36); }, "Warning:"}};
    for (const Case& test : cases) {
        test.Open();
        Settle();
        EXPECT_EQ(TitleOfMessage(), test.Title);
        EXPECT_EQ(MessageWindow->Parent, MainWindow);
        EXPECT_EQ(MainWindow->Disabled, 1);
        InMessage("button Continue");
        EXPECT_EQ(MessageWindow, nullptr);
        EXPECT_EQ(MainWindow->Disabled, 0);
        test.Open();
        Settle();
        InMessage("key Return");
        EXPECT_EQ(MessageWindow, nullptr);
    }
}

TEST_F(Messages, QuestionsCallBackOnce) {
    struct Case {
        const char* Script;
        std::vector<int> Answers;
    };

    const Case cases[] = {{"button OK", {1}},
                          {"button Cancel", {0}},
                          {"key Return", {1}},
                          {"key Escape", {0}},
                          {"key Return Return Return", {1}},
                          {"close", {}}};
    for (const Case& test : cases) {
        Answers.clear();
        DoOkCancel("Really?", NoteAnswer);
        Settle();
        InMessage(test.Script);
        EXPECT_EQ(Answers, test.Answers) << test.Script;
        EXPECT_EQ(MainWindow->Disabled, 0) << test.Script;
        EXPECT_EQ(MessageWindow, nullptr);
    }
}

TEST_F(Messages, AnAnswerMayAskTheNextQuestion) {
    DoOkCancel("First?", [](int) { DoOkCancel("Second?", NoteAnswer); });
    Settle();
    InMessage("button OK");
    ASSERT_NE(MessageWindow, nullptr);
    EXPECT_EQ(MainWindow->Disabled, 1);
    InMessage("button Cancel");
    EXPECT_EQ(Answers, std::vector<int>{0});
    EXPECT_EQ(MainWindow->Disabled, 0);
}

TEST_F(Messages, LongTextsMakeRoom) {
    std::string text;
    for (int i = 0; i < 60; ++i)
        text += "word ";
    TellUserS(text.c_str());
    int lines = static_cast<int>(WrapText(text.c_str(), 350 - 16).size());
    EXPECT_GE(MessageWindow->Height - 26 - (lines - 1) * 24, 46);
    Settle();
    InMessage("key Return");
    TellUserS("Short");
    EXPECT_NEAR(MessageWindow->Height, 150, 1);
}

TEST_F(Messages, NotifiersCallBackWhenClosed) {
    static int calls;
    calls = 0;
    WindowCallback callback = {MainWindow, [] { calls += CurrentWindow == MainWindow; }};
    for (const char* script : {"button Cancel", "key Return", "close"}) {
        DoNotifier("An object of that name already exists!", callback, MainWindow);
        Settle();
        EXPECT_NEAR(MessageWindow->Width, StringWidth("An object of that name already exists!") + 24, 1);
        InMessage(script);
        EXPECT_EQ(MessageWindow, nullptr);
    }
    EXPECT_EQ(calls, 3);
    DoNotifier("Its window goes first", callback, nullptr);
    Window* notifier = MessageWindow;
    ShutWindow(MainWindow);
    MainWindow = nullptr;
    ShutWindow(notifier);
    EXPECT_EQ(calls, 3);
}

TEST_F(Messages, PromptsHandOverTheText) {
    std::strcpy(Buffer, "Roof");
    DoTextInput("Name:", Buffer, sizeof Buffer, DecideOnText, MainWindow);
    Settle();
    EXPECT_EQ(MainWindow->Disabled, 1);
    Play("in Input\nmove 5 5\ntype \" 2.,longer\"\nkey Return");
    EXPECT_EQ(Accepted, std::vector<std::string>{"Roof 2lon"});
    EXPECT_EQ(WindowList->Next, nullptr);
    EXPECT_EQ(MainWindow->Disabled, 0);
}

TEST_F(Messages, PromptsStayOpenForATextThatIsRejected) {
    Rejects = true;
    std::strcpy(Buffer, "a");
    DoTextInput("Name:", Buffer, sizeof Buffer, DecideOnText, MainWindow);
    Settle();
    Play("in Input\nmove 5 5\nbutton OK\ntype b\nbutton OK");
    EXPECT_EQ(Accepted, (std::vector<std::string>{"a", "ab"}));
    Play("in Input\nbutton Cancel");
    EXPECT_EQ(Accepted.size(), 2u);
    EXPECT_EQ(MainWindow->Disabled, 0);
}

TEST_F(Messages, PromptsRingForAnEmptyText) {
    Buffer[0] = '\0';
    long rings = gl::RingsHeard();
    DoTextInput("Name:", Buffer, sizeof Buffer, DecideOnText, MainWindow);
    Settle();
    Play("in Input\nmove 5 5\nkey Return\nbutton OK");
    EXPECT_EQ(gl::RingsHeard(), rings + 2);
    Play("in Input\ntype x\nkey Return");
    EXPECT_EQ(Accepted, std::vector<std::string>{"x"});
}

TEST_F(Messages, FullLinesAreJustified) {
    int width = StringWidth("aaa bbb");
    std::vector<WrappedLine> lines = WrapText("aaa bbb ccc", width);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].Text, "aaa bbb");
    EXPECT_TRUE(lines[0].Justified);
    EXPECT_EQ(lines[0].Descent, 24);
    EXPECT_EQ(lines[1].Text, "ccc");
    EXPECT_FALSE(lines[1].Justified);

    lines = WrapText("one\n\ntwo", width);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].Descent, 18);
    EXPECT_EQ(lines[1].Text, "");
    EXPECT_FALSE(lines[0].Justified);

    lines = WrapText("a wwwwwwwwwwwwwwwwwwwwwwww b", width);
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0].Text, "a");
    EXPECT_EQ(lines[1].Text, "wwwwwwwwwwwwwwwwwwwwwwww");
    EXPECT_FALSE(lines[1].Justified);
    EXPECT_EQ(lines[1].Descent, 24);
    EXPECT_EQ(lines[2].Text, "b");
}

TEST_F(Messages, WritingGoesOnBelow) {
    SetWindow(MainWindow);
    WindowWrite("one\ntwo");
    EXPECT_EQ(WWriteX, 8);
    EXPECT_EQ(WWriteY, 400 - 26 - 18 - 24);
    ColumnWriteMore("three", 100, 80);
    EXPECT_EQ(WWriteX, 108);
    EXPECT_EQ(WWriteY, 400 - 26 - 18 - 24 - 24);
    ColumnWrite("four", 200, 80);
    EXPECT_EQ(WWriteX, 208);
    EXPECT_EQ(WWriteY, 400 - 26 - 24);
}

TEST_F(Messages, ErrorsGoToTheStandardErrorStream) {
    testing::internal::CaptureStderr();
    ErrorMessage("Lost");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "\n\nKirvo:Lost\a\n");
}

TEST_F(Messages, TheInformationWindowDisablesTheMainWindow) {
    ShowProgramInfo();
    ShowProgramInfo();
    Settle();
    EXPECT_EQ(MainWindow->Disabled, 1);
    EXPECT_EQ(WindowList->Next->Next, nullptr);
    EXPECT_STREQ(WindowList->Next->Title, "About...");
    PopInfoWindow();
    Play("in About...\nclose");
    EXPECT_EQ(MainWindow->Disabled, 0);
    PopInfoWindow();
}

TEST_F(Messages, AManualThatIsMissingIsToldOf) {
    ManualFound = 0;
    OpenManual("R_GridGizmo");
    Settle();
    EXPECT_EQ(TitleOfMessage(), "Notice");
    InMessage("key Return");
    TemporaryDirectory installation;
    CopyFileName(KirvoDir, installation.Path().c_str());
    ManualFound = 1;
    OpenManual("R_GridGizmo");
    Settle();
    EXPECT_EQ(TitleOfMessage(), "Notice") << "a page that is missing";
}

TEST_F(Messages, ManualPagesShowInAWindowWithoutADesktop) {
    TemporaryDirectory installation;
    std::filesystem::create_directories(installation.Path() / "manual");
    std::ofstream(installation.Path() / "manual/TutorIndex.html") << "<p><a href='R_Peak.html'>Peak</a>";
    std::ofstream(installation.Path() / "manual/R_Peak.html") << "<p>Text";
    CopyFileName(KirvoDir, installation.Path().c_str());
    ManualFound = 1;
    OpenManual(nullptr);
    Settle();
    Play("in TutorIndex\nclick left 25 -25");
    Play("in R_Peak\nkey Escape");
    EXPECT_EQ(WindowList->Next, nullptr);
    ManualFound = 0;
}

// On a desktop the opener shows a page; when it fails, which it tells later, the window does.
TEST_F(Messages, ManualPagesGoToTheDesktopsOpener) {
    TemporaryDirectory installation;
    const std::filesystem::path& folder = installation.Path();
    std::filesystem::create_directories(folder / "manual");
    for (const char* page : {"R_Peak", "R_Fails"})
        std::ofstream(folder / "manual" / (page + ".html"s)) << "<p>Text";
    std::ofstream(folder / "xdg-open") << "#!/bin/sh\ncase $1 in *Fails*) exit 3;; esac\necho \"$1\" > " << folder
                                       << "/opened\n";
    std::filesystem::permissions(folder / "xdg-open", std::filesystem::perms::owner_all);
    CopyFileName(KirvoDir, folder.c_str());
    ManualFound = 1;
    const std::string path = getenv("PATH");
    setenv("PATH", (folder.string() + ":" + path).c_str(), 1);
    setenv("KIRVO_DISPLAY", "window", 1);
    OpenManual("R_Peak");
    OpenManual("R_Fails");
    for (int tries = 0; tries < 1000 && !WindowList->Next; ++tries) {
        CheckManualOpener();
        usleep(10000);
    }
    setenv("KIRVO_DISPLAY", "headless:800x600", 1);
    setenv("PATH", path.c_str(), 1);
    ASSERT_NE(WindowList->Next, nullptr);
    EXPECT_EQ(WindowList->Next->Next, nullptr);
    std::string opened;
    for (int tries = 0; tries < 1000 && opened.empty(); ++tries) {
        std::getline(std::ifstream(folder / "opened"), opened);
        usleep(10000);
    }
    EXPECT_EQ(opened, (folder / "manual/R_Peak.html").string());
    CheckManualOpener();
    ManualFound = 0;
}

TEST_F(Messages, ManualPagesAreOfferedUnderShortLabelsOnly) {
    // A label that is refused opens no menu: nothing waits for the release of a button.
    DoManualPage("R_Peak", std::string(45, 'x').c_str());
    EXPECT_EQ(MessageWindow, nullptr);
}

TEST(ManualPages, KeepTheTextOfHtml) {
    ManualPage page = ReadManualPage(
        "<html><head><title>Grid &amp; ruler</title><style>p { color: red }</style></head><body>"
        "<h1>Grid</h1>Loose <b>bo</b>ld<!-- <p>no --><p>See <a href=\"R_Ruler.html#x\">the\nruler</a>. "
        "<a href='http://elsewhere/x.html'>Out</a><ul><li>One &lt;1&gt; &#65;&#x42;<ul><li>Deep</ul></ul>"
        "<img src=x alt=\"a view\"> & a < b &unknown; <p");
    EXPECT_EQ(page.Title, "Grid & ruler");
    std::string text;
    for (const ManualBlock& block : page.Blocks) {
        text += block.Heading ? "# " : std::string(static_cast<std::size_t>(block.Indent), '-');
        for (const ManualWord& word : block.Words)
            text += (word.Glued ? "" : " ") + word.Text + (word.Link.empty() ? "" : "{" + word.Link + "}");
        text += "\n";
    }
    EXPECT_EQ(text, "#  Grid\n"
                    " Loose bold\n"
                    " See the{R_Ruler} ruler{R_Ruler}. Out\n"
                    "- \xE2\x80\xA2 One <1> AB\n"
                    "-- \xE2\x80\xA2 Deep\n"
                    " [a view] & a\n");
}

TEST(CompressedImages, AreRunsAndReferences) {
    struct Case {
        std::vector<unsigned char> Data;
        int Succeeds;
        std::string Output;
    };

    const Case cases[] = {
        {{0, 0, 0, 8, 3, 'a', 'b', 'c', 'd', 129, 3}, 1, "abcdabcd"},
        {{0, 0, 0, 6, 0, 'x', 130, 0}, 1, "xxxxxx"},          // a reference into what it writes
        {{0, 0, 0, 8, 3, 'a', 'b', 'c', 'd', 129, 4}, 0, ""}, // before the start
        {{0, 0, 0, 7, 3, 'a', 'b', 'c', 'd', 129, 3}, 0, ""}, // beyond the end
        {{0, 0, 0, 3, 3, 'a', 'b', 'c', 'd'}, 0, ""},
        {{0, 0, 0, 0}, 1, ""},
    };
    for (const Case& test : cases) {
        std::string output(DecompressedSize(test.Data.data()), '?');
        auto* bytes = reinterpret_cast<unsigned char*>(output.data());
        EXPECT_EQ(DecompressData(test.Data.data(), bytes), test.Succeeds);
        EXPECT_EQ(test.Succeeds ? output : "", test.Output);
    }
    EXPECT_EQ(DimmedPixel(0xFF8040FF), 0xFF40207Fu);
}
