#include "platform/desktop/QtClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QUrl>

#include <memory>

namespace kestrane {

std::vector<std::string> localFiles(const QMimeData& data) {
    std::vector<std::string> paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) paths.push_back(url.toLocalFile().toStdString());
    return paths;
}

void fillForms(QMimeData& data, const ClipboardForms& forms) {
    if (!forms.Text.empty()) data.setText(QString::fromStdString(forms.Text));
    if (!forms.Html.empty()) data.setHtml(QString::fromStdString(forms.Html));
    if (!forms.Svg.empty()) data.setData("image/svg+xml", QByteArray::fromStdString(forms.Svg));
    if (!forms.Png.empty()) data.setImageData(QImage::fromData(QByteArray::fromStdString(forms.Png), "PNG"));
}

std::vector<std::string> QtClipboard::GetClipboardFiles() const {
    const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
    return data == nullptr ? std::vector<std::string>() : localFiles(*data);
}

void QtClipboard::Set(const ClipboardForms& forms) {
    auto data = std::make_unique<QMimeData>();
    fillForms(*data, forms);
    QGuiApplication::clipboard()->setMimeData(data.release());
}

} // namespace kestrane
