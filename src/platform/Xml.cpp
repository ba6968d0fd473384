#include "platform/Xml.h"

#include "platform/RuntimeError.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstring>
#include <utility>

namespace kestrane {

namespace {

using xml::is;
using xml::kName;
using xml::kNameStart;
using xml::kSpace;
using xml::kTextStop;

constexpr std::size_t kDeepest = 4'000'000;
constexpr std::size_t kMostAttributes = 100'000; // of one element

struct Malformed {
    const char* at;
    std::string what;
};

bool startsWith(const char* at, const char* end, std::string_view text) {
    return static_cast<std::size_t>(end - at) >= text.size() && std::memcmp(at, text.data(), text.size()) == 0;
}

const char* find(const char* at, const char* end, std::string_view text) {
    const std::size_t found = std::string_view(at, static_cast<std::size_t>(end - at)).find(text);
    return found == std::string_view::npos ? nullptr : at + found;
}

bool isCharacter(char32_t c) {
    if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
    return !(c >= 0xD800 && c <= 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF;
}

struct Entity {
    std::string_view name;
    char32_t character;
};

constexpr Entity kEntities[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

// Returns the character of the reference that begins with the "&" at at, and moves at behind its ";". Returns nothing
// when it is no valid reference.
std::optional<char32_t> reference(const char*& at, const char* end) {
    const char* const limit = at + std::min<std::ptrdiff_t>(end - at, 32);
    const char* const semicolon = std::find(at, limit, ';');
    if (semicolon == limit) return std::nullopt;
    const std::string_view name(at + 1, static_cast<std::size_t>(semicolon - at - 1));
    std::optional<char32_t> character;
    if (name.starts_with('#')) {
        const bool isHex = name.starts_with("#x");
        const char* const digits = name.data() + (isHex ? 2 : 1);
        std::uint32_t value = 0;
        const auto result = std::from_chars(digits, semicolon, value, isHex ? 16 : 10);
        if (result.ec == std::errc() && result.ptr == semicolon && isCharacter(value)) character = value;
    } else {
        for (const Entity& entity : kEntities) {
            if (entity.name == name) character = entity.character;
        }
    }
    if (character) at = semicolon + 1;
    return character;
}

// Checks strictly that a text is well-formed, reading it once from front to back. Throws Malformed.
class Checker {
public:
    Checker(std::string_view text, bool isUtf8, XmlObserver& observer) :
        begin_(text.data()), at_(text.data()), end_(text.data() + text.size()), isUtf8_(isUtf8), observer_(observer) {}

    void document() {
        if (startsWith(at_, end_, "<?xml") && end_ - at_ > 5 && is(at_[5], kSpace)) declaration();
        misc();
        if (at_ == end_) throw Malformed{at_, "the document has no root element"};
        root();
        misc();
        if (at_ != end_) throw Malformed{at_, "text behind the root element"};
    }

private:
    std::size_t position(const char* p) const { return static_cast<std::size_t>(p - begin_); }

    char peek() const { return at_ < end_ ? *at_ : '\0'; }

    void skipSpace() {
        while (at_ < end_ && is(*at_, kSpace))
            ++at_;
    }

    void declaration() {
        const char* const close = find(at_, end_, "?>");
        if (close == nullptr) throw Malformed{at_, "the XML declaration does not end"};
        const char* p = at_ + 5;
        // version, then encoding and standalone, each at most once and in this order
        constexpr std::string_view kNames[] = {"version", "encoding", "standalone"};
        std::size_t next = 0;
        while (true) {
            const char* const blank = p;
            while (p < close && is(*p, kSpace))
                ++p;
            if (p == close) break;
            const char* const name = p;
            while (p < close && is(*p, kName))
                ++p;
            const std::string_view word(name, static_cast<std::size_t>(p - name));
            while (next < std::size(kNames) && kNames[next] != word) {
                if (next == 0) break;
                ++next;
            }
            if (blank == name || next == std::size(kNames) || kNames[next] != word) {
                throw Malformed{name, "the XML declaration is not of the right form"};
            }
            ++next;
            while (p < close && is(*p, kSpace))
                ++p;
            if (p == close || *p != '=') throw Malformed{p, "'=' is missing"};
            ++p;
            while (p < close && is(*p, kSpace))
                ++p;
            if (p == close || (*p != '"' && *p != '\'')) throw Malformed{p, "a value is not in quotes"};
            const char* const value = p + 1;
            p = std::find(value, close, *p);
            if (p == close) throw Malformed{p, "a value does not end"};
            // All that versions, encodings, "yes" and "no" consist of are name characters.
            if (p == value || !std::all_of(value, p, [](char c) { return is(c, kName); })) {
                throw Malformed{value, "the XML declaration is not of the right form"};
            }
            ++p;
        }
        if (next == 0) throw Malformed{at_, "the XML declaration has no version"};
        at_ = close + 2;
    }

    void misc() {
        while (true) {
            skipSpace();
            if (startsWith(at_, end_, "<!--")) {
                comment();
            } else if (startsWith(at_, end_, "<?")) {
                instruction();
            } else {
                return;
            }
        }
    }

    void verbatim(const char* from) { observer_.verbatim(position(from), position(at_)); }

    void comment() {
        const char* const from = at_;
        const char* const dashes = find(at_ + 4, end_, "--");
        if (dashes == nullptr) throw Malformed{from, "a comment does not end"};
        if (dashes + 2 == end_ || dashes[2] != '>') throw Malformed{dashes, "'--' within a comment"};
        characters(from, dashes);
        at_ = dashes + 3;
        verbatim(from);
    }

    void instruction() {
        const char* const from = at_;
        const char* const close = find(at_ + 2, end_, "?>");
        if (close == nullptr) throw Malformed{from, "a processing instruction does not end"};
        at_ += 2;
        const std::string_view target = name("a processing instruction has no name");
        const auto isXml = [&] {
            return target.size() == 3 && std::tolower(target[0]) == 'x' && std::tolower(target[1]) == 'm' &&
                   std::tolower(target[2]) == 'l';
        };
        if (isXml()) throw Malformed{from, "the XML declaration is not at the beginning"};
        if (at_ < close && !is(*at_, kSpace)) throw Malformed{at_, "a blank is missing"};
        characters(at_, close);
        at_ = close + 2;
        verbatim(from);
    }

    void cdata() {
        const char* const from = at_;
        const char* const close = find(at_ + 9, end_, "]]>");
        if (close == nullptr) throw Malformed{from, "a CDATA section does not end"};
        characters(from, close);
        at_ = close + 3;
        verbatim(from);
    }

    // Refuses characters that no document may contain.
    void characters(const char* from, const char* to) {
        for (const char* p = from; p < to; ++p) {
            const auto c = static_cast<unsigned char>(*p);
            if (c < 0x20 && !is(*p, kSpace)) throw Malformed{p, "a character that is not allowed in XML"};
            if (c == 0xEF && isUtf8_) nonCharacter(p);
        }
    }

    void nonCharacter(const char* p) const {
        if (startsWith(p, end_, "\xEF\xBF\xBE") || startsWith(p, end_, "\xEF\xBF\xBF")) {
            throw Malformed{p, "a character that is not allowed in XML"};
        }
    }

    std::string_view name(const char* complaint) {
        const char* const from = at_;
        if (at_ == end_ || !is(*at_, kNameStart)) throw Malformed{at_, complaint};
        while (at_ < end_ && is(*at_, kName))
            ++at_;
        return {from, static_cast<std::size_t>(at_ - from)};
    }

    void root() {
        if (startsWith(at_, end_, "<!DOCTYPE")) throw Malformed{at_, "document type declarations are not accepted"};
        if (peek() != '<') throw Malformed{at_, "text in front of the root element"};
        element();
        while (!open_.empty()) {
            text();
            if (at_ == end_) {
                throw Malformed{at_, "the element '" + std::string(openName()) + "' is not closed"};
            }
            const char second = end_ - at_ > 1 ? at_[1] : '\0';
            if (second == '/') {
                closingTag();
            } else if (second == '!') {
                if (startsWith(at_, end_, "<!--")) {
                    comment();
                } else if (startsWith(at_, end_, "<![CDATA[")) {
                    cdata();
                } else {
                    throw Malformed{at_, "a declaration within the root element"};
                }
            } else if (second == '?') {
                instruction();
            } else {
                element();
            }
        }
    }

    std::string_view openName() const {
        const char* const from = begin_ + open_.back();
        const char* to = from;
        while (is(*to, kName))
            ++to;
        return {from, static_cast<std::size_t>(to - from)};
    }

    // Plain text up to the next "<" or the end.
    void text() {
        const char* p = at_;
        while (true) {
            while (p < end_ && !is(*p, kTextStop)) {
                if (*p == '\xEF' && isUtf8_) nonCharacter(p);
                ++p;
            }
            if (p == end_ || *p == '<') break;
            if (*p == '&') {
                const char* const from = p;
                if (!reference(p, end_)) throw Malformed{from, "a reference that is not known"};
            } else if (*p == ']') {
                if (startsWith(p, end_, "]]>")) throw Malformed{p, "']]>' within text"};
                ++p;
            } else {
                throw Malformed{p, "a character that is not allowed in XML"};
            }
        }
        at_ = p;
    }

    void element() {
        const char* const from = at_++;
        XmlTag tag{name("a name is missing behind '<'"), position(from), 0, false, false};
        if (peek() != '>') attributes(tag);
        if (peek() == '/') {
            tag.isEmpty = true;
            ++at_;
        }
        if (peek() != '>') throw Malformed{at_, "the tag of '" + std::string(tag.name) + "' does not end"};
        ++at_;
        tag.end = position(at_);
        observer_.open(tag, open_.size());
        if (tag.isEmpty) {
            observer_.close(tag.end, tag.end, open_.size());
            return;
        }
        if (open_.size() == kDeepest) throw Malformed{from, "elements are nested too deeply"};
        open_.push_back(tag.begin + 1);
    }

    void attributes(XmlTag& tag) {
        names_.clear();
        while (true) {
            const char* const blank = at_;
            skipSpace();
            const char c = peek();
            if (c == '>' || c == '/' || at_ == end_) break;
            if (blank == at_) throw Malformed{at_, "a blank is missing in front of an attribute"};
            if (names_.size() == kMostAttributes) throw Malformed{at_, "an element has too many attributes"};
            names_.push_back(name("an attribute has no name"));
            tag.hasAttributes = true;
            skipSpace();
            if (peek() != '=') throw Malformed{at_, "'=' is missing behind an attribute"};
            ++at_;
            skipSpace();
            attributeValue();
        }
        refuseDuplicates(tag);
    }

    void attributeValue() {
        const char quote = peek();
        if (quote != '"' && quote != '\'') throw Malformed{at_, "the value of an attribute is not in quotes"};
        const char* p = at_ + 1;
        while (p < end_ && *p != quote) {
            const char* const from = p;
            if (*p == '<') throw Malformed{p, "'<' within the value of an attribute"};
            if (*p == '&') {
                if (!reference(p, end_)) throw Malformed{from, "a reference that is not known"};
                continue;
            }
            characters(p, p + 1);
            ++p;
        }
        if (p == end_) throw Malformed{at_, "the value of an attribute does not end"};
        at_ = p + 1;
    }

    void refuseDuplicates(const XmlTag& tag) {
        if (names_.size() < 2) return;
        std::sort(names_.begin(), names_.end());
        const auto twice = std::adjacent_find(names_.begin(), names_.end());
        if (twice != names_.end()) {
            throw Malformed{begin_ + tag.begin, "the attribute '" + std::string(*twice) + "' stands twice"};
        }
    }

    void closingTag() {
        const char* const from = at_;
        const char* const opened = begin_ + open_.back();
        const char* p = at_ + 2;
        const char* q = opened;
        while (p < end_ && *p == *q && is(*p, kName)) {
            ++p;
            ++q;
        }
        if (is(*q, kName) || (p < end_ && is(*p, kName))) {
            throw Malformed{from, "the end tag does not match '" + std::string(openName()) + "'"};
        }
        at_ = p;
        skipSpace();
        if (peek() != '>') throw Malformed{at_, "an end tag does not end"};
        ++at_;
        open_.pop_back();
        observer_.close(position(from), position(at_), open_.size());
    }

    const char* begin_;
    const char* at_;
    const char* end_;
    bool isUtf8_;
    XmlObserver& observer_;
    std::vector<std::size_t> open_;       // where the names of the open elements begin
    std::vector<std::string_view> names_; // of the attributes of one tag
};

std::string place(std::string_view text, std::size_t position) {
    const std::string_view before = text.substr(0, position);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t lineBegin = before.rfind('\n') + 1; // npos + 1 is 0
    return "line " + std::to_string(line) + ", column " + std::to_string(position - lineBegin + 1);
}

// The encoding that the declaration names, in lower case; empty without a declaration or without an encoding in it.
std::string declaredEncoding(std::string_view text) {
    if (!text.starts_with("<?xml")) return {};
    const std::string_view declaration = text.substr(0, std::min(text.find("?>"), text.size()));
    const std::size_t word = declaration.substr(0, 1024).find("encoding");
    if (word == std::string_view::npos) return {};
    const std::size_t quote = declaration.find_first_of("\"'", word);
    if (quote == std::string_view::npos) return {};
    const std::size_t close = declaration.find(declaration[quote], quote + 1);
    if (close == std::string_view::npos) return {};
    std::string encoding(declaration.substr(quote + 1, close - quote - 1));
    for (char& c : encoding)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return encoding;
}

// Converts UTF-16 to UTF-8, giving the memory of the source back on the way.
std::shared_ptr<FileBytes> fromUtf16(FileBytes& source, bool isBigEndian) {
    const std::string_view text = source.view().substr(2);
    const auto unit = [&](std::size_t i) {
        const auto first = static_cast<unsigned char>(text[i]);
        const auto second = static_cast<unsigned char>(text[i + 1]);
        return static_cast<char32_t>(isBigEndian ? first << 8 | second : second << 8 | first);
    };
    auto file = std::make_shared<FileBytes>(text.size() / 2 * 3);
    constexpr std::size_t kReleased = 1 << 20;
    std::size_t size = 0;
    std::string character;
    std::size_t released = 0;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        if (i - released >= kReleased) {
            source.release(released, i);
            released = i;
        }
        char32_t c = unit(i);
        if (c >= 0xD800 && c < 0xDC00 && i + 3 < text.size() && unit(i + 2) >= 0xDC00 && unit(i + 2) < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (unit(i + 2) - 0xDC00);
            i += 2;
        }
        character.clear();
        appendUtf8(character, c); // a lone surrogate becomes invalid UTF-8, which the check refuses
        std::memcpy(file->data() + size, character.data(), character.size());
        size += character.size();
    }
    file->shrink(size);
    return file;
}

void appendCharacter(const XmlBytes& bytes, std::string& out, char c) {
    if (bytes.isUtf8 || static_cast<unsigned char>(c) < 0x80) {
        out.push_back(c);
    } else {
        appendUtf8(out, fromWindows1252(static_cast<unsigned char>(c)));
    }
}

// Appends a LF, since every kind of line end reads as LF. Returns the place behind the line end at p.
const char* appendLineEnd(std::string& out, const char* p, const char* end) {
    out.push_back('\n');
    return p + (p + 1 < end && p[1] == '\n' ? 2 : 1);
}

void appendDecoded(const XmlBytes& bytes, std::string& out, std::string_view raw) {
    for (const char* p = raw.data(); p < raw.data() + raw.size();) {
        if (*p == '&') {
            if (const auto character = reference(p, raw.data() + raw.size())) {
                appendUtf8(out, *character);
                continue;
            }
        }
        if (*p == '\r') {
            p = appendLineEnd(out, p, raw.data() + raw.size());
            continue;
        }
        appendCharacter(bytes, out, *p++);
    }
}

void appendEscaped(std::string& out, std::string_view decoded) {
    for (const char c : decoded) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        default:
            out.push_back(c);
        }
    }
}

// Calls visit(name, raw value) for each attribute of a tag.
template <class Visit>
void forEachAttribute(std::string_view tag, Visit visit) {
    if (tag.starts_with("</")) return;
    const char* p = tag.data() + 1;
    const char* const end = tag.data() + tag.size();
    while (p < end && is(*p, kName))
        ++p;
    while (true) {
        while (p < end && is(*p, kSpace))
            ++p;
        const char* const name = p;
        while (p < end && is(*p, kName))
            ++p;
        if (p == name) return;
        const char* const nameEnd = p;
        while (p < end && *p != '"' && *p != '\'')
            ++p;
        if (p == end) return;
        const char* const close = std::find(p + 1, end, *p);
        visit(std::string_view(name, static_cast<std::size_t>(nameEnd - name)),
              std::string_view(p + 1, static_cast<std::size_t>(close - p - 1)));
        p = std::min(close + 1, end);
    }
}

} // namespace

