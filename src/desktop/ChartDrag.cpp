#include "desktop/ChartDrag.h"

#include "charts/chaTab.h"
#include "dialogs/DragOffers.h"

#include <QMouseEvent>

namespace kestrane {

ClipboardForms pictureOf(const chaTab& chart) {
    ClipboardForms forms;
    forms.Png = chart.pictureBytes(".png", chart.size()).toStdString();
    forms.Svg = chart.pictureBytes(".svg", chart.size()).toStdString();
    return forms;
}

void allowDragging(chaTab& chart) {
    const auto isGrip = [&chart](const QMouseEvent& press) {
        return press.modifiers() == Qt::ControlModifier ||
               (press.modifiers() == Qt::NoModifier && chart.isMargin(press.pos()));
    };
    const auto offer = [&chart]() -> std::optional<DragOffer> {
        if (chart.chart().RowCount == 0) return std::nullopt;
        return offerOf(pictureOf(chart), QString::fromStdString(chart.chart().Title).simplified().toStdString());
    };
    new DragOut(chart.Canvas(), isGrip, offer); // the chart owns it
}

} // namespace kestrane
