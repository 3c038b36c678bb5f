#include "structure/name_prompt.h"

#include "gooey/messages.h"
#include "gooey/utf8.h"

#include <algorithm>

namespace {

/// The prompt that is open.
struct {
    char Text[NameSize];
    const char* TakenText;
    NameAnswer (*Answer)(const char* name);
    Window* Parent;
} Asked;

/// As much of a name as fits, in whole characters.
void FillIn(const char* name) {
    const std::size_t length = name ? WholeCharactersWithin(name, NameSize - 1) : 0;
    std::copy_n(name, length, Asked.Text);
    Asked.Text[length] = '\0';
}

void TakeAnswer(const TextPromptContinuations& next) {
    if (Asked.Answer(Asked.Text) == NameAnswer::Taken)
        DoNotifier(Asked.TakenText, next.Retry, Asked.Parent);
    else
        WindowCall(next.Close);
}

} // namespace

void PromptForName(const char* prompt, const char* initial, const char* takenText,
                   NameAnswer (*answer)(const char* name), Window* parent) {
    Asked.TakenText = takenText;
    Asked.Answer = answer;
    Asked.Parent = parent;
    FillIn(initial);
    DoTextInput(prompt, Asked.Text, NameSize, TakeAnswer, parent);
}
