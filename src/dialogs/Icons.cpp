#include "dialogs/Icons.h"

#include "dialogs/Resources.h"
#include "platform/Contrast.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace kestrane {

namespace {

constexpr char kLines[] = "#6b7a8c"; // the two colours in the drawings
constexpr char kAccent[] = "#2f8fae";

struct Ink {
    QColor lines, accent;
    double opacity;
};

Ink inkOf(QIcon::Mode mode) {
    const QPalette palette = QGuiApplication::palette();
    if (mode == QIcon::Selected) {
        const QColor text = palette.color(QPalette::HighlightedText);
        return {text, text, 1};
    }
    const Rgb ground = palette.color(QPalette::Window).rgb();
    const auto ink = [ground](Rgb onLight, Rgb onDark) {
        return QColor::fromRgb(readable(isDark(ground) ? onDark : onLight, ground, kLineContrast));
    };
    const QColor lines = ink(QColor(kLines).rgb(), 0xb4c0cd);
    const QColor accent = ink(QColor(kAccent).rgb(), 0x56bddd);
    return mode == QIcon::Disabled ? Ink{lines, lines, 0.4} : Ink{lines, accent, 1};
}

class DrawingEngine : public QIconEngine {
public:
    DrawingEngine(QString name, QByteArray drawing) : name_(std::move(name)), drawing_(std::move(drawing)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
        const Ink ink = inkOf(mode);
        QByteArray drawing = drawing_;
        drawing.replace(kLines, ink.lines.name().toLatin1()).replace(kAccent, ink.accent.name().toLatin1());
        QSvgRenderer renderer(drawing);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        painter->save();
        painter->setOpacity(painter->opacity() * ink.opacity);
        renderer.render(painter, rect);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const Ink ink = inkOf(mode);
        const QString key = QStringLiteral("kestrane/%1/%2x%3/%4/%5")
                                .arg(name_)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(ink.lines.name() + ink.accent.name())
                                .arg(ink.opacity);
        QPixmap pixmap;
        if (QPixmapCache::find(key, &pixmap)) return pixmap;
        pixmap = QPixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        painter.end();
        QPixmapCache::insert(key, pixmap);
        return pixmap;
    }

    QIconEngine* clone() const override { return new DrawingEngine(*this); }

private:
    QString name_;
    QByteArray drawing_;
};

} // namespace

QIcon iconOf(const char* name) {
    const QByteArray bytes = drawing(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)));
    return bytes.isEmpty() ? QIcon() : QIcon(new DrawingEngine(QLatin1String(name), bytes)); // the icon owns its engine
}

} // namespace kestrane
