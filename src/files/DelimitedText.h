// Delimited text as older programs exported it: tokens that end at a comma or a line end. Between double quotes a comma
// is part of the token.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace kestrane {

class DelimitedText {
public:
    // A Ctrl+Z, which older systems put behind a text, ends it.
    explicit DelimitedText(std::string_view text) : rest_(text.substr(0, text.find('\x1A'))) {}

    // The next token without its quotes; nothing at the end of the text. Behind a comma at the end of a line there is
    // an empty token, behind one at the end of the text there is none.
    std::optional<std::string_view> next();

    // The last token ended with the text, behind neither a delimiter nor its closing quote: part of it may be missing.
    bool isCut() const { return isCut_; }

    std::string_view last() const { return last_; } // the token given last

    std::size_t leftAtMost() const; // no more tokens are left than this

private:
    std::string_view rest_, last_;
    bool isCut_ = false;
};

// The next line of a text, without its end, which may be CR LF, CR or LF; it is taken off the text. Nothing when that
// is empty.
std::optional<std::string_view> takeLine(std::string_view& text);

} // namespace kestrane
