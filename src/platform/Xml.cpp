// Loading a document, and walking text that has been checked.
#include "platform/Xml.h"
#include "platform/RuntimeError.h"
#include "platform/Utf8.h"
#include "platform/XmlText.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <utility>

namespace kestrane {

namespace {

using xml::find;
using xml::is;
using xml::kName;
using xml::kSpace;
using xml::reference;
using xml::startsWith;

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
