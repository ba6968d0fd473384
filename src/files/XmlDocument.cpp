#include "files/XmlDocument.h"

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

constexpr std::size_t kGrowth = 2;          // of a vector
constexpr std::size_t kMemoryOfBlock = 128; // bytes of a block of rows with its landmarks

// Finds the blocks of rows while the document is being checked.
class BlockFinder : public XmlObserver {
public:
    explicit BlockFinder(const XmlDocument& document) : document_(document) {}

    std::string_view mark() const override { return "<intvl>"; }

    // Rows somewhere within a block.
    std::unique_ptr<XmlObserver> ahead() override {
        auto part = std::make_unique<BlockFinder>(document_);
        part->blocks.emplace_back();
        part->isWithin_ = true;
        part->depth_ = static_cast<std::size_t>(-1); // of the block, one above the rows
        return part;
    }

    bool take(XmlObserver& part, std::size_t depth) override {
        if (!isWithin_ || depth != depth_ + 1) return false;
        const IntervalsBlock& rows = static_cast<BlockFinder&>(part).blocks.front();
        IntervalsBlock& block = blocks.back();
        for (const Landmark& landmark : rows.landmarks)
            block.landmarks.push_back({block.rows + landmark.row, landmark.begin});
        block.rows += rows.rows;
        block.hasVerbatim |= rows.hasVerbatim;
        for (const auto& text : rows.firstTexts) {
            if (block.firstText(text.first) == 0) block.firstTexts.push_back(text);
        }
        return true;
    }

    void open(const XmlTag& tag, std::size_t depth) override {
        if (!isWithin_) {
            if (tag.name != "intvls") return;
            document_.charge(kMemoryOfBlock);
            isWithin_ = true;
            depth_ = depth;
            IntervalsBlock& block = blocks.emplace_back();
            block.element.begin = tag.begin;
            block.element.contentBegin = tag.end;
            return;
        }
        IntervalsBlock& block = blocks.back();
        if (depth == depth_ + 1 && tag.name == "intvl") {
            if (block.rows++ % kLandmark == 0) block.landmarks.push_back({block.rows, tag.begin});
            return;
        }
        if (!tag.hasAttributes && !tag.isEmpty) note(block, tag);
    }

    void close(std::size_t begin, std::size_t end, std::size_t depth) override {
        if (!isWithin_ || depth != depth_) return;
        isWithin_ = false;
        blocks.back().element.contentEnd = begin;
        blocks.back().element.end = end;
    }

    void verbatim(std::size_t, std::size_t) override {
        if (isWithin_) blocks.back().hasVerbatim = true;
    }

    std::deque<IntervalsBlock> blocks;

private:
    static void note(IntervalsBlock& block, const XmlTag& tag) {
        const char first = tag.name[0]; // most elements of rows can be sorted out by their first letter
        if (first == 'd' || first == 'p' || (first == 'f' && tag.name != "fdt") ||
            (first == 'l' && tag.name != "lcn")) {
            return;
        }
        for (std::size_t i = 0; i < kLogTexts.size(); ++i) {
            if (kLogTexts[i] == tag.name && block.firstText(i) == 0) block.firstTexts.emplace_back(i, tag.begin);
        }
    }

    const XmlDocument& document_;
    bool isWithin_ = false;
    std::size_t depth_ = 0;
};

} // namespace

std::shared_ptr<XmlDocument> XmlDocument::checked(XmlBytes bytes, std::string& reason, std::size_t partSize) {
    auto document = std::make_shared<XmlDocument>();
    document->bytes_ = std::move(bytes);
    BlockFinder finder(*document);
    if (const auto error = checkXml(document->text(), document->bytes_.isUtf8, finder, partSize)) {
        reason = error->Reason;
        return nullptr;
    }
    document->blocks_ = std::move(finder.blocks);
    document->ends_ = std::vector<std::atomic<std::uint32_t>>(document->text().size() / kPiece + 1);
    return document;
}

std::shared_ptr<XmlDocument> XmlDocument::load(std::shared_ptr<FileBytes> file, std::string& reason) {
    XmlBytes bytes;
    if (const auto error = loadXml(std::move(file), bytes)) {
        reason = error->Reason;
        return nullptr;
    }
    return checked(std::move(bytes), reason, kXmlPart);
}

