#include "store/curves.h"

#include "base/exit.h"
#include "base/memory.h"
#include "store/lists.h"

#include <cstdio>
#include <cstring>

namespace {

using EbeadList = LinkedList<&Ebead::Next, &Ebead::Prev>;

} // namespace

Elist::~Elist() {
    ResetElist(*this);
}

void ResetElist(Elist& list) {
    for (Ebead* bead : Along<&Ebead::Next>(list.First))
        Free(bead);
    list.First = list.Current = nullptr;
}

Ebead* NewEbead(const double* position) {
    auto* bead = static_cast<Ebead*>(Allocate(sizeof(Ebead)));
    if (!bead)
        KillProgram(FatalEnd);
    *bead = {};
    std::memcpy(bead->Position, position, sizeof bead->Position);
    return bead;
}

Ebead* PrependEbead(Elist& list, const double* position) {
    list.Current = NewEbead(position);
    EbeadList::InsertFirst(list.First, list.Current);
    return list.Current;
}

Ebead* AppendEbead(Elist& list, const double* position) {
    Ebead* last = LastElistBead(list);
    if (!last)
        return PrependEbead(list, position);
    list.Current = NewEbead(position);
    EbeadList::InsertAfter(last, list.Current);
    return list.Current;
}

Ebead* InsertEbeadAfter(Elist& list, Ebead* bead, const double* position) {
    for (Ebead* place : Along<&Ebead::Next>(list.First))
        if (place == bead) {
            list.Current = NewEbead(position);
            EbeadList::InsertAfter(place, list.Current);
            return list.Current;
        }
    std::fprintf(stderr, "InsertEbeadAfter: point not found!\a\n");
    return nullptr;
}

void ElistDelete(Elist& list) {
    Ebead* doomed = list.Current;
    if (!doomed)
        return;
    list.Current = doomed->Next ? doomed->Next : doomed->Prev;
    EbeadList::Remove(list.First, doomed);
    Free(doomed);
}

int ElistLength(const Elist& list) {
    int length = 0;
    for (const Ebead* bead = list.First; bead; bead = bead->Next)
        ++length;
    return length;
}

Ebead* LastElistBead(const Elist& list) {
    return LastAlong<&Ebead::Next>(list.First);
}
