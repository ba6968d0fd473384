#include "platform/desktop/DragOut.h"

#include "platform/RuntimeError.h"
#include "platform/desktop/QtClipboard.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QDrag>
#include <QFile>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QUrl>
#include <QWidget>

namespace kestrane {

namespace {

const QString kFiles = QStringLiteral("text/uri-list");

// Writes a file that is dragged. Returns its path; empty when it could not be written.
QString writeDragged(const DragOffer& offer) {
    static QTemporaryDir all; // one folder for each file, so that names do not meet
    static int count = 0;
    const QString folder = all.filePath(QString::number(++count));
    if (!all.isValid() || !QDir().mkpath(folder)) return {};
    QString path = folder + '/' + QString::fromStdString(offer.FileName);
    QFile file(path);
    try {
        const std::string bytes = offer.Bytes();
        const auto size = static_cast<qint64>(bytes.size());
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), size) != size) return {};
    } catch (const RuntimeError&) { // there is nothing to drag into a folder then
        return {};
    }
    return path;
}

} // namespace

PromisedFile::PromisedFile(DragOffer offer) : offer_(std::move(offer)) {
    fillForms(*this, offer_.Forms);
}

bool PromisedFile::hasFormat(const QString& mimeType) const {
    return mimeType == kFiles || QMimeData::hasFormat(mimeType);
}

QStringList PromisedFile::formats() const {
    return QStringList(kFiles) + QMimeData::formats();
}

QVariant PromisedFile::retrieveData(const QString& mimeType, QMetaType type) const {
    if (mimeType != kFiles) return QMimeData::retrieveData(mimeType, type);
    if (path_.isEmpty()) path_ = writeDragged(offer_);
    if (path_.isEmpty()) return {};
    const QUrl url = QUrl::fromLocalFile(path_);
    if (type.id() == QMetaType::QByteArray) return url.toEncoded() + "\r\n";
    return QVariantList{url};
}

std::function<bool(const QMouseEvent& press)> onSelection(const QAbstractItemView& view) {
    return [&view](const QMouseEvent& press) {
        return press.modifiers() == Qt::NoModifier &&
               view.selectionModel()->isSelected(view.indexAt(press.position().toPoint()));
    };
}

DragOut::DragOut(QWidget& source, IsGrip isGrip, std::function<std::optional<DragOffer>()> offer) :
    QObject(&source), source_(source), isGrip_(std::move(isGrip)), offer_(std::move(offer)) {
    source.installEventFilter(this);
}

bool DragOut::eventFilter(QObject* watched, QEvent* event) {
    if (isPassing_) return false;
    if (event->type() == QEvent::MouseButtonPress) {
        const auto& press = static_cast<const QMouseEvent&>(*event);
        if (press.button() != Qt::LeftButton || !isGrip_(press)) return QObject::eventFilter(watched, event);
        press_.reset(press.clone());
        return true;
    }
    if (press_ == nullptr) return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::MouseButtonRelease) {
        passOn(static_cast<const QMouseEvent&>(*event));
        return true;
    }
    if (event->type() != QEvent::MouseMove) return QObject::eventFilter(watched, event);
    const QPointF moved = static_cast<const QMouseEvent&>(*event).position() - press_->position();
    if (moved.manhattanLength() < QApplication::startDragDistance()) return true;
    press_.reset();
    if (std::optional<DragOffer> offer = offer_(); offer) begin(std::make_unique<PromisedFile>(std::move(*offer)));
    return true;
}

void DragOut::begin(std::unique_ptr<QMimeData> data) {
    auto* const drag = new QDrag(&source_);
    drag->setMimeData(data.release());
    drag->exec(Qt::CopyAction);
}

// It was a click.
void DragOut::passOn(const QMouseEvent& release) {
    const std::unique_ptr<QMouseEvent> press = std::move(press_);
    const std::unique_ptr<QMouseEvent> end(release.clone());
    isPassing_ = true;
    QCoreApplication::sendEvent(&source_, press.get());
    QCoreApplication::sendEvent(&source_, end.get());
    isPassing_ = false;
}

} // namespace kestrane