std::shared_ptr<XmlDocument> XmlDocument::fromText(std::string_view text, std::string& reason, std::size_t partSize) {
    XmlBytes bytes;
    bytes.file = std::make_shared<FileBytes>(text.size());
    std::ranges::copy(text, bytes.file->data());
    return checked(std::move(bytes), reason, partSize);
}

void XmlDocument::hold(std::size_t from, std::size_t to) const {
    for (const std::size_t end : {from, to})
        ++ends_[end / kPiece];
}

void XmlDocument::release(std::size_t from, std::size_t to) const {
    bytes_.file->release(bytes_.begin + from, bytes_.begin + to);
    for (const std::size_t end : {from, to}) {
        const std::size_t piece = end / kPiece;
        if (--ends_[piece] != 0) continue;
        const std::size_t behind = std::min((piece + 1) * kPiece, text().size());
        bytes_.file->release(bytes_.begin + piece * kPiece, bytes_.begin + behind);
    }
}

std::string XmlDocument::serialised(std::size_t begin, std::size_t end) const {
    chargeText(begin, end);
    return xmlSerialise(bytes_, begin, end);
}

std::string XmlDocument::decoded(const XmlElement& content) const {
    chargeText(content.contentBegin, content.contentEnd);
    return xmlDecode(bytes_, text().substr(content.contentBegin, content.contentEnd - content.contentBegin));
}

std::string XmlDocument::attribute(const XmlElement& element, std::string_view name) const {
    chargeText(element.begin, element.contentBegin);
    return xmlAttribute(bytes_, element, name).value_or(std::string());
}

XmlElement XmlDocument::whole() const {
    return {0, 0, text().size(), text().size()};
}

const IntervalsBlock* XmlDocument::blockAt(std::size_t begin) const {
    const auto block = std::lower_bound(blocks_.begin(), blocks_.end(), begin,
                                        [](const IntervalsBlock& b, std::size_t at) { return b.element.begin < at; });
    return block != blocks_.end() && block->element.begin == begin ? &*block : nullptr;
}

std::vector<XmlElement> XmlDocument::children(const XmlElement& parent, std::string_view name,
                                              std::size_t atMost) const {
    std::vector<XmlElement> found;
    XmlCursor cursor(text(), parent.contentBegin, parent.contentEnd);
    std::size_t depth = 0;
    bool isWanted = false;
    for (auto kind = cursor.next(); kind != XmlCursor::Kind::End; kind = cursor.next()) {
        const XmlTag& tag = cursor.tag();
        if (kind == XmlCursor::Kind::Close) {
            if (--depth == 0 && isWanted) {
                found.back().contentEnd = tag.begin;
                found.back().end = tag.end;
                if (found.size() == atMost) break;
            }
            continue;
        }
        if (kind != XmlCursor::Kind::Open) continue;
        if (depth == 0) {
            isWanted = tag.name == name;
            if (isWanted) {
                // A list with one entry is short-lived, so it is not charged.
                if (!found.empty()) charge(kGrowth * sizeof(XmlElement));
                found.push_back({tag.begin, tag.end, tag.end, tag.end});
            }
        }
        if (tag.isEmpty) {
            if (depth == 0 && found.size() == atMost) break;
            continue;
        }
        ++depth;
        if (const IntervalsBlock* block = tag.name == "intvls" ? blockAt(tag.begin) : nullptr) {
            cursor.jump(block->element.contentEnd);
        }
    }
    return found;
}

std::optional<XmlElement> XmlDocument::child(const XmlElement& parent, std::string_view name) const {
    const auto found = children(parent, name, 1);
    return found.empty() ? std::nullopt : std::optional(found.front());
}

namespace {

// The state of one pass of firstTexts.
class TextSearch {
public:
    TextSearch(std::string_view text, std::span<const std::string_view> names) :
        found(names.size()), text_(text), names_(names), state_(names.size(), State::Unseen) {}

    enum class State { Unseen, Opened, Closed };

