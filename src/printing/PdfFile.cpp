#include "printing/PdfFile.h"

#include "platform/AtomicFile.h"
#include "platform/Calendar.h"
#include "platform/Format.h"
#include "platform/OutOfMemory.h"
#include "platform/RuntimeError.h"
#include "printing/QtPage.h"

#include <QCryptographicHash>
#include <QHash>
#include <QIODevice>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>
#include <cerrno>
#include <exception>

namespace kestrane {

namespace {

constexpr std::size_t kTail = 1024;       // bytes at the end of the file, which contain the trailer
constexpr std::size_t kHead = 256 * 1024; // bytes at its beginning, which contain the catalogue

struct Cancelled {};

// What a file says of itself. The same document at the same time of day has the same bytes.
struct Origin {
    std::string Title, Author, Program, Language;
    CalendarTime Time; // local

    std::string date() const { return formatDate(Time, "yyyymmddhhnnss"); }

    std::string identity() const { // 32 hexadecimal digits
        const std::string words = Title + "\n" + Author + "\n" + Program + "\n" + Language + "\n" + date();
        return QCryptographicHash::hash(QByteArray::fromStdString(words), QCryptographicHash::Md5)
            .toHex()
            .toStdString();
    }
};

// Passes on what the toolkit writes, with the given time and identity in place of the computer's time and a random
// number, and keeps an error until the toolkit has finished.
class SinkDevice : public QIODevice {
public:
    SinkDevice(const FileSink& sink, const Origin& origin) :
        sink_(sink), date_(origin.date()), identity_(origin.identity()) {
        open(WriteOnly);
    }

    bool isSequential() const override { return true; }

    bool hasFailed() const { return error_ != nullptr; }

    void raiseError() const {
        if (error_) std::rethrow_exception(error_);
    }

    std::size_t written() const { return written_; }

    const std::string& head() const { return head_; }

    const std::string& tail() const { return tail_; }

protected:
    qint64 readData(char*, qint64) override { return -1; }

    qint64 writeData(const char* data, qint64 size) override {
        if (error_) return -1;
        std::string bytes(data, static_cast<std::size_t>(size));
        put(bytes, "/CreationDate (D:", date_);
        put(bytes, "/ID [ <", identity_ + "> <" + identity_);
        try {
            sink_(bytes);
        } catch (...) {
            error_ = std::current_exception();
            return -1;
        }
        written_ += bytes.size();
        if (head_.size() < kHead) head_ += bytes.substr(0, kHead - head_.size());
        tail_ += bytes.substr(bytes.size() - std::min(bytes.size(), kTail));
        if (tail_.size() > kTail) tail_.erase(0, tail_.size() - kTail);
        return size;
    }

private:
    static void put(std::string& bytes, std::string_view behind, const std::string& text) {
        const std::size_t at = bytes.find(behind);
        if (at != std::string::npos && at + behind.size() + text.size() <= bytes.size())
            bytes.replace(at + behind.size(), text.size(), text);
    }

