#pragma once

struct Window;

// Asking for the name of an object, a branch, a sub-object or a level of detail.

enum class NameAnswer {
    Accepted, // the prompt closes
    Taken,    // the user is told so and may correct the name
};

/// Names that are typed have room for this many bytes, the closing null included.
inline constexpr int NameSize = 128;

/// Asks for a name, `initial` (may be null) being there to begin with; `answer` gets each name that is confirmed and
/// says what becomes of it. One prompt at a time.
void PromptForName(const char* prompt, const char* initial, const char* takenText,
                   NameAnswer (*answer)(const char* name), Window* parent);