    void opened(std::string_view name, std::size_t begin, std::size_t end) {
        for (std::size_t i = 0; i < names_.size(); ++i) {
            if (state_[i] != State::Unseen || names_[i] != name) continue;
            state_[i] = State::Opened;
            found[i] = XmlElement{begin, end, end, end};
        }
    }

    void closed(std::string_view name, std::size_t begin, std::size_t end) {
        for (std::size_t i = 0; i < names_.size(); ++i) {
            if (state_[i] != State::Opened || names_[i] != name) continue;
            state_[i] = State::Closed;
            found[i]->contentEnd = begin;
            found[i]->end = end;
            ++closedCount_;
        }
    }

    // In comments, CDATA sections and processing instructions only tags in their plainest form count: "<name>" and
    // "</name>".
    void verbatim(std::size_t begin, std::size_t end) {
        for (std::size_t at = text_.find('<', begin + 1); at < end; at = text_.find('<', at + 1)) {
            const bool isClose = text_[at + 1] == '/';
            const std::size_t name = at + (isClose ? 2 : 1);
            std::size_t behind = name;
            while (xml::is(text_[behind], xml::kName))
                ++behind;
            if (text_[behind] != '>') continue;
            const std::string_view word = text_.substr(name, behind - name);
            if (isClose) {
                closed(word, at, behind + 1);
            } else {
                opened(word, at, behind + 1);
            }
        }
    }

    bool isDone() const { return closedCount_ == names_.size(); }

    bool isWaiting() const { return std::find(state_.begin(), state_.end(), State::Opened) != state_.end(); }

    bool isUnseen(std::size_t i) const { return state_[i] == State::Unseen; }

    std::vector<std::optional<XmlElement>> found;

private:
    std::string_view text_;
    std::span<const std::string_view> names_;
    std::vector<State> state_;
    std::size_t closedCount_ = 0;
};

// Whether the search can skip the rows of a block. It can when every name that it still seeks is one of kLogTexts, for
// which the block records where it first occurs. A name that occurs in the block is taken from there.
bool settledWithout(const IntervalsBlock& block, std::string_view text, std::span<const std::string_view> names,
                    TextSearch& search) {
    if (block.hasVerbatim || search.isWaiting()) return false;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (search.isUnseen(i) && std::find(kLogTexts.begin(), kLogTexts.end(), names[i]) == kLogTexts.end())
            return false;
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!search.isUnseen(i)) continue;
        const auto known = std::find(kLogTexts.begin(), kLogTexts.end(), names[i]) - kLogTexts.begin();
        const std::size_t at = block.firstText(static_cast<std::size_t>(known));
        if (at == 0) continue;
        XmlCursor cursor(text, at, block.element.contentEnd);
        cursor.next();
        search.opened(names[i], cursor.tag().begin, cursor.tag().end);
        while (cursor.next() != XmlCursor::Kind::Close || cursor.tag().name != names[i]) {
        }
        search.closed(names[i], cursor.tag().begin, cursor.tag().end);
    }
    return true;
}

} // namespace

std::vector<std::optional<XmlElement>> XmlDocument::firstTexts(const XmlElement& element,
                                                               std::span<const std::string_view> names) const {
    TextSearch search(text(), names);
    XmlCursor cursor(text(), element.contentBegin, element.contentEnd);
    for (auto kind = cursor.next(); kind != XmlCursor::Kind::End && !search.isDone(); kind = cursor.next()) {
        const XmlTag& tag = cursor.tag();
        if (kind == XmlCursor::Kind::Verbatim) {
            search.verbatim(tag.begin, tag.end);
        } else if (kind == XmlCursor::Kind::Close) {
            search.closed(tag.name, tag.begin, tag.end);
        } else if (!tag.hasAttributes && !tag.isEmpty) {
            search.opened(tag.name, tag.begin, tag.end);
        }
        if (kind != XmlCursor::Kind::Open || tag.name != "intvls" || tag.isEmpty) continue;
        const IntervalsBlock* block = blockAt(tag.begin);
        if (block != nullptr && settledWithout(*block, text(), names, search)) cursor.jump(block->element.contentEnd);
    }
    for (auto& text : search.found) {
        if (text && text->end == text->contentBegin) text.reset(); // it was opened and never closed
    }
    return std::move(search.found);
}

} // namespace kestrane
