// The colours of levels: from dark to light by even steps of lightness, so that equal differences look equal, that a
// grey print keeps their order, and that colour-blind people can tell them apart.
#pragma once

#include <QRgb>

namespace kestrane {

QRgb levelColour(
    double part); // of the scale: 0 is its lowest level, 1 its highest; what lies outside has an end colour

} // namespace kestrane
