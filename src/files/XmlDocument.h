// An XML data file in memory: its checked text, and where the bulk of it, the interval rows, lies. Answers the reader's
// two kinds of question: elements through the structure, and texts by their first occurrence at any depth. Kept alive
// by the logs whose rows are still to be loaded.
#pragma once

#include "files/MemoryBudget.h"
#include "platform/Xml.h"

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kestrane {

// The texts that are looked up in a log as a whole, so that an answer may lie within its rows.
inline constexpr std::array<std::string_view, 19> kLogTexts = {"md",  "lcn", "calc",     "sl",  "cri", "ex",  "note",
                                                               "fdt", "cdt", "ctm",      "sdt", "stm", "edt", "etm",
                                                               "mti", "ol",  "interval", "th",  "rng"};

// The rows of one log, as the check found them.
struct IntervalsBlock {
    XmlElement element;                                    // the whole "intvls"
    std::int64_t rows = 0;                                 // "intvl" children
    std::vector<std::size_t> landmarks;                    // where rows 1, 1 + kLandmark, ... begin
    std::array<std::size_t, kLogTexts.size()> firstText{}; // where each of kLogTexts is first opened within; 0: nowhere
    bool hasVerbatim = false; // a comment, CDATA section or processing instruction lies within
};

constexpr std::int64_t kLandmark = 64;

class XmlDocument {
public:
    // Reads and checks a file. Nothing when it is not well formed, with the reason. Raises the system's error when the
    // file cannot be read, and 7 when it has far more blocks of rows than its size accounts for.
    static std::shared_ptr<XmlDocument> load(const std::string& path, std::string& reason);
    static std::shared_ptr<XmlDocument> fromText(std::string_view text, std::string& reason);

    const XmlBytes& bytes() const { return bytes_; }

    // Counts memory that reading takes, on any thread; raises 7 when it is far more than the size of the document.
    void charge(std::size_t memory) const { budget_.charge(memory, text().size()); }

    std::string_view text() const { return bytes_.text(); }

    // The whole document as an element without tags: the parent of the root.
    XmlElement whole() const;

    // Children of a name, in order, the first atMost of them; the first. The list is charged for.
    std::vector<XmlElement> children(const XmlElement& parent, std::string_view name,
                                     std::size_t atMost = static_cast<std::size_t>(-1)) const;
    std::optional<XmlElement> child(const XmlElement& parent, std::string_view name) const;

    // For each name the content behind the first tag "<name>" (no attributes, not empty) in the serialised text of the
    // element, up to the next "</name>" whatever it belongs to; nothing when either is missing. One pass for all names.
    std::vector<std::optional<XmlElement>> firstTexts(const XmlElement& element,
                                                      std::span<const std::string_view> names) const;

    // Texts of the document; long ones are charged for.
    std::string serialised(std::size_t begin, std::size_t end) const;

    std::string serialised(const XmlElement& content) const {
        return serialised(content.contentBegin, content.contentEnd);
    }

    std::string decoded(const XmlElement& content) const;
    std::string attribute(const XmlElement& element, std::string_view name) const;

    const IntervalsBlock* blockAt(std::size_t begin) const; // the block whose element begins there

    // Gives back the memory of rows that have been read. They must not be read again.
    void release(std::size_t from, std::size_t to) const {
        bytes_.file->release(bytes_.begin + from, bytes_.begin + to);
    }

private:
    static std::shared_ptr<XmlDocument> checked(XmlBytes bytes, std::string& reason);

    void chargeText(std::size_t length) const { budget_.chargeText(length, text().size()); }

    XmlBytes bytes_;
    std::vector<IntervalsBlock> blocks_; // in document order
    mutable MemoryBudget budget_;
};

} // namespace kestrane
