#include "platform/waiting.h"

#include "platform/clock.h"
#include "platform/compositor.h"
#include "platform/display.h"
#include "platform/event_queue.h"
#include "platform/events.h"
#include "platform/framebuffer.h"
#include "platform/input.h"
#include "platform/script_player.h"
#include "platform/scripts.h"
#include "platform/surface.h"
#include "platform/system.h"
#include "platform/tablet.h"

#include <algorithm>
#include <set>
#include <utility>

namespace gl {

namespace {

struct WaitingState {
    bool Asked = false;      // the program found the queue empty since time passed last
    int FruitlessAsking = 0; // how often, without letting time pass
    int UnaskedPauses = 0;   // pauses without asking although events wait
    long long LastPresented = 0;
    long long LastActivity = 0;       // when something happened or was presented
    std::set<const Surface*> Swapped; // since the last retrace
    long long LastBreath = 0;         // amid work
    long Rings = 0;
};

WaitingState Waiting;

constexpr int PatienceWithPolling = 100, PatienceWithPauses = 500;
// A desktop where nothing has happened for so long lets polling loops sleep longer; input still wakes them at once.
constexpr long long IdleAfter = 1'000'000, IdleNap = 4 * TickMicroseconds;
// Presenting is costly in software; nobody sees more than the display's retraces.
constexpr long long PresentInterval = 14'000;
// Taking in input costs work its time.
constexpr long long BreathInterval = 50'000;

void GiveScriptItsTurn(Pause pause) {
    const bool asked = std::exchange(Waiting.Asked, false);
    if (!ScriptIsPlaying())
        return;
    if (pause == Pause::Work) {
        PlayNextStep(ScriptTurn::AmidWork);
        return;
    }
    if (!(asked && QueueIsEmpty()) && ++Waiting.UnaskedPauses < PatienceWithPauses)
        return;
    Waiting.UnaskedPauses = 0;
    // Amid drawing only a drag can be told from work in hand, so only then all commands have their turn.
    PlayNextStep(pause != Pause::Swap || AnyButtonHeld() ? ScriptTurn::AtRest : ScriptTurn::AmidDrawing);
}

// Nothing happens and nothing is held: nobody misses a few ticks.
bool IsIdle() {
    if (ClockIsVirtual() || ScriptIsPlaying() || AnyButtonHeld() || !QueueIsEmpty())
        return false;
    return ClockMicroseconds() - Waiting.LastActivity > IdleAfter;
}

} // namespace

void ResetWaiting() {
    Waiting = {};
}

void TakeInput() {
    if (Display* display = CurrentDisplay())
        display->TakeInput();
    ReadTablet();
    PassInputTime();
}

void NoteEmptyHanded() {
    Waiting.Asked = true;
    if (!ClockIsVirtual() && !ScriptIsPlaying())
        return;
    if (++Waiting.FruitlessAsking > PatienceWithPolling)
        LetTimePass(TickMicroseconds, Pause::Whole);
}

void HoldScript() {
    Waiting.Asked = false;
}

void PresentSoon() {
    Display* display = CurrentDisplay();
    if (!display || display->IsHeadless())
        return;
    const long long now = ClockMicroseconds();
    if (now - Waiting.LastPresented < PresentInterval)
        return;
    if (!ScreenIsDamaged()) {
        TidyOverlay();
        return;
    }
    ComposeScreen();
    display->Present();
    Waiting.LastPresented = Waiting.LastActivity = now;
}

// Several windows go with one retrace; only a window that is swapped again tells that one passed.
void NoteSwap() {
    if (!CurrentDisplay() || Waiting.Swapped.insert(CurrentSurface()).second)
        return;
    Waiting.Swapped = {CurrentSurface()};
    if (ClockIsVirtual() || ScriptIsPlaying())
        LetTimePass(ClockIsVirtual() ? NextRetrace() - ClockMicroseconds() : 0, Pause::Swap);
    else
        PresentSoon();
}

void LetTimePass(long long microseconds, Pause pause) {
    Waiting.FruitlessAsking = 0;
    if (pause == Pause::Courtesy && IsIdle())
        microseconds = std::max(microseconds, IdleNap);
    if (pause != Pause::Swap)
        Waiting.Swapped.clear();
    PresentSoon();
    Display* display = CurrentDisplay();
    const long long end = ClockMicroseconds() + microseconds;
    bool courtesyEnds = false;
    for (long long left = microseconds; left > 0 && !courtesyEnds; left = end - ClockMicroseconds()) {
        if (!display) {
            AdvanceClock(left);
            if (!ClockIsVirtual())
                break;
            continue;
        }
        // A picture that had to wait for its turn goes out during a longer pause.
        const bool owing = !ClockIsVirtual() && ScreenIsDamaged();
        display->Wait(owing ? std::min(left, PresentInterval) : left, pause == Pause::Courtesy);
        TakeInput();
        PresentSoon();
        if (!QueueIsEmpty())
            Waiting.LastActivity = ClockMicroseconds();
        courtesyEnds = pause == Pause::Courtesy && !QueueIsEmpty();
    }
    if (microseconds <= 0)
        TakeInput();
    GiveScriptItsTurn(pause);
}

// ---- The public calls that wait or take in input ----

int qtest() {
    TakeInput();
    if (QueueIsEmpty()) {
        PresentSoon();
        NoteEmptyHanded();
    } else {
        Waiting.FruitlessAsking = 0;
    }
    return FirstDevice();
}

int qread(short* value) {
    while (qtest() == 0) {
        if (!CurrentDisplay() || (ClockIsVirtual() && !ScriptIsPlaying()))
            break;
        LetTimePass(TickMicroseconds, Pause::Courtesy);
    }
    const QueueEvent event = TakeEvent();
    if (value)
        *value = event.Value;
    return event.Device;
}

int getbutton(int device) {
    TakeInput();
    if (QueueIsEmpty())
        NoteEmptyHanded();
    return DeviceValue(device) != 0 ? 1 : 0;
}

int getvaluator(int valuator) {
    TakeInput();
    return DeviceValue(valuator);
}

void sginap(long ticks) {
    LetTimePass(std::max(0L, ticks) * TickMicroseconds, ticks <= 1 ? Pause::Courtesy : Pause::Whole);
}

void BreatheAtWork() {
    if (ClockIsVirtual()) {
        LetTimePass(TickMicroseconds, Pause::Work);
        return;
    }
    const long long now = ClockMicroseconds();
    if (now - Waiting.LastBreath < BreathInterval)
        return;
    Waiting.LastBreath = now;
    LetTimePass(0, Pause::Work);
}

void gsync() {
    LetTimePass(NextRetrace() - ClockMicroseconds(), Pause::Whole);
}

void ringbell() {
    Waiting.Rings++;
    if (Display* display = CurrentDisplay())
        display->RingBell();
}

long RingsHeard() {
    return Waiting.Rings;
}

void SetClipboardText(const char* text) {
    if (Display* display = CurrentDisplay())
        display->SetClipboard(text ? text : "");
}

const char* ClipboardText() {
    static std::string text;
    text = CurrentDisplay() ? CurrentDisplay()->Clipboard() : "";
    return text.c_str();
}

} // namespace gl