    const FileSink& sink_;
    const std::string date_, identity_;
    std::exception_ptr error_;
    std::size_t written_ = 0;
    std::string head_, tail_;
};

// A text in PDF's notation: UTF-16, high byte first, as hexadecimal digits.
std::string pdfText(const std::string& text) {
    std::string digits = "<FEFF";
    constexpr const char* kDigits = "0123456789ABCDEF";
    for (const QChar c : QString::fromStdString(text)) {
        for (int shift = 12; shift >= 0; shift -= 4)
            digits += kDigits[c.unicode() >> shift & 0xF];
    }
    return digits + ">";
}

// The reference or number behind a word in the trailer; empty when the word is not there.
std::string trailerEntry(const std::string& trailer, const std::string& word) {
    const std::size_t at = trailer.rfind(word);
    if (at == std::string::npos) return {};
    const std::size_t begin = trailer.find_first_not_of(" \n", at + word.size());
    const std::size_t end = trailer.find_first_of("/\n>", begin);
    return begin == std::string::npos || end == std::string::npos ? std::string() : trailer.substr(begin, end - begin);
}

std::string tenDigits(std::size_t number) {
    const std::string digits = std::to_string(number);
    return std::string(10 - std::min<std::size_t>(digits.size(), 10), '0') + digits;
}

// An object of the file's beginning, without its closing brackets. Empty when it is not there.
std::string openObject(const std::string& head, const std::string& number) {
    const std::size_t at = head.find("\n" + number + " 0 obj\n");
    const std::size_t end = head.find(">>\nendobj", at);
    return at == std::string::npos || end == std::string::npos ? std::string() : head.substr(at + 1, end - at - 1);
}

// What the toolkit does not write, an author and the language, in an update at the end of the file, as the PDF format
// allows: its information and its catalogue are written again.
std::string update(const SinkDevice& file, const Origin& origin) {
    const std::string& end = file.tail();
    const std::string root = trailerEntry(end, "/Root ");
    const std::string info = trailerEntry(end, "/Info ");
    const std::string size = trailerEntry(end, "/Size ");
    const std::string before = trailerEntry(end + "\n", "startxref");
    const std::string infoNumber = info.substr(0, info.find(' '));
    const std::string rootNumber = root.substr(0, root.find(' '));
    const std::string catalogue = openObject(file.head(), rootNumber);
    if (infoNumber.empty() || size.empty() || before.empty() || catalogue.empty()) return {};
    const std::string program = pdfText(origin.Program);
    std::string text = "\n";
    const std::size_t infoAt = file.written() + text.size();
    text += infoNumber + " 0 obj\n<<\n/Title " + pdfText(origin.Title) + "\n/Author " + pdfText(origin.Author) +
            "\n/Creator " + program + "\n/Producer " + program + "\n/CreationDate (D:" + origin.date() +
            ")\n/ModDate (D:" + origin.date() + ")\n>>\nendobj\n";
    const std::size_t rootAt = file.written() + text.size();
    text += catalogue + "/Lang (" + origin.Language + ")\n>>\nendobj\n";
    const std::size_t tableAt = file.written() + text.size();
    text += "xref\n" + infoNumber + " 1\n" + tenDigits(infoAt) + " 00000 n \n" + rootNumber + " 1\n" +
            tenDigits(rootAt) + " 00000 n \n";
    return text + "trailer\n<<\n/Size " + size + "\n/Info " + info + "\n/Root " + root + "\n/ID [ <" +
           origin.identity() + "> <" + origin.identity() + "> ]\n/Prev " + before + "\n>>\nstartxref\n" +
           std::to_string(tableAt) + "\n%%EOF\n";
}

// The same in the form that archives read, with the mark of PDF/A-1b (ISO 19005-1).
QByteArray metadata(const Origin& origin) {
    const auto escaped = [](const std::string& text) { return QString::fromStdString(text).toHtmlEscaped(); };
    const QString time =
        QString::fromStdString(formatDate(origin.Time, "yyyy-mm-dd") + "T" + formatDate(origin.Time, "hh:nn:ss"));
    return QString(R"(<?xpacket begin='' id='W5M0MpCehiHzreSzNTczkc9d'?>
<x:xmpmeta xmlns:x="adobe:ns:meta/">
 <rdf:RDF xmlns:rdf="http://www.w3.org/1999/02/22-rdf-syntax-ns#">
  <rdf:Description rdf:about="" xmlns:dc="http://purl.org/dc/elements/1.1/">
   <dc:title><rdf:Alt><rdf:li xml:lang="x-default">%1</rdf:li></rdf:Alt></dc:title>
   <dc:creator><rdf:Seq><rdf:li>%2</rdf:li></rdf:Seq></dc:creator>
  </rdf:Description>
  <rdf:Description rdf:about="" xmlns:xmp="http://ns.adobe.com/xap/1.0/" xmp:CreatorTool="%3" xmp:CreateDate="%4" xmp:ModifyDate="%4"/>
  <rdf:Description rdf:about="" xmlns:pdf="http://ns.adobe.com/pdf/1.3/" pdf:Producer="%3"/>
  <rdf:Description rdf:about="" xmlns:pdfaid="http://www.aiim.org/pdfa/ns/id/" pdfaid:part="1" pdfaid:conformance="B"/>
 </rdf:RDF>
</x:xmpmeta>
<?xpacket end='w'?>
)")
        .arg(escaped(origin.Title), escaped(origin.Author), escaped(origin.Program), time)
        .toUtf8();
}

// As files name a language. The English is that of Britain.
std::string languageOf(const Session& session, const PagedDocument& document) {
    const std::string code = document.Language();
    const std::string language(code.empty() ? session.texts.Shown().Code : code);
    return language == "en" ? "en-GB" : language;
}

// The toolkit writes the fonts of a file in the order of a hash table, which is another one each time unless it is
// told.
struct SameOrder {
    SameOrder() { QHashSeed::setDeterministicGlobalSeed(); }

    ~SameOrder() { QHashSeed::resetRandomGlobalSeed(); }

    SameOrder(const SameOrder&) = delete;
    SameOrder& operator=(const SameOrder&) = delete;
};

void writeDocument(const Session& session, PagedDocument& document, const Paper& paper, const FileSink& sink,
                   const PageProgress& progress) {
    const Origin origin{document.Title(),
                        session.Options.CompanyName.empty() ? session.brand.CompanyName : session.Options.CompanyName,
                        session.LoadText(Text::ProgramAndVersion), languageOf(session, document), session.clock.now()};
    const SameOrder order;
    SinkDevice file(sink, origin);
    bool isWhole = false;
    {
        QPdfWriter pdf(&file);
        pdf.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
        pdf.setDocumentXmpMetadata(metadata(origin));
        pdf.setResolution(static_cast<int>(kPaperDots));
        pdf.setPageLayout(paper.layout());
        QPainter painter;
        if (!painter.begin(&pdf)) raiseSystemError(EIO);
        QtPage page(paper, session.locale, painter, 1, [&] { pdf.newPage(); });
        isWhole = drawPages(document, page, [&](std::size_t drawn, std::size_t pages) {
            return !file.hasFailed() && (!progress || progress(drawn, pages));
        });
    }
    file.raiseError();
    if (!isWhole) throw Cancelled();
    sink(update(file, origin));
}

} // namespace

bool writePdf(const Session& session, PagedDocument& document, const Paper& paper, const std::string& path,
              const PageProgress& progress) {
    try {
        refusingWithoutMemory([&] {
            writeFileAtomically(path,
                                [&](const FileSink& sink) { writeDocument(session, document, paper, sink, progress); });
        });
        return true;
    } catch (const Cancelled&) {
        return false;
    }
}

} // namespace kestrane
