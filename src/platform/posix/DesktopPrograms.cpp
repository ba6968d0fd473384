#include "platform/desktop/DesktopPrograms.h"

#include <QDirIterator>
#include <QFile>
#include <QStandardPaths>

namespace kestrane {

namespace {

bool opens(const QString& desktopEntry, const QString& mimeType) {
    constexpr auto kKey = "MimeType=";
    QFile file(desktopEntry);
    if (!file.open(QIODevice::ReadOnly)) return false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(kKey) && line.mid(static_cast<int>(qstrlen(kKey))).split(';').contains(mimeType))
            return true;
    }
    return false;
}

} // namespace

bool hasProgramFor(const QString& mimeType) {
    for (const QString& folder : QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation)) {
        QDirIterator entries(folder, {"*.desktop"}, QDir::Files, QDirIterator::Subdirectories);
        while (entries.hasNext())
            if (opens(entries.next(), mimeType)) return true;
    }
    return false;
}

} // namespace kestrane
