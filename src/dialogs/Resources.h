// The drawings that are built into the program, as bytes of an SVG file.
#pragma once

#include <QByteArray>

namespace kestrane {

// ":/icons/open.svg", ":/pictures/splash.svg"; empty when there is none.
QByteArray drawing(const QString& name);

} // namespace kestrane
