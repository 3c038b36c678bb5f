#include "gooey/gadget.h"

#include "gooey/keyboard_walk.h"
#include "gooey/misuse.h"
#include "gooey/window.h"

#include "base/memory.h"

#include <vector>

namespace {

/// How many calls into gadgets that may call their owners are under way, and the lists that were freed meanwhile.
int ChecksUnderWay = 0;
std::vector<Gadget*> ListsToFree;

void FreeListNow(Gadget* list) {
    while (list) {
        Gadget* nextGadget = list->NextGadget;
        for (Gadget* member = list; member;) {
            Gadget* next = member->Next;
            if (member->FreeFn)
                member->FreeFn(member);
            if (member->Data)
                Free(member->Data);
            Free(member);
            member = next;
        }
        list = nextGadget;
    }
}

class CheckScope {
  public:
    CheckScope() { ++ChecksUnderWay; }

    ~CheckScope() {
        if (--ChecksUnderWay)
            return;
        std::vector<Gadget*> lists;
        lists.swap(ListsToFree);
        for (Gadget* list : lists)
            FreeListNow(list);
    }
};

struct PlainFunctions {
    void (*Draw)();
    int (*Click)();
};

void DrawPlain(Gadget* gadget) {
    if (auto draw = GadgetData<PlainFunctions>(gadget).Draw)
        draw();
}

int ClickPlain(Gadget* gadget) {
    return GadgetData<PlainFunctions>(gadget).Click();
}

} // namespace

Gadget* NewGooey(std::size_t size) {
    Gadget* gadget = static_cast<Gadget*>(AllocateZeros(sizeof(Gadget)));
    gadget->Visible = 1;
    gadget->Data = AllocateZeros(size);
    return gadget;
}

Gadget* CreateEntry(std::size_t size) {
    Gadget** link = &CurrentWindow->Gadgets;
    while (*link)
        link = &(*link)->NextGadget;
    return *link = NewGooey(size);
}

Gadget* AddGadget(void (*drawFn)(Gadget*), int (*clickFn)(Gadget*), std::size_t size) {
    Gadget* gadget = CreateEntry(size);
    gadget->DrawFn = drawFn;
    gadget->ClickFn = clickFn;
    return gadget;
}

Gadget* Kirvo_AddGadget(void (*draw)(), int (*click)()) {
    Gadget* gadget = CreateGadget<PlainFunctions>();
    GadgetData<PlainFunctions>(gadget) = {draw, click};
    gadget->DrawFn = DrawPlain;
    gadget->ClickFn = click ? ClickPlain : nullptr;
    return gadget;
}

void FreeGooeyList(Gadget* list) {
    if (!list)
        return;
    if (ChecksUnderWay)
        ListsToFree.push_back(list);
    else
        FreeListNow(list);
}

void RedrawGooey(Gadget* gadget) {
    for (Gadget* member = gadget; member && member->Visible; member = member->Next)
        if (member->DrawFn)
            member->DrawFn(member);
}

void GooeyDraw(Gadget* list) {
    for (Gadget* gadget = list; gadget; gadget = gadget->NextGadget)
        RedrawGooey(gadget);
    if (CurrentWindow && list == CurrentWindow->Gadgets)
        DrawKeyboardFrames();
}

int CheckGooeyClick(Gadget* list) {
    CheckScope scope;
    for (Gadget* gadget = list; gadget; gadget = gadget->NextGadget)
        for (Gadget* member = gadget; member && member->Visible; member = member->Next)
            if (member->ClickFn && member->ClickFn(member)) {
                if (member->DeselectFn)
                    DeselectOtherNodes(list, member);
                return 1;
            }
    return 0;
}

int CheckGooeyKey(Gadget* list, int character) {
    CheckScope scope;
    for (Gadget* gadget = list; gadget; gadget = gadget->NextGadget)
        for (Gadget* member = gadget; member; member = member->Next)
            if (member->KeyFn && member->Visible && member->KeyFn(member, character))
                return 1;
    return 0;
}

int CheckGooeyWheel(Gadget* list, int turnX, int turnY) {
    CheckScope scope;
    for (Gadget* gadget = list; gadget; gadget = gadget->NextGadget)
        for (Gadget* member = gadget; member && member->Visible; member = member->Next)
            if (member->Kind && member->Kind->Wheel && member->Kind->Wheel(member, turnX, turnY))
                return 1;
    return 0;
}

void DeselectOtherNodes(Gadget* list, Gadget* except) {
    CheckScope scope;
    for (Gadget* gadget = list; gadget; gadget = gadget->NextGadget)
        for (Gadget* member = gadget; member; member = member->Next)
            if (member != except && member->DeselectFn)
                member->DeselectFn(member);
}
