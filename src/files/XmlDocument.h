// An XML data file in memory: its checked text, and where the bulk of it, the interval rows, lies. Answers the reader's
// two kinds of question: elements through the structure, and texts by their first occurrence at any depth. Kept alive
// by the logs whose rows are still to be loaded.
#pragma once

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
    // file cannot be read.
    static std::shared_ptr<XmlDocument> load(const std::string& path, std::string& reason);
    static std::shared_ptr<XmlDocument> fromText(std::string_view text, std::string& reason);

    const XmlBytes& bytes() const { return bytes_; }

    std::string_view text() const { return bytes_.text(); }

    // The whole document as an element without tags: the parent of the root.
    XmlElement whole() const;

    // Children of a name, in order; the first of them.
    std::vector<XmlElement> children(const XmlElement& parent, std::string_view name) const;
    std::optional<XmlElement> child(const XmlElement& parent, std::string_view name) const;

    // For each name the content behind the first tag "<name>" (no attributes, not empty) in the serialised text of the
    // element, up to the next "</name>" whatever it belongs to; nothing when either is missing. One pass for all names.
    std::vector<std::optional<XmlElement>> firstTexts(const XmlElement& element,
                                                      std::span<const std::string_view> names) const;

    std::string serialised(const XmlElement& content) const {
        return xmlSerialise(bytes_, content.contentBegin, content.contentEnd);
    }

    std::string attribute(const XmlElement& element, std::string_view name) const {
        return xmlAttribute(bytes_, element, name).value_or(std::string());
    }

    const IntervalsBlock* blockAt(std::size_t begin) const; // the block whose element begins there

    // Gives back the memory of rows that have been read. They must not be read again.
    void release(std::size_t from, std::size_t to) const {
        bytes_.file->release(bytes_.begin + from, bytes_.begin + to);
    }

private:
    static std::shared_ptr<XmlDocument> checked(XmlBytes bytes, std::string& reason);

    XmlBytes bytes_;
    std::vector<IntervalsBlock> blocks_; // in document order
};

} // namespace kestrane
