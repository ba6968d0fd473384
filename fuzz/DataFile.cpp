// Any bytes as a data file: opened, its rows loaded, recalculated and written. What was written must read back, and be
// written the same from then on. Where the strict check accepts a text, pugixml must see the same document in it.
#include "Target.h"
#include "app/Documents.h"
#include "calc/Recalculation.h"
#include "files/Loaders.h"
#include "files/XmlDocument.h"
#include "files/XmlWriter.h"
#include "platform/RuntimeError.h"
#include "platform/Xml.h"
#include "server/KestraneThread.h"
#include "server/LogLoading.h"

#include <expat.h>
#include <pugixml.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

namespace kestrane::fuzz {

namespace {

constexpr std::size_t kSmallPart = 16; // bytes that are read ahead

// A file in memory with a name that can be opened.
class MemoryFile {
public:
    explicit MemoryFile(std::string_view content) : handle_(memfd_create("fuzz", MFD_CLOEXEC)) {
        require(handle_ >= 0 && write(handle_, content.data(), content.size()) == static_cast<ssize_t>(content.size()),
                "a file in memory can be made");
    }

    ~MemoryFile() { close(handle_); }

    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string name() const { return "/proc/self/fd/" + std::to_string(handle_); }

private:
    int handle_;
};

// A program without windows, kept between inputs since its threads take time to start.
class Program {
public:
    Program() : server_(pump_), session("Ordwyn Acoustics", Locale(), settings_, messages_, pump_, clock_) {
        session.server = &server_;
    }

    // Opens a document as the program does, and recalculates all of it.
    void work(const std::string& content) {
        session.OpenFiles.clear();
        messages_.Boxes.clear();
        const MemoryFile file(content);
        if (!OpenFile(session, file.name(), OpenSource::Named, true)) {
            require(!messages_.Boxes.empty() && !messages_.Boxes.back().Prompt.empty(), "a refusal says why");
            return;
        }
        finishWork();
        forEachLog(session, [](clsLog& log) {
            try {
                RecalcValues(log, kCalcFull);
            } catch (const RuntimeError&) { // figures past their types
            }
        });
        finishWork();
        DocumentText(*session.OpenFiles.front(), true);
    }

    // The text of a document as it was read, with its rows; nothing when it is refused.
    std::optional<std::string> rewritten(const std::string& content) {
        session.OpenFiles.clear();
        const MemoryFile file(content);
        auto document = std::make_unique<clsFile>(session, file.name());
        std::string message;
        if (!LoadDocument(*document, message)) return std::nullopt;
        session.OpenFiles.push_back(std::move(document));
        LoadWaitingIntervals(session);
        finishWork();
        return DocumentText(*session.OpenFiles.front(), true);
    }

private:
    void finishWork() {
        pump_.runUntil([&] { return noLogIsBusy(session); });
    }

    MemorySettings settings_;
    ScriptedMessages messages_;
    HeadlessEventPump pump_;
    SystemClock clock_;
    BackgroundServer server_;

public:
    Session session;
};

struct NoObserver : XmlObserver {
    void open(const XmlTag&, std::size_t) override {}

    void close(std::size_t, std::size_t, std::size_t) override {}

    void verbatim(std::size_t, std::size_t) override {}
};

// The next node of a tree in document order; null behind the last.
pugi::xml_node following(pugi::xml_node node) {
    if (node.first_child()) return node.first_child();
    while (node && !node.next_sibling())
        node = node.parent();
    return node.next_sibling();
}

void compareElement(const XmlBytes& bytes, const XmlTag& tag, const pugi::xml_node& node) {
    require(tag.name == node.name(), "pugixml reads the same names");
    require(tag.hasAttributes == !node.first_attribute().empty(), "pugixml finds attributes where there are any");
    const XmlElement element{tag.begin, tag.end, tag.end, tag.end};
    for (const pugi::xml_attribute& attribute : node.attributes()) {
        require(xmlAttribute(bytes, element, attribute.name()) == attribute.value(),
                "pugixml reads the same attributes");
    }
}

// What expat says of a text; the place of the error where it refuses it.
struct Verdict {
    bool isAccepted = true;
    bool hasDocumentType = false;
    std::size_t place = 0;
};

Verdict verdictOfExpat(std::string_view text) {
    Verdict verdict;
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(XML_ParserCreate("UTF-8"),
                                                                              XML_ParserFree);
    XML_SetUserData(parser.get(), &verdict);
    XML_SetStartDoctypeDeclHandler(parser.get(), [](void* user, const char*, const char*, const char*, int) {
        static_cast<Verdict*>(user)->hasDocumentType = true;
    });
    verdict.isAccepted = XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), 1) == XML_STATUS_OK;
    if (!verdict.isAccepted) verdict.place = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser.get()));
    return verdict;
}

// The check refuses every document type, and lets two things through: any character above U+007F in a name, and any
// word as the version.
void compareWithExpat(std::string_view text, bool isAccepted) {
    const Verdict verdict = verdictOfExpat(text);
    if (verdict.isAccepted == isAccepted || verdict.hasDocumentType) return;
    require(isAccepted, "expat refuses what the strict check refuses");
    const auto isForeign = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    const std::string_view rest = text.substr(std::min(verdict.place, text.size()));
    require(std::any_of(rest.begin(), rest.end(), isForeign), "expat accepts what the strict check accepts");
}

void compareWithTree(const std::string& content) {
    const MemoryFile file(content);
    XmlBytes bytes;
    NoObserver observer;
    if (loadXml(readFile(file.name()), bytes) || !bytes.isUtf8) return;
    const std::optional<XmlError> error = checkXml(bytes.text(), true, observer);
    const bool isAccepted = !error;
    std::string reason;
    XmlDocument::fromText(bytes.text(), reason, kSmallPart);
    require(reason == (error ? error->Reason : ""), "a document that is read ahead has the same fault");
    compareWithExpat(bytes.text(), isAccepted);
    if (!isAccepted) return;
    pugi::xml_document tree;
    require(tree.load_buffer(bytes.text().data(), bytes.text().size(), pugi::parse_default, pugi::encoding_utf8),
            "pugixml accepts what the strict check accepts");
    XmlCursor cursor(bytes.text(), 0, bytes.text().size());
    pugi::xml_node node = tree;
    for (auto kind = cursor.next(); kind != XmlCursor::Kind::End; kind = cursor.next()) {
        if (kind != XmlCursor::Kind::Open) continue;
        do
            node = following(node);
        while (node && node.type() != pugi::node_element);
        compareElement(bytes, cursor.tag(), node);
    }
    const std::string serialised = xmlSerialise(bytes, 0, bytes.text().size());
    require(!checkXml(serialised, true, observer), "the serialised form is well formed");
}

} // namespace

} // namespace kestrane::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kestrane;
    using namespace kestrane::fuzz;
    static Program program;
    const std::string content(reinterpret_cast<const char*>(data), size);
    compareWithTree(content);
    program.work(content);
    const auto first = program.rewritten(content);
    if (!first) return 0;
    const auto second = program.rewritten(*first);
    require(second.has_value(), "what was written opens");
    require(program.rewritten(*second) == second, "what was read back is written the same");
    return 0;
}
