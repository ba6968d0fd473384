#include "OutputOf.h"
#include "platform/RuntimeError.h"
#include "platform/TemporaryFolder.h"
#include "printing/Logo.h"
#include "printing/Mill.h"
#include "printing/Printer.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace kestrane {
namespace {

void expectAll(const std::string& text, std::initializer_list<const char*> words) {
    for (const char* word : words)
        EXPECT_NE(text.find(word), std::string::npos) << word << " in\n" << text;
}

TEST(PdfFile, HoldsTextFontsAndDrawings) {
    const TemporaryFolder folder;
    Mill mill;
    const std::string file = folder.file("a.pdf");
    ASSERT_TRUE(mill.write(file));
    const std::string text = outputOf("pdftotext", {"-layout", QString::fromStdString(file), "-"});
    expectAll(text, {"R\xC3\xB8yk & Sons", "Mill \xC3\xA9tage 2 - Broadband Report", "Page 3 of 3",
                     "Interval: Monday 3 June 2024, 09:00", "Worn on the shoulder"});
    expectAll(text, {"09:17:00", "70.5 dB"});
    const QStringList fonts =
        QString::fromStdString(outputOf("pdffonts", {QString::fromStdString(file)})).split('\n', Qt::SkipEmptyParts);
    EXPECT_GT(fonts.size(), 2);
    for (const QString& font : fonts.mid(2))
        EXPECT_TRUE(font.simplified().contains(" yes ")) << font.toStdString(); // embedded
    EXPECT_EQ(QString::fromStdString(outputOf("pdfimages", {"-list", QString::fromStdString(file)})).count('\n'), 2);
    expectAll(outputOf("pdfinfo", {QString::fromStdString(file)}),
              {"Mill \xC3\xA9tage 2 - Broadband Report", "Author:          R\xC3\xB8yk & Sons", "Kestrane 0.1.0",
               "CreationDate:    ", "Pages:           3", "595 x 842"});
    EXPECT_EQ(outputOf("sh", {"-c", "pdfinfo '" + QString::fromStdString(file) + "' 2>&1 >/dev/null"}), "");
    mill.session.Options.CompanyName.clear();
    ASSERT_TRUE(mill.write(file, true));
    expectAll(outputOf("pdfinfo", {QString::fromStdString(file)}), {"Author:          Ordwyn Acoustics", "842 x 595"});
}

TEST(PdfFile, IsWholeOrTheOldOne) {
    const TemporaryFolder folder;
    Mill mill;
    const std::string file = folder.file("a.pdf");
    writeText(file, "old");
    EXPECT_FALSE(mill.write(file, false, [](std::size_t drawn, std::size_t) { return drawn < 2; }));
    EXPECT_EQ(readText(file), "old");
    EXPECT_THROW(mill.write(folder.file("missing/a.pdf")), RuntimeError);
    EXPECT_THROW(mill.write(folder.path()), RuntimeError);
    EXPECT_EQ(readText(file), "old");
    const auto files = std::filesystem::directory_iterator(folder.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST(Logo, IsAPictureOfAFileOrNone) {
    const TemporaryFolder folder;
    QImage(40, 10, QImage::Format_RGB32).save(QString::fromStdString(folder.file("flat.png")));
    QImage(9000, 3000, QImage::Format_Mono).save(QString::fromStdString(folder.file("large.png")));
    QImage(20000, 20000, QImage::Format_Mono).save(QString::fromStdString(folder.file("huge.png")));
    writeText(folder.file("cut.png"), readText(folder.file("flat.png")).substr(0, 40));
    writeText(folder.file("words.png"), "no picture");
    writeText(folder.file("empty.png"), "");
    writeText(folder.file("a.svg"),
              "<svg xmlns='http://www.w3.org/2000/svg' width='30' height='20'><path d='M0 0h9'/></svg>");
    writeText(folder.file("veil.svg"), "<svg xmlns='http://www.w3.org/2000/svg' width='30' height='20'>"
                                       "<rect width='30' height='20' fill='#000' fill-opacity='0.5'/></svg>");
    writeText(folder.file("bad.svg"), "<svg");

    struct Case {
        const char* name;
        double width; // in a box of 60 by 20; 0: no picture
    };

    for (const Case& c :
         {Case{"flat.png", 60}, Case{"large.png", 60}, Case{"a.svg", 30}, Case{"missing.png", 0}, Case{"huge.png", 0},
          Case{"cut.png", 0}, Case{"words.png", 0}, Case{"empty.png", 0}, Case{"bad.svg", 0}, Case{"", 0}}) {
        const Logo logo = Logo::ofFile(folder.file(c.name));
        EXPECT_EQ(logo.isPicture(), c.width > 0) << c.name;
        if (c.width == 0) continue;
        QImage page(100, 100, QImage::Format_RGB32);
        QPainter painter(&page);
        EXPECT_NEAR(logo.draw(painter, QRectF(0, 0, 60, 20)), c.width, 0.01) << c.name;
    }
    EXPECT_TRUE(Logo::ofBrand().isPicture());
    QImage layer(60, 20, QImage::Format_ARGB32);
    layer.fill(Qt::transparent);
    QPainter painter(&layer);
    Logo::ofFile(folder.file("veil.svg")).draw(painter, QRectF(0, 0, 60, 20));
    EXPECT_EQ(layer.pixelColor(20, 10).alpha(), 255) << "an archive's PDF holds nothing transparent";
    EXPECT_EQ(readText(folder.file("a.svg")).substr(0, 4), "<svg");
}

// A print dialog whose user prints to a file or cancels.
struct ChosenFile : Printers {
    std::string file;

    bool isAnyThere() override { return true; }

    bool choose(QPrinter& printer, QWidget*) override {
        if (file.empty()) return false;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(file));
        return true;
    }
};

TEST(Printing, FollowsThePrintDialog) {
    const TemporaryFolder folder;
    Mill mill;
    int laidOut = 0;
    const LayOut layOut = [&](const PageMetrics& paper) {
        ++laidOut;
        EXPECT_TRUE(paper.isLandscape());
        return mill.report(paper);
    };
    ChosenFile printers;
    printDocument(mill.session, printers, nullptr, true, layOut, {});
    EXPECT_EQ(laidOut, 0); // cancelled

    printers.file = folder.file("a.pdf");
    printDocument(mill.session, printers, nullptr, true, layOut, {});
    EXPECT_EQ(laidOut, 1);
    expectAll(readText(printers.file), {"%PDF-", "%%EOF"});
    EXPECT_TRUE(mill.messages.Boxes.empty());

    printers.file = folder.file("missing/a.pdf");
    printDocument(mill.session, printers, nullptr, true, layOut, {});
    ASSERT_EQ(mill.messages.Boxes.size(), 1U);
    EXPECT_EQ(mill.messages.Boxes[0].Prompt.substr(0, 3), "2: ");
}

} // namespace
} // namespace kestrane
