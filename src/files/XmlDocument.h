// An XML data file in memory: its checked text, and where the bulk of it, the interval rows, lies. Answers the reader's
// two kinds of question: elements through the structure, and texts by their first occurrence at any depth. Kept alive
// by the logs whose rows are still to be loaded.
#pragma once

#include "files/MemoryBudget.h"
#include "platform/Xml.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kestrane {

// The texts that are looked up in a log as a whole, so that an answer may lie within its rows.
inline constexpr std::array<std::string_view, 19> kLogTexts = {"md",  "lcn", "calc",     "sl",  "cri", "ex",  "note",
                                                               "fdt", "cdt", "ctm",      "sdt", "stm", "edt", "etm",
                                                               "mti", "ol",  "interval", "th",  "rng"};

// The rows of one log, as the check found them.
struct IntervalsBlock {
    XmlElement element;                 // the whole "intvls"
    std::int64_t rows = 0;              // "intvl" children
    std::vector<std::size_t> landmarks; // where rows 1, 1 + kLandmark, ... begin
    bool hasVerbatim = false;           // a comment, CDATA section or processing instruction lies within

    // Which of kLogTexts are opened within, and where first.
    std::vector<std::pair<std::size_t, std::size_t>> firstTexts;

    std::size_t firstText(std::size_t index) const { // 0: nowhere
        const auto found = std::ranges::find(firstTexts, index, &std::pair<std::size_t, std::size_t>::first);
        return found == firstTexts.end() ? 0 : found->second;
    }
};

constexpr std::int64_t kLandmark = 64;

class XmlDocument {
public:
    // Checks the bytes of a file. Nothing when they are not well formed, with the reason. Raises 7 when there are far
    // more blocks of rows than their size accounts for.
    static std::shared_ptr<XmlDocument> load(std::shared_ptr<FileBytes> file, std::string& reason);
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

    // Holds rows that are still to be read, once all else of the document has been; and gives back their memory when
    // they have been, that of short rows together with their neighbours'. They must not be read again. Any thread may
    // release.
    void hold(std::size_t from, std::size_t to) const;
    void release(std::size_t from, std::size_t to) const;

private:
    static std::shared_ptr<XmlDocument> checked(XmlBytes bytes, std::string& reason);

    void chargeText(std::size_t begin, std::size_t end) const {
        budget_.chargeText(text().substr(begin, end - begin), text().size());
    }

    static constexpr std::size_t kPiece = 64 << 10;

    XmlBytes bytes_;
    std::deque<IntervalsBlock> blocks_; // in document order

    // For each kPiece of the text: how many ends of held rows lie in it.
    mutable std::vector<std::atomic<std::uint32_t>> ends_;
    mutable MemoryBudget budget_;
};

} // namespace kestrane
