#include "gooey/manual_page.h"

#include "gooey/utf8.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <string_view>

namespace {

constexpr std::string_view Blanks = " \t\r\n\f";

struct Entity {
    std::string_view Name;
    int CodePoint;
};

constexpr Entity Entities[] = {
    {"amp", '&'},     {"lt", '<'},       {"gt", '>'},       {"quot", '"'},      {"apos", '\''},
    {"nbsp", ' '},    {"ndash", 0x2013}, {"mdash", 0x2014}, {"hellip", 0x2026}, {"times", 0xD7},
    {"deg", 0xB0},    {"lsquo", 0x2018}, {"rsquo", 0x2019}, {"ldquo", 0x201C},  {"rdquo", 0x201D},
    {"rarr", 0x2192}, {"larr", 0x2190},  {"middot", 0xB7},  {"plusmn", 0xB1},   {"frac12", 0xBD},
};

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](unsigned char c) { return std::tolower(c); });
    return lower;
}

/// The text that "&name;" stands for; the source as it is when it is none.
std::string DecodeEntity(std::string_view name) {
    if (name.size() > 1 && name[0] == '#') {
        bool hexadecimal = name[1] == 'x' || name[1] == 'X';
        std::string digits(name.substr(hexadecimal ? 2 : 1));
        return EncodeCodePoint(static_cast<int>(std::strtol(digits.c_str(), nullptr, hexadecimal ? 16 : 10)));
    }
    for (const Entity& entity : Entities)
        if (entity.Name == name)
            return EncodeCodePoint(entity.CodePoint);
    return "&" + std::string(name) + ";";
}

/// A tag: its name in small letters ("/p" closes), and the text of its attributes.
struct Tag {
    std::string Name;
    std::string_view Attributes;
};

/// The value of an attribute; "" when it has none.
std::string AttributeOf(const Tag& tag, std::string_view name) {
    std::string lower = Lower(tag.Attributes);
    std::size_t at = lower.find(std::string(name) + "=");
    if (at == std::string::npos)
        return "";
    std::string_view value = tag.Attributes.substr(at + name.size() + 1);
    char quote = value.empty() ? '\0' : value[0];
    if (quote == '"' || quote == '\'')
        return std::string(value.substr(1, value.find(quote, 1) - 1));
    return std::string(value.substr(0, value.find_first_of(Blanks)));
}

/// The page that a link leads to; "" for other places.
std::string PageOf(const std::string& link) {
    constexpr std::string_view ending = ".html";
    std::string file = link.substr(0, link.find('#'));
    if (file.size() <= ending.size() || !file.ends_with(ending) || file.find('/') != std::string::npos)
        return "";
    return file.substr(0, file.size() - ending.size());
}

class PageReader {
  public:
    explicit PageReader(std::string_view html) : Rest(html) {}

    ManualPage Read() {
        while (!Rest.empty())
            if (Rest[0] == '<')
                ReadMarkup();
            else
                ReadText();
        EndBlock();
        return Page;
    }

  private:
    std::string_view Rest;
    ManualPage Page;
    ManualBlock Block;
    /// The word being read, which goes on across tags.
    std::string Word;
    std::string Link;
    /// No blank has been read since the last word.
    bool Glued = false;
    int ListDepth = 0;
    bool InTitle = false;

    std::string_view TakeUpTo(std::string_view end) {
        std::size_t at = Rest.find(end);
        std::string_view taken = Rest.substr(0, at);
        Rest.remove_prefix(at == std::string_view::npos ? Rest.size() : at + end.size());
        return taken;
    }

    void EndWord() {
        if (Word.empty())
            return;
        if (InTitle)
            Page.Title += (Page.Title.empty() ? "" : " ") + Word;
        else
            Block.Words.push_back({Word, Link, Glued});
        Word.clear();
        Glued = true;
    }

    void EndBlock() {
        EndWord();
        if (!Block.Words.empty())
            Page.Blocks.push_back(Block);
        Block = {};
        Block.Indent = ListDepth;
        Glued = false;
    }

    void ReadText() {
        char c = Rest[0];
        Rest.remove_prefix(1);
        if (Blanks.find(c) != std::string_view::npos) {
            EndWord();
            Glued = false;
        } else if (c == '&' && Rest.substr(0, 10).find(';') != std::string_view::npos)
            Word += DecodeEntity(TakeUpTo(";"));
        else
            Word += c;
    }

    void ReadMarkup() {
        if (Rest.starts_with("<!--")) {
            TakeUpTo("-->");
            return;
        }
        Rest.remove_prefix(1);
        std::string_view text = TakeUpTo(">");
        Tag tag;
        std::size_t nameEnd = std::min(text.find_first_of(Blanks), text.size());
        tag.Name = Lower(text.substr(0, nameEnd));
        tag.Attributes = text.substr(nameEnd);
        Apply(tag);
    }

    void Apply(const Tag& tag) {
        std::string_view name = tag.Name;
        bool closes = name.starts_with('/');
        if (closes)
            name.remove_prefix(1);
        if (name == "a") {
            EndWord();
            Link = closes ? "" : PageOf(AttributeOf(tag, "href"));
        } else if (name == "title") {
            EndWord();
            InTitle = !closes;
        } else if (name == "script" || name == "style") {
            if (!closes) {
                TakeUpTo("</" + std::string(name));
                TakeUpTo(">");
            }
        } else if (name == "img") {
            EndWord();
            if (std::string text = AttributeOf(tag, "alt"); !text.empty())
                Block.Words.push_back({"[" + text + "]", Link, false});
        } else if (name == "td" || name == "th") {
            EndWord();
            Glued = false;
        } else if (IsBlock(name)) {
            EndBlock();
            StartBlock(name, closes);
        }
    }

    static bool IsBlock(std::string_view name) {
        static constexpr std::string_view names[] = {
            "p",  "h1", "h2",  "h3",  "h4",   "ul",   "ol",   "li",    "br",      "hr",         "tr",  "dl",
            "dt", "dd", "div", "pre", "body", "html", "head", "table", "section", "blockquote", "nav", "main"};
        return std::find(std::begin(names), std::end(names), name) != std::end(names);
    }

    void StartBlock(std::string_view name, bool closes) {
        if (name == "ul" || name == "ol" || name == "dd" || name == "blockquote")
            ListDepth = std::max(0, ListDepth + (closes ? -1 : 1));
        Block.Indent = ListDepth;
        Block.Heading = !closes && name.size() == 2 && name[0] == 'h' && name[1] != 'r';
        if (name == "li" && !closes)
            Block.Words.push_back({"\xE2\x80\xA2", "", false});
    }
};

} // namespace

ManualPage ReadManualPage(const std::string& html) {
    return PageReader(html).Read();
}
