#include "charts/ChartAccessible.h"

#include "charts/chaTab.h"

#include <QAccessibleWidget>

namespace kestrane {

namespace {

class ChartAccessible : public QAccessibleWidget {
public:
    explicit ChartAccessible(chaTab* chart) : QAccessibleWidget(chart, QAccessible::Chart), chart_(*chart) {}

    QString text(QAccessible::Text which) const override {
        return which == QAccessible::Description ? chart_.spokenDescription() : QAccessibleWidget::text(which);
    }

    int childCount() const override { return 0; }

    QAccessibleInterface* child(int) const override { return nullptr; }

    QAccessibleInterface* childAt(int, int) const override { return nullptr; }

private:
    const chaTab& chart_;
};

QAccessibleInterface* interfaceOf(const QString&, QObject* object) {
    auto* const chart = qobject_cast<chaTab*>(object);
    return chart == nullptr ? nullptr : new ChartAccessible(chart);
}

} // namespace

void makeChartsHeard() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(interfaceOf);
        return true;
    }();
    static_cast<void>(isInstalled);
}

void tellDescription(chaTab& chart) {
    QAccessibleEvent event(&chart, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

} // namespace kestrane