std::optional<XmlError> loadXml(std::shared_ptr<FileBytes> file, XmlBytes& bytes) {
    bytes.file = std::move(file);
    bytes.begin = 0;
    const std::string_view all = bytes.file->view();
    if (all.starts_with("\xFF\xFE") || all.starts_with("\xFE\xFF")) {
        if (all.size() % 2 != 0) return XmlError{"The document ends within a character."};
        bytes.file = fromUtf16(*bytes.file, all.starts_with("\xFE\xFF"));
        bytes.isUtf8 = true;
        if (!isValidUtf8(bytes.text())) return XmlError{"The document is not valid UTF-16."};
        return std::nullopt;
    }
    const bool hasMark = all.starts_with("\xEF\xBB\xBF");
    if (hasMark) bytes.begin = 3;
    const bool isValid = isValidUtf8(all);
    const std::string encoding = declaredEncoding(bytes.text());
    constexpr std::string_view kUnicode[] = {"utf-8", "utf8", "us-ascii", "ascii"};
    constexpr std::string_view kSingleByte[] = {"windows-1252", "cp1252", "iso-8859-1", "latin1"};
    const auto isOneOf = [&](const auto& names) {
        return std::find(std::begin(names), std::end(names), encoding) != std::end(names);
    };
    if (hasMark || isOneOf(kUnicode)) {
        bytes.isUtf8 = true;
        if (!isValid) return XmlError{"The document is not valid UTF-8."};
    } else if (encoding.empty()) {
        bytes.isUtf8 = isValid;
    } else if (isOneOf(kSingleByte)) {
        bytes.isUtf8 = false;
    } else {
        return XmlError{"The encoding '" + encoding.substr(0, 40) + "' is not supported."};
    }
    return std::nullopt;
}

