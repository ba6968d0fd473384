#include "platform/desktop/QtClipboard.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QUrl>

#include <gtest/gtest.h>

namespace kestrane {
namespace {

TEST(QtClipboard, ReadsLocalFilesInTheirOrderAndNothingElse) {
    QtClipboard clipboard;
    auto* const files = new QMimeData;
    files->setUrls({QUrl::fromLocalFile("/data/z b.xml"), QUrl("http://example.org/c.xml"),
                    QUrl::fromLocalFile("/data/Gr\u00fc\u00dfe.xml")});
    QGuiApplication::clipboard()->setMimeData(files);
    EXPECT_EQ(clipboard.GetClipboardFiles(), (std::vector<std::string>{"/data/z b.xml", "/data/Gr\u00fc\u00dfe.xml"}));
    QGuiApplication::clipboard()->setText("/data/a.xml");
    EXPECT_TRUE(clipboard.GetClipboardFiles().empty());
}

TEST(QtClipboard, OffersEveryFormAtOnceAndReplacesWhatWasThere) {
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    image.save(&buffer, "PNG");
    QtClipboard clipboard;
    clipboard.Set({"85.0\t\u2713\r\n", "<b>x</b>", png.toStdString(), "<svg/>"});
    const QClipboard& shown = *QGuiApplication::clipboard();
    EXPECT_EQ(shown.text(), QString("85.0\t\u2713\r\n"));
    EXPECT_EQ(shown.mimeData()->html(), "<b>x</b>");
    EXPECT_EQ(shown.image().size(), QSize(3, 2));
    EXPECT_EQ(shown.mimeData()->data("image/svg+xml"), "<svg/>");
    clipboard.Set({"plain", {}, {}, {}});
    EXPECT_TRUE(shown.image().isNull());
    EXPECT_FALSE(shown.mimeData()->hasHtml());
}

} // namespace
} // namespace kestrane
