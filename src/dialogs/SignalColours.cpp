#include "dialogs/SignalColours.h"

#include <QPalette>

namespace kestrane {

QColor signalColour(Signal signal, const QPalette& palette) {
    constexpr int kLighter = 165; // percent
    static const QColor kColours[] = {{0x1b, 0x7a, 0x3a}, {0xa8, 0x66, 0x00}, {0xc6, 0x28, 0x28}};
    if (signal == Signal::None) return palette.color(QPalette::Text);
    const bool isDark = palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
    const QColor colour = kColours[static_cast<std::size_t>(signal)];
    return isDark ? colour.lighter(kLighter) : colour;
}

Signal signalOf(Verdict verdict) {
    switch (verdict) {
    case Verdict::Good:
        return Signal::Good;
    case Verdict::Acceptable:
    case Verdict::OverProtected:
        return Signal::Caution;
    case Verdict::Insufficient:
        return Signal::Bad;
    case Verdict::None:
        break;
    }
    return Signal::None;
}

} // namespace kestrane
