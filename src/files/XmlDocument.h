// An XML data file in memory: its checked text, and the places of the interval rows, which are the bulk of it. It
// answers the two kinds of questions of the reader: for elements through the structure, and for texts by their first
// occurrence at any depth. The logs whose rows are still to be loaded keep it alive.
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

// The names whose texts are searched for in the whole of a log, so that the first occurrence may be within its rows.
inline constexpr std::array<std::string_view, 19> kLogTexts = {"md",  "lcn", "calc",     "sl",  "cri", "ex",  "note",
                                                               "fdt", "cdt", "ctm",      "sdt", "stm", "edt", "etm",
                                                               "mti", "ol",  "interval", "th",  "rng"};

// Where a row begins.
struct Landmark {
    std::int64_t row; // counted from 1
    std::size_t begin;
};

constexpr std::int64_t kLandmark = 64;

// The rows of one log, as found by the check.
struct IntervalsBlock {
    XmlElement element;              // the whole "intvls"
    std::int64_t rows = 0;           // the number of "intvl" children
    std::vector<Landmark> landmarks; // of the first row, and of one in at most kLandmark behind it
    bool hasVerbatim = false;        // whether it contains a comment, CDATA section or processing instruction

    // Which of kLogTexts occur in the block, by index, and the position of the first opening tag of each.
    std::vector<std::pair<std::size_t, std::size_t>> firstTexts;

    std::size_t firstText(std::size_t index) const { // 0 when it does not occur
        const auto found = std::ranges::find(firstTexts, index, &std::pair<std::size_t, std::size_t>::first);
        return found == firstTexts.end() ? 0 : found->second;
    }
};

class XmlDocument {
public:
    // Checks the bytes of a file. Returns nothing when they are not well-formed; reason then says why. Raises 7 when
    // there are far more blocks of rows than the size of the file accounts for.
    static std::shared_ptr<XmlDocument> load(std::shared_ptr<FileBytes> file, std::string& reason);
    static std::shared_ptr<XmlDocument> fromText(std::string_view text, std::string& reason,
                                                 std::size_t partSize = kXmlPart);

    const XmlBytes& bytes() const { return bytes_; }

    // Counts memory that reading takes, on any thread. Raises 7 when it is far more than the size of the document.
    void charge(std::size_t memory) const { budget_.charge(memory, text().size()); }

    std::string_view text() const { return bytes_.text(); }

    // The whole document as an element without tags, whose child is the root element.
    XmlElement whole() const;

    // The first atMost children with a name, in their order; and the first one. The memory of the list is charged.
    std::vector<XmlElement> children(const XmlElement& parent, std::string_view name,
                                     std::size_t atMost = static_cast<std::size_t>(-1)) const;
    std::optional<XmlElement> child(const XmlElement& parent, std::string_view name) const;

    // For each name the content behind the first tag "<name>" (without attributes, not empty) in the serialised text of
    // the element, up to the next "</name>", whichever element that closes; nothing when either is missing. All names
    // are found in one pass.
    std::vector<std::optional<XmlElement>> firstTexts(const XmlElement& element,
                                                      std::span<const std::string_view> names) const;

    // Texts of the document. The memory of long texts is charged.
    std::string serialised(std::size_t begin, std::size_t end) const;

    std::string serialised(const XmlElement& content) const {
        return serialised(content.contentBegin, content.contentEnd);
    }

    std::string decoded(const XmlElement& content) const;
    std::string attribute(const XmlElement& element, std::string_view name) const;

    // The block whose element begins at begin; null when there is none.
    const IntervalsBlock* blockAt(std::size_t begin) const;

    // hold marks the text of rows that are still to be read, after everything else in the document has been read.
    // release gives its memory back once they have been read; the memory of short ranges goes together with that of
    // their neighbours. The text must not be read again. release may be called on any thread.
    void hold(std::size_t from, std::size_t to) const;
    void release(std::size_t from, std::size_t to) const;

private:
    static std::shared_ptr<XmlDocument> checked(XmlBytes bytes, std::string& reason, std::size_t partSize);

    void chargeText(std::size_t begin, std::size_t end) const {
        budget_.chargeText(text().substr(begin, end - begin), text().size());
    }

    static constexpr std::size_t kPiece = 64 << 10;

    XmlBytes bytes_;
    std::deque<IntervalsBlock> blocks_; // in document order

    // For each kPiece of the text, how many ends of held ranges lie in it.
    mutable std::vector<std::atomic<std::uint32_t>> ends_;
    mutable MemoryBudget budget_;
};

} // namespace kestrane
