// Prints the help pages as the manual that a brand opens: title page, contents, numbered pages. The same input gives
// the same bytes.
#include "resources/basSoftwareByFirm.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHashFunctions>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <QUrl>

#include <cstdlib>
#include <iostream>
#include <vector>

namespace {

constexpr int kResolution = 1200;
constexpr double kMargin = 20;     // millimetres
constexpr double kFooter = 12;     // millimetres of each page's room
constexpr double kLastStart = 0.9; // of a page's height: a heading that would begin below goes to the next page
constexpr int kPagesBefore = 2;    // title page and contents
constexpr int kRowsOfContents = 40;

constexpr auto kFamily = "Liberation Sans";
const QColor kInk(0x1d, 0x27, 0x33);
const QColor kQuiet(0x5a, 0x68, 0x78);
const QColor kAccent(0x0b, 0x6a, 0x8f);

constexpr auto kStyle = R"(
body { font-size: 10pt; line-height: 130%; color: #1d2733; }
h1 { font-size: 22pt; margin-top: 0px; margin-bottom: 8px; }
h2 { font-size: 15pt; margin-top: 26px; margin-bottom: 6px; color: #0b6a8f; }
h3 { font-size: 11pt; margin-top: 14px; margin-bottom: 2px; }
.picture { line-height: 100%; }
a { color: #0b6a8f; text-decoration: none; }
.lead { font-size: 11pt; color: #5a6878; }
.formula { font-family: "Liberation Serif"; font-size: 11pt; background-color: #f3f6f9; margin-left: 12px; }
table { border-collapse: collapse; margin-top: 6px; margin-bottom: 10px; }
th { color: #5a6878; text-align: left; }
th, td { border-bottom: 1px solid #d5dde5; padding: 3px 10px 3px 2px; }
kbd, code, pre { font-family: "DejaVu Sans Mono"; font-size: 8.5pt; }
pre { background-color: #f3f6f9; margin-left: 12px; }
)";

struct Chapter {
    QString title;
    int page; // from 0
};

QFont fontOf(double points, bool isBold = false) {
    QFont font(kFamily);
    font.setPointSizeF(points);
    font.setBold(isBold);
    return font;
}

// What stands between the tags of main, without the list of contents.
QString bodyOf(const QString& name) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read " + name.toStdString());
    const QString page = QString::fromUtf8(file.readAll());
    static const QRegularExpression kMain("<main>(.*)</main>", QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression kNav("<nav>.*?</nav>", QRegularExpression::DotMatchesEverythingOption);
    return kMain.match(page).captured(1).remove(kNav);
}

class Manual {
public:
    Manual(QString title, QString version, const QStringList& pages) :
        title_(std::move(title)), version_(std::move(version)), writer_(&buffer_) {
        buffer_.open(QIODevice::WriteOnly);
        writer_.setResolution(kResolution);
        writer_.setPageSize(QPageSize(QPageSize::A4));
        writer_.setPageMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter);
        writer_.setTitle(title_);
        writer_.setCreator({});
        QString html;
        for (const QString& page : pages)
            html += bodyOf(page);
        document_.documentLayout()->setPaintDevice(&writer_);
        document_.setDocumentMargin(0);
        document_.setDefaultFont(fontOf(10));
        document_.setDefaultStyleSheet(kStyle);
        document_.setBaseUrl(QUrl::fromLocalFile(QFileInfo(pages.front()).absoluteFilePath()));
        document_.setHtml("<body>" + html + "</body>");
        document_.setPageSize(QSizeF(writer_.width(), writer_.height() - millimetres(kFooter)));
        placeBlocks();
        noteChapters();
    }

    QByteArray print() {
        QPainter painter(&writer_);
        painter.setRenderHint(QPainter::LosslessImageRendering);
        printTitle(painter);
        printContents(painter);
        for (int page = 0; page < document_.pageCount(); ++page) {
            writer_.newPage();
            printPage(painter, page);
        }
        painter.end();
        return withoutDate(buffer_.data());
    }

private:
    static int millimetres(double length) { return static_cast<int>(length / 25.4 * kResolution); }

    double topOf(const QTextBlock& block) const {
        return document_.documentLayout()->blockBoundingRect(block).top() +
               block.blockFormat().topMargin() * kResolution / 96;
    }

    int pageOf(double y) const { return static_cast<int>(y / document_.pageSize().height()); }

    // A document begins a page. A heading at the foot of one, and a table that would be torn, go to the next with the
    // headings above them.
    void placeBlocks() {
        for (QTextBlock block = document_.begin(); block.isValid(); block = block.next()) {
            const int level = block.blockFormat().headingLevel();
            if (!(level == 1 && block != document_.begin()) && !(level > 0 && startsLate(block)) && !startsTorn(block))
                continue;
            QTextBlock first = block;
            while (first.previous().blockFormat().headingLevel() > 0)
                first = first.previous();
            if (QTextTable* const table = QTextCursor(first).currentTable(); table != nullptr) {
                QTextTableFormat format = table->format();
                format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
                table->setFormat(format);
            } else {
                QTextBlockFormat format = first.blockFormat();
                format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
                QTextCursor(first).setBlockFormat(format);
            }
            document_.markContentsDirty(0, document_.characterCount()); // else what follows keeps its places
        }
    }

    bool startsLate(const QTextBlock& heading) const {
        const double top = topOf(heading);
        return top / document_.pageSize().height() - pageOf(top) > kLastStart;
    }

    bool startsTorn(const QTextBlock& block) const {
        QTextTable* const table = QTextCursor(block).currentTable();
        if (table == nullptr || table->firstPosition() != block.position()) return false;
        const QRectF place = document_.documentLayout()->frameBoundingRect(table);
        return pageOf(place.top()) != pageOf(place.bottom());
    }

    void noteChapters() {
        for (QTextBlock block = document_.begin(); block.isValid(); block = block.next())
            if (block.blockFormat().headingLevel() == 1) chapters_.push_back({block.text(), pageOf(topOf(block))});
    }

    void printTitle(QPainter& painter) const {
        const int width = writer_.width();
        painter.fillRect(0, millimetres(70), millimetres(24), millimetres(1.6), kAccent);
        painter.setPen(kInk);
        painter.setFont(fontOf(40, true));
        painter.drawText(QRect(0, millimetres(78), width, millimetres(20)), Qt::AlignLeft | Qt::AlignVCenter, title_);
        painter.setPen(kQuiet);
        painter.setFont(fontOf(16));
        painter.drawText(QRect(0, millimetres(99), width, millimetres(10)), Qt::AlignLeft | Qt::AlignVCenter,
                         "Manual, version " + version_);
    }

    void printContents(QPainter& painter) {
        writer_.newPage();
        painter.setPen(kInk);
        painter.setFont(fontOf(22, true));
        const int row = (writer_.height() - millimetres(kFooter)) / kRowsOfContents;
        painter.drawText(QRect(0, 0, writer_.width(), 2 * row), Qt::AlignLeft | Qt::AlignVCenter, "Contents");
        int top = 2 * row;
        painter.setFont(fontOf(11));
        for (const Chapter& chapter : chapters_) {
            const QRect line(0, top, writer_.width(), row);
            painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, chapter.title);
            painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, QString::number(chapter.page + 1 + kPagesBefore));
            top += row;
        }
        printFooter(painter, kPagesBefore);
    }

    void printPage(QPainter& painter, int page) const {
        const QRectF view(QPointF(0, page * document_.pageSize().height()), document_.pageSize());
        painter.save();
        painter.translate(0, -view.top());
        painter.setClipRect(view);
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = view;
        context.palette.setColor(QPalette::Text, kInk);
        document_.documentLayout()->draw(&painter, context);
        painter.restore();
        printFooter(painter, page + 1 + kPagesBefore);
    }

    void printFooter(QPainter& painter, int number) const {
        const QRect line(0, writer_.height() - millimetres(5), writer_.width(), millimetres(5));
        painter.setPen(kQuiet);
        painter.setFont(fontOf(8.5));
        painter.drawText(line, Qt::AlignLeft | Qt::AlignBottom, title_ + " " + version_);
        painter.drawText(line, Qt::AlignRight | Qt::AlignBottom, QString::number(number));
    }

    // The time of printing, which takes the same room whatever it is.
    static QByteArray withoutDate(QByteArray pdf) {
        constexpr QByteArrayView kKey = "/CreationDate (D:";
        constexpr auto kNoTime = "20000101000000";
        if (const qsizetype at = pdf.indexOf(kKey); at >= 0) pdf.replace(at + kKey.size(), 14, kNoTime);
        return pdf;
    }

    QString title_, version_;
    QBuffer buffer_;
    QPdfWriter writer_;
    QTextDocument document_;
    std::vector<Chapter> chapters_;
};

} // namespace

int main(int argc, char** argv) {
    QHashSeed::setDeterministicGlobalSeed(); // fonts are numbered in the order of a hash table
    qputenv("TZ", "UTC");                    // the file names the time zone, so its length would depend on it
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 5) {
        std::cerr << "usage: kestrane-manual COMPANY VERSION FOLDER PAGE.html...\n";
        return EXIT_FAILURE;
    }
    try {
        const kestrane::Brand brand = kestrane::LoadSoftwareByFirm(arguments[1].toStdString());
        Manual manual(QString::fromStdString(brand.ProductTitle), arguments[2], arguments.mid(4));
        QSaveFile file(arguments[3] + '/' + QString::fromStdString(brand.ManualFile));
        const QByteArray pdf = manual.print();
        if (!file.open(QIODevice::WriteOnly) || file.write(pdf) != pdf.size() || !file.commit())
            throw std::runtime_error("cannot write " + file.fileName().toStdString());
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
