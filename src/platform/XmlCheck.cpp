// The strict check of a document.
#include "platform/InPieces.h"
#include "platform/Utf8.h"
#include "platform/Xml.h"
#include "platform/XmlText.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <charconv>
#include <cstring>
#include <deque>
#include <future>
#include <thread>
#include <utility>

namespace kestrane {

namespace {

using xml::find;
using xml::is;
using xml::kName;
using xml::kNameStart;
using xml::kSpace;
using xml::kTextStop;
using xml::reference;
using xml::startsWith;

constexpr std::size_t kDeepest = 4'000'000;
constexpr std::size_t kDeepestAhead = 1'000;     // within a part that is read ahead
constexpr std::size_t kMostAttributes = 100'000; // of one element
constexpr std::size_t kMarkWithin = 65'536;      // bytes that are searched for the beginning of a part

struct Malformed {
    const char* at;
    std::string what;
};

bool isCharacter(char32_t c) {
    if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
    return !(c >= 0xD800 && c <= 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF;
}

struct Entity {
    std::string_view name;
    char32_t character;
};

constexpr Entity kEntities[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

// Whether the declaration may give a value to its version, encoding or standalone.
bool isDeclared(std::string_view name, std::string_view value) {
    if (name == "standalone") return value == "yes" || value == "no";
    const bool isName = !value.empty() && std::all_of(value.begin(), value.end(), [](char c) { return is(c, kName); });
    return isName && (name != "encoding" || std::isalpha(static_cast<unsigned char>(value.front())) != 0);
}

// A stretch of a document that is supposed to be whole elements of one parent. One thread claims it and reads it.
struct Part {
    const char* begin;
    const char* end;
    std::unique_ptr<XmlObserver> observer;
    std::atomic<bool> isClaimed = false;
    std::promise<bool> isWhole; // given once it is read: whether the supposition holds
};

using Parts = std::deque<Part>;

// Checks strictly that a text is well-formed, reading it once from front to back. Throws Malformed.
class Checker {
public:
    Checker(std::string_view text, bool isUtf8, XmlObserver& observer, Parts& parts) :
        begin_(text.data()),
        at_(text.data()),
        end_(text.data() + text.size()),
        isUtf8_(isUtf8),
        observer_(observer),
        part_(parts.begin()),
        partsEnd_(parts.end()) {}

    // Of a part, which has no parts itself.
    Checker(std::string_view text, bool isUtf8, const Part& part, Parts& none) :
        begin_(text.data()),
        at_(part.begin),
        end_(part.end),
        isUtf8_(isUtf8),
        observer_(*part.observer),
        part_(none.end()),
        partsEnd_(none.end()),
        deepest_(kDeepestAhead) {}

    void part() {
        while (true) {
            text();
            if (at_ == end_) break;
            markup();
        }
        if (!open_.empty()) throw Malformed{at_, "the part ends within an element"};
    }

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
            if (!isDeclared(word, {value, static_cast<std::size_t>(p - value)})) {
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
            if (part_ == partsEnd_ || at_ < part_->begin || !jump()) markup();
        }
    }

    // At the beginning of a part that has been read ahead, takes over what was seen there and goes behind it.
    bool jump() {
        while (part_ != partsEnd_ && part_->begin < at_)
            ++part_;
        if (part_ == partsEnd_ || part_->begin != at_) return false;
        Part& part = *part_++;
        if (!part.isClaimed.exchange(true)) return false;
        if (!part.isWhole.get_future().get() || open_.size() + kDeepestAhead > kDeepest) return false;
        if (!observer_.take(*part.observer, open_.size())) return false;
        at_ = part.end;
        return true;
    }

    // What begins with the "<" in the content of an element.
    void markup() {
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
        if (open_.size() == deepest_) throw Malformed{from, "elements are nested too deeply"};
        if (!plainText(tag)) open_.push_back(tag.begin + 1);
    }

    // Most elements hold nothing but plain text: such a one is left behind at once, with its end tag.
    bool plainText(const XmlTag& tag) {
        const char* p = at_;
        while (p < end_ && !is(*p, kTextStop) && *p != '\xEF')
            ++p;
        const std::size_t endTag = tag.name.size() + 3;
        if (static_cast<std::size_t>(end_ - p) < endTag || p[1] != '/' || p[endTag - 1] != '>' || p[0] != '<' ||
            !std::equal(tag.name.begin(), tag.name.end(), p + 2)) {
            return false;
        }
        at_ = p + endTag;
        observer_.close(position(p), position(at_), open_.size());
        return true;
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
        if (open_.empty()) throw Malformed{from, "an end tag without its beginning"}; // of a part
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
    Parts::iterator part_; // the next one that may be jumped over
    Parts::iterator partsEnd_;
    std::size_t deepest_ = kDeepest;
    std::vector<std::size_t> open_;       // where the names of the open elements begin
    std::vector<std::string_view> names_; // of the attributes of one tag
};

// Cuts a document at marks into parts of a size. The first of them is left to the thread that begins at the front.
Parts cut(std::string_view text, XmlObserver& observer, std::size_t size) {
    Parts parts;
    const std::string_view mark = observer.mark();
    if (mark.empty()) return parts;
    for (std::size_t at = size; at < text.size(); at += size) {
        const std::size_t found = text.substr(at, std::min(size, kMarkWithin)).find(mark);
        if (found == std::string_view::npos) continue;
        Part& part = parts.emplace_back();
        part.begin = part.end = text.data() + at + found;
        part.observer = observer.ahead();
        if (parts.size() > 1) parts[parts.size() - 2].end = part.begin;
    }
    if (!parts.empty()) parts.pop_back(); // where the end of the last one is, nobody knows
    return parts;
}

// Reads the parts that nobody has claimed yet, the last one first.
void readAhead(std::string_view text, bool isUtf8, Parts& parts) {
    Parts none;
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        if (part->isClaimed.exchange(true)) continue;
        bool isWhole = false;
        try {
            Checker(text, isUtf8, *part, none).part();
            isWhole = true;
        } catch (...) { // the checker at the front will see what is wrong, and say it
        }
        part->isWhole.set_value(isWhole);
    }
}

// Gives up the parts that nobody reads yet, and waits for the threads.
class Helpers {
public:
    Helpers(std::string_view text, bool isUtf8, Parts& parts) : parts_(parts) {
        try {
            while (threads_.size() < std::min<std::size_t>(helpersAtMost(), parts.size()))
                threads_.emplace_back([=, &parts] { readAhead(text, isUtf8, parts); });
        } catch (const std::exception&) { // fewer threads do as well
        }
    }

    ~Helpers() {
        for (Part& part : parts_)
            part.isClaimed = true;
        for (std::thread& thread : threads_)
            thread.join();
    }

    Helpers(const Helpers&) = delete;
    Helpers& operator=(const Helpers&) = delete;

private:
    Parts& parts_;
    std::vector<std::thread> threads_;
};

std::string place(std::string_view text, std::size_t position) {
    const std::string_view before = text.substr(0, position);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const std::size_t lineBegin = before.rfind('\n') + 1; // npos + 1 is 0
    return "line " + std::to_string(line) + ", column " + std::to_string(position - lineBegin + 1);
}

} // namespace

namespace xml {

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

} // namespace xml

std::optional<XmlError> checkXml(std::string_view text, bool isUtf8, XmlObserver& observer, std::size_t partSize) {
    Parts parts = cut(text, observer, partSize);
    const Helpers helpers(text, isUtf8, parts);
    try {
        Checker(text, isUtf8, observer, parts).document();
        return std::nullopt;
    } catch (const Malformed& malformed) {
        const auto position = static_cast<std::size_t>(malformed.at - text.data());
        return XmlError{"The document is not well formed: " + malformed.what + " (" + place(text, position) + ")."};
    }
}

} // namespace kestrane
