#include "dialogs/SignalColours.h"

#include "platform/Contrast.h"

#include <QPalette>

namespace kestrane {

QColor signalColour(Signal signal, const QPalette& palette) {
    constexpr Rgb kColours[] = {0x1b7a3a, 0xa86600, 0xc62828};
    if (signal == Signal::None) return palette.color(QPalette::Text);
    Rgb colour = kColours[static_cast<std::size_t>(signal)];
    for (const QPalette::ColorRole ground : {QPalette::Window, QPalette::Base, QPalette::AlternateBase})
        colour = readable(colour, palette.color(ground).rgb());
    return QColor::fromRgb(colour);
}

QColor faultyGround(const QPalette& palette) {
    return isDark(palette.color(QPalette::Base).rgb()) ? QColor(120, 40, 40) : QColor(255, 205, 205);
}

QColor barColour(const QPalette& palette) {
    constexpr Rgb kBar = 0x3b78b8;
    return QColor::fromRgb(readable(kBar, palette.color(QPalette::Window).rgb(), kLineContrast));
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
