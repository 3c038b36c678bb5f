#include "structure/scene_clipboard.h"

#include "base/memory.h"
#include "interaction/scene_selection.h"
#include "store/store_checker.h"
#include "store/store_test.h"
#include "structure/scene_operations.h"

#include <map>
#include <string>

namespace {

/// Scenes written as text: "a(b c(d*))", where "*" marks what is selected.
class SceneClipboardTest : public StoreTest {
  protected:
    static void MakeScene(const std::string& text) {
        std::size_t place = 0;
        AddChildren(Scene(), text, place);
    }

    static std::string TextOf(const Branch* branch) {
        std::string text = branch->Name;
        if (branch->Selected)
            text += "*";
        for (const Branch* child = branch->FirstChild; child; child = child->Next)
            text += (child->Prev ? " " : "(") + TextOf(child) + (child->Next ? "" : ")");
        return text;
    }

    static std::string Pasted() { return ScenePaste ? TextOf(ScenePaste) : "nothing"; }

    static Branch* Find(const std::string& name) {
        for (Branch* branch : EveryBranch(Scene()))
            if (branch->Name == name)
                return branch;
        return nullptr;
    }

  private:
    static void AddChildren(Branch* parent, const std::string& text, std::size_t& place) {
        Branch* last = nullptr;
        while (place < text.size() && text[place] != ')') {
            if (text[place] == ' ') {
                ++place;
                continue;
            }
            last = last ? AddBranch(last, BranchAsSibling) : AddBranch(parent, BranchAsChild);
            last->Name = CopyOfString(std::string(1, text[place++]).c_str());
            if (place < text.size() && text[place] == '*') {
                last->Selected = 1;
                ++place;
            }
            if (place < text.size() && text[place] == '(') {
                AddChildren(last, text, ++place);
                ++place;
            }
        }
    }
};

TEST_F(SceneClipboardTest, CopyTakesWhatIsSelectedToItsEndsAndCutRemovesIt) {
    struct {
        const char *Before, *Clipboard, *AfterCut;
    } const cases[] = {
        {"a b*(c* d*) e", "b(c d)", "Scene(a e)"},
        {"a*(b*) c d*", "Paste(a(b) d)", "Scene(c)"},
        // Of a branch that is not selected with all below it only the selected ends go.
        {"a*(b* c)", "b", "Scene(a(c))"},
        {"a*(b*(c))", "nothing", "Scene(a(b(c)))"},
        {"a*(b(c* d*)) e*", "Paste(c d e)", "Scene(a(b))"},
    };

    for (const auto& example : cases) {
        SCOPED_TRACE(example.Before);
        ResetStorage();
        MakeScene(example.Before);
        CopyScene(0);
        EXPECT_EQ(Pasted(), example.Clipboard);
        EXPECT_EQ(TextOf(Scene()), "Scene(" + std::string(example.Before) + ")");
        CutScene();
        EXPECT_EQ(Pasted(), example.Clipboard);
        EXPECT_EQ(TextOf(Scene()), example.AfterCut);
        EXPECT_EQ(CheckFile(MainFile), "");
        UndoScene();
        for (Branch* branch : EveryBranch(Scene()))
            EXPECT_EQ(branch->Selected, 0);
        UndoScene();
        EXPECT_EQ(TextOf(Scene()), example.AfterCut);
    }
}

TEST_F(SceneClipboardTest, PastesOnceMoreEachTimeAndDeepTreesToo) {
    MakeScene("a*(b*) c");
    for (Branch* branch = Find("b"); branch; branch = nullptr)
        for (int depth = 0; depth < 20000; ++depth) {
            branch = AddBranch(branch, BranchAsChild);
            branch->Name = CopyOfString("x");
            branch->Selected = 1;
        }
    CopyScene(1);
    EXPECT_FALSE(AnySceneSelected());
    SelectedBranch() = Find("c");
    PasteScene(1, 0);
    SelectedBranch() = Find("c");
    PasteScene(1, 1);
    int copies = 0, deep = 0;
    for (const Branch* branch : EveryBranch(Find("c")->FirstChild)) {
        copies += branch->Name == std::string("a");
        deep += branch->Name == std::string("x");
    }
    EXPECT_EQ(copies, 2);
    EXPECT_EQ(deep, 40000);
    EXPECT_EQ(SelectedBranch(), Find("c")->FirstChild);
    EXPECT_EQ(CheckFile(MainFile), "");
}

TEST_F(SceneClipboardTest, AnObjectThatGoesTakesItsBranchesFromSceneClipboardAndUndo) {
    AddObject("house", 0, 0);
    Object* house = CurrentObject();
    AddObject("tree", 0, 0);
    MakeScene("a(b c(d)) e");
    for (const char* name : {"b", "c", "e"})
        Find(name)->Object = house;
    Find("d")->Object = CurrentObject();
    SelectScene(Find("e"));
    CopyScene(0);
    CopySceneForUndo();
    KillObjectReferences(house);
    EXPECT_EQ(TextOf(Scene()), "Scene(a)");
    EXPECT_EQ(Pasted(), "nothing");
    EXPECT_EQ(SceneUndo, nullptr);
    EXPECT_EQ(SelectedBranch(), nullptr);
    EXPECT_EQ(CheckFile(MainFile), "");
}

TEST_F(SceneClipboardTest, WhatIsSelectedShowsAnotherObjectUntilThatIsUndone) {
    Object* house = AddObject("house", 0, 0);
    MakeScene("a*(b* c) d*");
    for (const char* name : {"b", "c", "d"})
        Find(name)->Object = house;
    Object* tree = AddObject("tree", 0, 0);
    ReplaceObjectInScene();
    EXPECT_EQ(Find("a")->Object, nullptr);
    EXPECT_EQ(Find("b")->Object, tree);
    EXPECT_EQ(Find("c")->Object, house);
    EXPECT_EQ(Find("d")->Object, tree);
    UndoScene();
    EXPECT_EQ(Find("b")->Object, house);
}

TEST_F(SceneClipboardTest, SiblingsChangePlacesAndTheFirstAloneKnowsTheParent) {
    MakeScene("a b c");

    const struct {
        const char* Name;
        void (*Shuffle)();
        const char* After;
    } steps[] = {
        {"a", ShuffleBranchUp, "Scene(a b c)"},   {"c", ShuffleBranchUp, "Scene(a c b)"},
        {"a", ShuffleBranchDown, "Scene(c a b)"}, {"b", ShuffleBranchDown, "Scene(c a b)"},
        {"a", ShuffleBranchUp, "Scene(a c b)"},
    };

    for (const auto& step : steps) {
        SelectedBranch() = Find(step.Name);
        step.Shuffle();
        EXPECT_EQ(TextOf(Scene()), step.After);
        EXPECT_EQ(ParentOfBranch(Find("b")), Scene());
        EXPECT_EQ(CheckFile(MainFile), "");
    }
}

} // namespace
