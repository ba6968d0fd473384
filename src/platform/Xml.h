// XML without a document tree: loading the bytes of a file, checking strictly that they are well-formed, and walking
// text that has been checked. A tree of the large data files would take many times their size in memory, so readers
// walk the text itself. This file does not know what the elements mean.
//
// The check is that of XML 1.0 without document types: a document type declaration is refused, and with it every entity
// but the five predefined ones. Two things that XML forbids are let through: a name may contain any character above
// U+007F, and a version may be any word.
#pragma once

#include "platform/Files.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

struct XmlError {
    std::string Reason; // one sentence with line and column
};

// The bytes of a document. UTF-16 has been turned into UTF-8; single-byte text (Windows-1252) is unchanged.
struct XmlBytes {
    std::shared_ptr<FileBytes> file;
    std::size_t begin = 0; // behind the byte order mark
    bool isUtf8 = true;    // else Windows-1252

    std::string_view text() const { return file->view().substr(begin); }
};

// Takes the bytes of a file and decides by their byte order mark or declaration whether they are UTF-16, UTF-8 or
// Windows-1252; without either, they are UTF-8 when they are valid UTF-8, else Windows-1252. Returns an error when the
// declared encoding is not supported or the bytes are not valid in it.
std::optional<XmlError> loadXml(std::shared_ptr<FileBytes> file, XmlBytes& bytes);

// Character classes of markup.
namespace xml {

constexpr unsigned char kNameStart = 1;
constexpr unsigned char kName = 2;
constexpr unsigned char kSpace = 4;
constexpr unsigned char kTextStop = 8; // ends plain text: "<", "&", "]" and characters that no document may contain

constexpr std::array<unsigned char, 256> makeClasses() {
    std::array<unsigned char, 256> classes{};
    for (unsigned c = 0; c < 256; ++c) {
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || c >= 0x80;
        const bool isSpace = c == ' ' || c == '\t' || c == '\n' || c == '\r';
        if (isLetter) classes[c] |= kNameStart | kName;
        if ((c >= '0' && c <= '9') || c == '-' || c == '.') classes[c] |= kName;
        if (isSpace) classes[c] |= kSpace;
        if (c == '<' || c == '&' || c == ']' || (c < 0x20 && !isSpace)) classes[c] |= kTextStop;
    }
    return classes;
}

inline constexpr std::array<unsigned char, 256> kClasses = makeClasses();

inline bool is(char c, unsigned char wanted) {
    return (kClasses[static_cast<unsigned char>(c)] & wanted) != 0;
}

} // namespace xml

// An opening tag as the check and the cursor report it. Positions count from the beginning of the text.
struct XmlTag {
    std::string_view name;
    std::size_t begin; // at "<"
    std::size_t end;   // behind ">"
    bool hasAttributes;
    bool isEmpty; // "<name/>"
};

// Is told about the elements while a text is being checked. Every call is about text that is well-formed so far.
class XmlObserver {
public:
    virtual ~XmlObserver() = default;
    virtual void open(const XmlTag& tag,
                      std::size_t depth) = 0; // the root has depth 0; close() follows for an empty element, too
    virtual void close(std::size_t begin, std::size_t end, std::size_t depth) = 0; // of the closing tag
    virtual void verbatim(std::size_t begin, std::size_t end) = 0; // a comment, CDATA section or processing instruction

    // Large documents are checked by several threads: parts of them are read ahead, on the supposition that whole
    // elements of one parent stand there. mark() is the tag that may begin such a part; without one, nothing is read
    // ahead. ahead() is asked for the observer of a part, to which the part's elements have depths from 0 on. It is
    // used on another thread. take() adds what it has seen, for a part whose parent has its children at depth; it
    // returns false when the part is to be read again instead.
    virtual std::string_view mark() const { return {}; }

    virtual std::unique_ptr<XmlObserver> ahead() { return nullptr; }

    virtual bool take(XmlObserver&, std::size_t /*depth*/) { return false; }
};

// The length of the parts that are read ahead, in bytes.
constexpr std::size_t kXmlPart = std::size_t(4) << 20;

// Checks a whole document. It takes 8 bytes of memory for each open element. Elements nested more than four million
// levels deep are refused, and so are more than 100,000 attributes of one element. The threads that read ahead have
// ended when it returns.
std::optional<XmlError> checkXml(std::string_view text, bool isUtf8, XmlObserver& observer,
                                 std::size_t partSize = kXmlPart);

// Walks a stretch of checked text tag by tag. It is also safe on a stretch that begins or ends inside markup: it then
// interprets the pieces as well as it can.
class XmlCursor {
public:
    enum class Kind { Open, Close, Verbatim, End };

    // text is the whole document; the walk goes from begin to end.
    XmlCursor(std::string_view text, std::size_t begin, std::size_t end) :
        text_(text.data()), at_(text.data() + begin), end_(text.data() + end) {}

    Kind next();

    const XmlTag& tag() const {
        return tag_;
    } // after Open (when isEmpty, no Close follows), Close (name, begin and end are set) or Verbatim

    void jump(std::size_t position) { at_ = text_ + position; }

private:
    const char* text_;
    const char* at_;
    const char* end_;
    XmlTag tag_{};
};

// An element of checked text.
struct XmlElement {
    std::size_t begin = 0;        // at "<"
    std::size_t contentBegin = 0; // behind the opening tag
    std::size_t contentEnd = 0;   // at the closing tag; contentBegin for an empty element
    std::size_t end = 0;          // behind the closing tag
};

// The value of an attribute of an element with its references resolved; nothing when the element has no attribute of
// that name.
std::optional<std::string> xmlAttribute(const XmlBytes& bytes, const XmlElement& element, std::string_view name);

// Character data as UTF-8 with its references resolved.
std::string xmlDecode(const XmlBytes& bytes, std::string_view raw);

// A stretch of content in its normal serialised form, as UTF-8: references are resolved and "&", "<" and ">" escaped
// again in character data, tags are written without superfluous blanks, and comments and CDATA sections are kept.
std::string xmlSerialise(const XmlBytes& bytes, std::size_t begin, std::size_t end);

} // namespace kestrane