std::optional<XmlError> checkXml(std::string_view text, bool isUtf8, XmlObserver& observer) {
    try {
        Checker(text, isUtf8, observer).document();
        return std::nullopt;
    } catch (const Malformed& malformed) {
        const auto position = static_cast<std::size_t>(malformed.at - text.data());
        return XmlError{"The document is not well formed: " + malformed.what + " (" + place(text, position) + ")."};
    }
}

XmlCursor::Kind XmlCursor::next() {
    const char* p = at_;
    while (p < end_ && *p != '<')
        ++p;
    if (p >= end_) {
        at_ = end_;
        return Kind::End;
    }
    const auto position = [&](const char* q) { return static_cast<std::size_t>(q - text_); };
    tag_ = {{}, position(p), 0, false, false};
    ++p;
    const auto finish = [&](const char* behind, Kind kind) {
        at_ = behind;
        tag_.end = position(behind);
        return kind;
    };
    const auto verbatim = [&](std::string_view close) {
        const char* const found = find(p, end_, close);
        return finish(found == nullptr ? end_ : found + close.size(), Kind::Verbatim);
    };
    if (startsWith(p, end_, "!--")) {
        p += 3;
        return verbatim("-->");
    }
    if (startsWith(p, end_, "!")) return verbatim("]]>");
    if (startsWith(p, end_, "?")) return verbatim("?>");
    const Kind kind = startsWith(p, end_, "/") ? Kind::Close : Kind::Open;
    if (kind == Kind::Close) ++p;
    const char* const name = p;
    while (p < end_ && is(*p, kName))
        ++p;
    tag_.name = {name, static_cast<std::size_t>(p - name)};
    while (p < end_ && *p != '>') {
        if (*p == '"' || *p == '\'') {
            tag_.hasAttributes = true;
            p = std::find(p + 1, end_, *p);
        } else if (*p == '/') {
            tag_.isEmpty = true;
        }
        if (p < end_) ++p;
    }
    return finish(p < end_ ? p + 1 : end_, kind);
}

