#include "printing/Logo.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>

static void loadPictures() { // must be outside of the namespace, because the macro names global functions
    Q_INIT_RESOURCE(report);
}

namespace kestrane {

namespace {

constexpr qint64 kLargestFile = 32 << 20;
constexpr qint64 kMostPixels = 50'000'000;
constexpr int kMostOfPixel = 8;       // bytes
constexpr QSize kSharpest(2400, 800); // 1000 dots per inch in the logo's box; a larger picture is scaled down

bool isDrawing(const QByteArray& bytes) {
    return bytes.left(1024).contains("<svg");
}

// A drawing of somebody else's may be transparent, which an archive's PDF must not hold.
QImage imageOf(QSvgRenderer& drawing) {
    QImage image(drawing.defaultSize().scaled(kSharpest, Qt::KeepAspectRatio).expandedTo({1, 1}), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    drawing.render(&painter);
    return image;
}

} // namespace

Logo Logo::ofBrand() {
    loadPictures();
    Logo logo;
    logo.drawing_ = std::make_shared<QSvgRenderer>(QStringLiteral(":/report/brand.svg"));
    return logo;
}

Logo Logo::ofFile(const std::string& path) {
    Logo logo;
    const QString name = QString::fromStdString(path);
    QFile file(name);
    if (!QFileInfo(name).isFile() || file.size() > kLargestFile || !file.open(QIODevice::ReadOnly)) return logo;
    if (isDrawing(file.peek(1024))) {
        QSvgRenderer drawing(file.readAll());
        if (drawing.isValid() && !drawing.defaultSize().isEmpty()) logo.image_ = imageOf(drawing);
        return logo;
    }
    QImageReader::setAllocationLimit(static_cast<int>(kMostPixels * kMostOfPixel >> 20) + 1); // megabytes
    QImageReader reader(&file);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (size.isEmpty() || qint64{size.width()} * size.height() > kMostPixels) return logo;
    QImage image = reader.read();
    if (image.width() > kSharpest.width() || image.height() > kSharpest.height())
        image = image.scaled(kSharpest, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    logo.image_ = std::move(image);
    return logo;
}

QSizeF Logo::sizeIn(const QSizeF& box) const {
    const QSizeF own = drawing_ ? QSizeF(drawing_->defaultSize()) : QSizeF(image_.size());
    return own.scaled(box, Qt::KeepAspectRatio);
}

double Logo::draw(QPainter& painter, const QRectF& box) const {
    const QSizeF size = sizeIn(box.size());
    const QRectF target(box.topLeft(), size);
    if (drawing_) {
        drawing_->render(&painter, target);
    } else {
        painter.drawImage(target, image_);
    }
    return size.width();
}

} // namespace kestrane
