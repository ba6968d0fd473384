#include "dialogs/Icons.h"

#include <QApplication>
#include <QDir>
#include <QPalette>

#include <gtest/gtest.h>

namespace kestrane {
namespace {

struct Look {
    int inked = 0;        // pixels that show something
    double lightness = 0; // mean of these
    double alpha = 0;
};

Look lookOf(const QIcon& icon, int size, QIcon::Mode mode = QIcon::Normal, double scale = 1) {
    const QImage image = icon.pixmap(QSize(size, size), scale, mode).toImage();
    EXPECT_EQ(image.size(), QSize(size, size) * scale);
    Look look;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() < 40) continue;
            ++look.inked;
            look.lightness += pixel.lightness();
            look.alpha += pixel.alpha();
        }
    }
    look.lightness /= std::max(look.inked, 1);
    look.alpha /= std::max(look.inked, 1);
    return look;
}

TEST(Icons, EveryDrawingShowsAtEverySizeAndScale) {
    iconOf("file"); // the drawings come in with the first icon
    const QStringList drawings = QDir(":/icons").entryList();
    ASSERT_GE(drawings.size(), 25);
    for (const QString& name : drawings) {
        const QIcon icon = iconOf(name.chopped(4).toLatin1().constData());
        EXPECT_GT(lookOf(icon, 16).inked, 30) << name.toStdString();
        EXPECT_GT(lookOf(icon, 24, QIcon::Normal, 2).inked, 200) << name.toStdString();
    }
    EXPECT_TRUE(iconOf("unheard-of").isNull());
}

TEST(Icons, FollowThePaletteAndTheMode) {
    const QPalette before = QApplication::palette();
    const QIcon icon = iconOf("settings");
    QApplication::setPalette(QPalette(QColor(240, 240, 240)));
    const Look light = lookOf(icon, 24);
    EXPECT_LT(lookOf(icon, 24, QIcon::Disabled).alpha, light.alpha * 0.6);
    QPalette dark{QColor(45, 48, 54)};
    dark.setColor(QPalette::HighlightedText, Qt::white);
    QApplication::setPalette(dark);
    EXPECT_GT(lookOf(icon, 24).lightness, light.lightness + 40);
    EXPECT_GT(lookOf(icon, 24, QIcon::Selected).lightness, 250);
    QApplication::setPalette(before);
}

} // namespace
} // namespace kestrane
