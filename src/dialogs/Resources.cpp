#include "dialogs/Resources.h"

#include <QFile>

static void loadResources() { // must be outside of the namespace, because the macros name global functions
    Q_INIT_RESOURCE(icons);
    Q_INIT_RESOURCE(pictures);
}

namespace kestrane {

QByteArray drawing(const QString& name) {
    loadResources();
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace kestrane
