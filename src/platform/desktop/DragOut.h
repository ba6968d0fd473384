// Lets the user drag what a widget shows out of the window: into another program, which takes it as a picture or text,
// or into a folder, where it becomes a file.
#pragma once

#include "platform/Clipboard.h"

#include <QMimeData>
#include <QObject>
#include <QPoint>

#include <functional>
#include <memory>
#include <optional>
#include <string>

class QAbstractItemView;
class QMouseEvent;
class QWidget;

namespace kestrane {

// What is dragged: the forms in which other programs can take it, and a file with a name and its bytes. The bytes are
// made when somebody takes the file. They may raise an error; there is no file then.
struct DragOffer {
    ClipboardForms Forms;
    std::string FileName;
    std::function<std::string()> Bytes;
};

// The data of an offer. The file is written into a folder of its own when it is taken, and stays there until the
// program ends, because the one who takes it may read it later.
class PromisedFile : public QMimeData {
public:
    explicit PromisedFile(DragOffer offer);

    bool hasFormat(const QString& mimeType) const override;
    QStringList formats() const override;

protected:
    QVariant retrieveData(const QString& mimeType, QMetaType type) const override;

private:
    DragOffer offer_;
    mutable QString path_; // empty until it is written
};

// Presses on what is selected in a view, without a modifier: they would only select again.
std::function<bool(const QMouseEvent& press)> onSelection(const QAbstractItemView& view);

class DragOut : public QObject {
public:
    // Whether a press at a place of the widget may begin a drag. One that does not move on is passed to the widget.
    using IsGrip = std::function<bool(const QMouseEvent& press)>;

    // The object belongs to the widget. An offer of nothing begins no drag.
    DragOut(QWidget& source, IsGrip isGrip, std::function<std::optional<DragOffer>()> offer);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    virtual void begin(std::unique_ptr<QMimeData> data); // returns when the drag has ended

private:
    void passOn(const QMouseEvent& release);

    QWidget& source_;
    IsGrip isGrip_;
    std::function<std::optional<DragOffer>()> offer_;
    std::unique_ptr<QMouseEvent> press_; // while it may become a drag
    bool isPassing_ = false;
};

} // namespace kestrane
