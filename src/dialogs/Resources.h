// The drawings that are embedded in the program, as the bytes of an SVG file.
#pragma once

#include <QByteArray>

namespace kestrane {

// The drawing with a name such as ":/icons/open.svg" or ":/pictures/splash.svg"; empty when there is none.
QByteArray drawing(const QString& name);

} // namespace kestrane
