#pragma once

#include <cstddef>
#include <string_view>

/// Takes apart a text in memory with patterns like those of scanf: a blank stands for any white space or none, also
/// across lines, and numbers may follow white space. Whatever fails leaves the scanner where it stopped.
class TextScanner {
  public:
    explicit TextScanner(std::string_view text) : Text(text) {}

    /// The rest of the current line without its end (a newline, a carriage return before it); false at the end of the
    /// text.
    bool TakeLine(std::string_view& line);

    /// Matches and reads the parts one after the other: character strings are patterns, references to int and float
    /// are set to the number that stands there.
    template <class... Parts>
    bool Scan(Parts&&... parts) {
        return (Take(parts) && ...);
    }

    std::size_t BytesLeft() const { return Text.size() - Place; }

  private:
    bool Take(const char* pattern);
    /// A number too large for an int is taken as the largest there is.
    bool Take(int& value);
    /// A number too large for a float is taken as infinite, one too small as 0.
    bool Take(float& value);

    void SkipWhiteSpace();

    std::string_view Text;
    std::size_t Place = 0;
};
