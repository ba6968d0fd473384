#include "dialogs/frmSplash.h"

#include "dialogs/Icons.h"
#include "dialogs/Resources.h"
#include "dialogs/Words.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QSvgRenderer>

namespace kestrane {

namespace {

constexpr int kMargin = 32; // pixels between the texts and the edge of the picture

} // namespace

frmSplash::frmSplash(const Session& session) :
    QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint),
    product_(loadText(session, Text::SplashTitle)),
    version_(loadText(session, Text::SplashVersion)),
    purpose_(loadText(session, Text::AboutPurpose)),
    company_(loadText(session, Text::AboutCopyright)),
    picSplash_(drawing(QStringLiteral(":/pictures/splash.svg"))) {
    setWindowTitle(product_);
    setAccessibleName(product_ + ' ' + version_);
    setWindowIcon(iconOf("application"));
    setFixedSize(QSvgRenderer(picSplash_).defaultSize());
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    move(screen.center() - rect().center());
}

void frmSplash::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QSvgRenderer(picSplash_).render(&painter, rect());

    QFont face = font();
    const auto write = [&](int pixels, QFont::Weight weight, double opacity, int left, int baseline,
                           const QString& text) {
        face.setPixelSize(pixels);
        face.setWeight(weight);
        painter.setFont(face);
        painter.setPen(QColor::fromRgbF(1, 1, 1, static_cast<float>(opacity)));
        const int room = width() - left - kMargin;
        painter.drawText(left, baseline, painter.fontMetrics().elidedText(text, Qt::ElideRight, room));
    };
    constexpr int kBesideEmblem = 108;
    write(34, QFont::DemiBold, 1, kBesideEmblem, 68, product_);
    write(14, QFont::Normal, 0.85, kBesideEmblem, 90, version_);
    write(14, QFont::Normal, 0.85, kMargin, 128, purpose_);
    write(11, QFont::Normal, 0.85, kMargin, height() - 14, company_);
}

} // namespace kestrane