std::optional<std::string> xmlAttribute(const XmlBytes& bytes, const XmlElement& element, std::string_view name) {
    const std::string_view tag = bytes.text().substr(element.begin, element.contentBegin - element.begin);
    std::optional<std::string> found;
    forEachAttribute(tag, [&](std::string_view attribute, std::string_view raw) {
        if (attribute != name) return;
        found.emplace();
        for (const char* p = raw.data();
             p < raw.data() + raw.size();) { // white space becomes blanks, but the characters of references stay
            if (*p == '&') {
                appendUtf8(*found, reference(p, raw.data() + raw.size()).value_or(' '));
            } else if (is(*p, kSpace)) {
                found->push_back(' ');
                p += *p == '\r' && p + 1 < raw.data() + raw.size() && p[1] == '\n' ? 2 : 1;
            } else {
                appendCharacter(bytes, *found, *p++);
            }
        }
    });
    return found;
}

std::string xmlDecode(const XmlBytes& bytes, std::string_view raw) {
    std::string out;
    appendDecoded(bytes, out, raw);
    return out;
}

std::string xmlSerialise(const XmlBytes& bytes, std::size_t begin, std::size_t end) {
    const std::string_view text = bytes.text();
    std::string out;
    XmlCursor cursor(text, begin, end);
    std::size_t at = begin;
    while (true) {
        const XmlCursor::Kind kind = cursor.next();
        const XmlTag& tag = cursor.tag();
        const std::size_t textEnd = kind == XmlCursor::Kind::End ? end : tag.begin;
        appendEscaped(out, xmlDecode(bytes, text.substr(at, textEnd - at)));
        if (kind == XmlCursor::Kind::End) return out;
        at = tag.end;
        const std::string_view raw = text.substr(tag.begin, tag.end - tag.begin);
        if (kind == XmlCursor::Kind::Verbatim) {
            for (const char* p = raw.data(); p < raw.data() + raw.size();) {
                if (*p == '\r') {
                    p = appendLineEnd(out, p, raw.data() + raw.size());
                } else {
                    appendCharacter(bytes, out, *p++);
                }
            }
            continue;
        }
        out += kind == XmlCursor::Kind::Close ? "</" : "<";
        for (const char c : tag.name)
            appendCharacter(bytes, out, c);
        forEachAttribute(raw, [&](std::string_view name, std::string_view value) {
            out += ' ';
            out += name;
            out += "=\"";
            for (const char c : xmlDecode(bytes, value)) {
                if (c == '"') {
                    out += "&quot;";
                } else {
                    appendEscaped(out, std::string_view(&c, 1));
                }
            }
            out += '"';
        });
        out += tag.isEmpty ? "/>" : ">";
    }
}

} // namespace kestrane
