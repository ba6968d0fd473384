#include "charts/chaTab.h"

#include "charts/ChartAccessible.h"
#include "charts/ChartPage.h"
#include "charts/ChartTouch.h"
#include "charts/RangeBand.h"
#include "platform/AtomicFile.h"
#include "platform/RuntimeError.h"
#include "views/LevelMap.h"

#include <QBuffer>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QPageSize>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <utility>

namespace kestrane {

namespace {

constexpr double kZoom = 0.8; // for each step
// Pixels: a drag that is not higher zooms only the rows, one that is not wider only the values.
constexpr int kThinDrag = 8;
constexpr int kShortDrag = 3; // pixels: a shorter drag counts as none
constexpr double kWheelStep = 120;
constexpr double kTouch = 0.01; // rows: a row this close to the edge of the view is in it
constexpr double kGrip = 5;     // pixels: a drag that begins this close to an end of the range moves that end
constexpr int kPdfResolution = 1200;
constexpr int kSvgResolution = 2540; // hundredths of a millimetre

bool endsIn(const std::string& path, const char* ending) {
    return QString::fromStdString(path).endsWith(ending, Qt::CaseInsensitive);
}

// The toolkit rounds the size of a page to whole points. Puts the size itself in its place, in as many bytes, so that
// nothing in the file moves.
void putPageSize(QByteArray& pdf, const QSizeF& dots) {
    const QSizeF points = dots * (72 / kDotsOfInch);
    QByteArray box = "/MediaBox [0 0 " + QByteArray::number(points.width(), 'f', 5) + " " +
                     QByteArray::number(points.height(), 'f', 5);
    const qsizetype at = pdf.indexOf("/MediaBox [0 0 ");
    const qsizetype size = at < 0 ? 0 : pdf.indexOf(']', at) - at;
    if (box.size() <= size) pdf.replace(at, size, box.leftJustified(size, ' '));
}

} // namespace

chaTab::chaTab(Locale locale, Summary summary, QWidget* parent) :
    QWidget(parent), locale_(std::move(locale)), summary_(std::move(summary)), plot_(new ChartPlot(locale_, this)) {
    makeChartsHeard();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(plot_);
    setFocusPolicy(Qt::StrongFocus);
    plot_->setFocusPolicy(Qt::NoFocus);
    plot_->setAttribute(Qt::WA_NoMousePropagation, false); // otherwise the owner's menu would never open
    plot_->setMouseTracking(true);
    plot_->installEventFilter(this);
    connect(plot_, &QCustomPlot::mousePress, this, [this](const QMouseEvent* event) { press(*event); });
    connect(plot_, &QCustomPlot::mouseMove, this, [this](const QMouseEvent* event) { point(*event); });
    connect(plot_, &QCustomPlot::mouseRelease, this, [this] {
        isMarking_ = false;
        if (plot_->interactions().testFlag(QCP::iRangeDrag)) emit ViewChanged();
    });
    connect(plot_, &QCustomPlot::mouseWheel, this, [this](const QWheelEvent* event) { turnWheel(*event); });
    connect(plot_, &QCustomPlot::mouseDoubleClick, this, [this] {
        if (plot_->hasAxes()) look(plot_->wholeView());
    });
    connect(plot_->selectionRect(), &QCPSelectionRect::accepted, this, [this](const QRect& rect) { zoomInto(rect); });
    new ChartTouch(*plot_, {[this](double pixels) { moveBy(pixels); },
                            [this](double factor, const QPointF& at) { pinch(factor, at); },
                            [this](const QPoint& at) {
                                QContextMenuEvent event(QContextMenuEvent::Other, mapFromGlobal(at), at);
                                QCoreApplication::sendEvent(this, &event);
                            }});
    setChart({});
}

chaTab::~chaTab() = default;

void chaTab::setChart(ChartData chart) {
    isLegendShown_ = chart.HasLegend;
    content_ = std::make_shared<const ChartContent>(std::move(chart));
    marked_ = MarkedRange(content_->data.RowCount);
    spokenFirst_.clear();
    drawAnew();
    setAccessibleName(QString::fromStdString(content_->data.Title));
    tellDescription(*this);
}

const ChartData& chaTab::chart() const {
    return content_->data;
}

void chaTab::drawAnew() {
    plot_->setContent(content_, ChartLooks::ofScreen(palette(), logicalDpiY()));
    plot_->showParts(isLegendShown_, isFootnoteShown_);
    showMarked();
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

QString chaTab::spokenDescription() const {
    if (!spokenFirst_.isEmpty()) return spokenFirst_;
    QStringList reading = readOut();
    reading.removeAll(QString());
    if (!reading.isEmpty()) return reading.join(", ");
    return summary_ ? QString::fromStdString(summary_(content_->data)) : QString();
}

void chaTab::readAt(std::optional<std::size_t> row) {
    readAt(row, plot_->readOut().band());
}

void chaTab::readAt(std::optional<std::size_t> row, std::size_t band) {
    if (row == plot_->readOut().row() && band == plot_->readOut().band()) return;
    plot_->readOut().show(row, band);
    spokenFirst_.clear();
    tellDescription(*this);
    emit RowRead();
}

std::optional<std::size_t> chaTab::readRow() const {
    return plot_->hasAxes() ? plot_->readOut().row() : std::nullopt;
}

// The band of a map of levels that is nearest to a place on its axis; 0 when there is no map.
std::size_t chaTab::bandAt(double place) const {
    const auto* const map = content_->data.Map.get();
    const double last = map == nullptr ? 0 : static_cast<double>(map->BandCount()) - 1;
    return static_cast<std::size_t>(std::clamp(std::round(place), 0.0, std::max(0.0, last)));
}

void chaTab::showLegend(bool isShown) {
    isLegendShown_ = isShown;
    plot_->showParts(isLegendShown_, isFootnoteShown_);
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

void chaTab::showFootnote(bool isShown) {
    isFootnoteShown_ = isShown;
    plot_->showParts(isLegendShown_, isFootnoteShown_);
    plot_->replot(QCustomPlot::rpQueuedReplot);
}

QStringList chaTab::readOut() const {
    return plot_->hasAxes() ? plot_->readOut().lines() : QStringList();
}

ChartOnPage chaTab::onPage() const {
    ChartOnPage chart = {
        std::shared_ptr<const ChartData>(content_, &content_->data), isLegendShown_, isFootnoteShown_, {}};
    if (!plot_->hasAxes()) return chart;
    const auto part = [](const QCPRange& range) { return ChartRange{range.lower, range.upper}; };
    const ChartView view = plot_->view();
    chart.Part = ChartPart{part(view.rows), part(view.primary), part(view.secondary)};
    return chart;
}

QImage chaTab::picture(const QSizeF& size, double ratio) const {
    QImage image((size * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.setDotsPerMeterX(static_cast<int>(kDotsOfInch * ratio / 0.0254));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    QCPPainter painter(&image);
    drawChart(painter, size.toSize(), onPage(), locale_);
    return image;
}

QByteArray chaTab::pictureBytes(const std::string& path, const QSizeF& size, double ratio) const {
    const QSize dots = size.toSize();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (endsIn(path, ".svg")) {
        QSvgGenerator svg;
        svg.setOutputDevice(&buffer);
        svg.setResolution(kSvgResolution); // only of the size that the picture has in a document
        svg.setSize((size / kDotsOfInch * kSvgResolution).toSize());
        svg.setViewBox(QRectF(QPointF(), size));
        // The toolkit writes the title to the file without escaping it.
        svg.setTitle(QString::fromStdString(content_->data.Title).toHtmlEscaped());
        QCPPainter painter(&svg);
        painter.setMode(QCPPainter::pmVectorized);
        drawChart(painter, dots, onPage(), locale_);
    } else if (endsIn(path, ".pdf")) {
        QPdfWriter pdf(&buffer);
        pdf.setResolution(kPdfResolution);
        pdf.setTitle(QString::fromStdString(content_->data.Title));
        pdf.setPageSize(QPageSize(size / kDotsOfInch, QPageSize::Inch, {}, QPageSize::ExactMatch));
        pdf.setPageMargins({});
        QCPPainter painter(&pdf);
        painter.setMode(QCPPainter::pmVectorized);
        painter.scale(kPdfResolution / kDotsOfInch, kPdfResolution / kDotsOfInch);
        drawChart(painter, dots, onPage(), locale_);
        painter.end();
        putPageSize(buffer.buffer(), size);
    } else {
        picture(size, ratio).save(&buffer, "PNG");
    }
    return buffer.data();
}

void chaTab::savePicture(const std::string& path, const PictureSize& size) const {
    const QByteArray bytes = pictureBytes(path, QSizeF(size.Width, size.Height), size.PixelsOfDot);
    if (bytes.isEmpty()) throw RuntimeError(EIO, std::strerror(EIO));
    writeFileAtomically(path, [&](const FileSink& sink) {
        sink(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    });
}

std::function<void(const std::string& path, const PictureSize& size)> chaTab::pictureWriter() const {
    return [this](const std::string& path, const PictureSize& size) { savePicture(path, size); };
}

void chaTab::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    const bool hadAxes = plot_->hasAxes();
    const ChartView view = hadAxes ? plot_->view() : ChartView();
    drawAnew();
    if (hadAxes) plot_->setView(view);
}

bool chaTab::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Leave && plot_->hasAxes()) readAt({});
    return QWidget::eventFilter(watched, event);
}

void chaTab::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    plot_->update();
}

void chaTab::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    plot_->update();
}

void chaTab::press(const QMouseEvent& event) {
    if (!plot_->hasAxes()) return;
    const bool isWithShift = event.modifiers().testFlag(Qt::ShiftModifier);
    isMarking_ = isMarkable_ && isWithShift && event.button() == Qt::LeftButton &&
                 plot_->axisArea().rect().contains(event.pos());
    if (isMarking_) {
        readAt({});
        const QCPAxis& rows = *plot_->axisArea().axis(QCPAxis::atBottom);
        const double place = rows.pixelToCoord(event.position().x());
        marked_.takeAt({place, rows.pixelToCoord(event.position().x() + kGrip) - place});
        showMarked();
        emit RangeMarked();
    }
    const bool isMove = event.button() == Qt::MiddleButton || (isWithShift && !isMarkable_);
    const bool isZoom =
        event.button() == Qt::LeftButton && !isMove && !isWithShift && plot_->axisArea().rect().contains(event.pos());
    plot_->setSelectionRectMode(isZoom ? QCP::srmCustom : QCP::srmNone);
    plot_->setInteraction(QCP::iRangeDrag, isMove);
    setFocus(Qt::MouseFocusReason);
}

void chaTab::point(const QMouseEvent& event) {
    if (!plot_->hasAxes()) return;
    if (event.buttons() == Qt::NoButton) endDrag();
    if (isMarking_) {
        const auto before = marked_.rows();
        marked_.moveTo(plot_->axisArea().axis(QCPAxis::atBottom)->pixelToCoord(event.position().x()));
        if (marked_.rows() == before) return;
        showMarked();
        emit RangeMarked();
        return;
    }
    std::optional<std::size_t> row;
    if (plot_->axisArea().rect().contains(event.pos())) {
        const double at = std::round(plot_->axisArea().axis(QCPAxis::atBottom)->pixelToCoord(event.position().x()));
        row = static_cast<std::size_t>(std::clamp(at, 0.0, static_cast<double>(content_->data.RowCount) - 1));
    }
    readAt(row, bandAt(plot_->axisArea().axis(QCPAxis::atLeft)->pixelToCoord(event.position().y())));
}

// The release of a button is not always told: a menu that opened meanwhile may have taken it.
void chaTab::endDrag() {
    isMarking_ = false;
    plot_->selectionRect()->cancel();
    if (!plot_->interactions().testFlag(QCP::iRangeDrag)) return;
    plot_->setInteraction(QCP::iRangeDrag, false);
    emit ViewChanged();
}

void chaTab::look(ChartView view) {
    plot_->setView(view);
    plot_->replot(QCustomPlot::rpQueuedReplot);
    emit ViewChanged();
}

std::optional<std::pair<std::size_t, std::size_t>> chaTab::rowsInView() const {
    if (!plot_->hasAxes()) return std::nullopt;
    const QCPRange rows = plot_->view().rows;
    const double last = static_cast<double>(content_->data.RowCount) - 1;
    const auto rowOf = [&](double at) { return static_cast<std::size_t>(std::clamp(at, 0.0, last)); };
    return std::pair(rowOf(std::ceil(rows.lower - kTouch)), rowOf(std::floor(rows.upper + kTouch)));
}

void chaTab::turnWheel(const QWheelEvent& event) {
    if (!plot_->hasAxes()) return;
    const QPoint turned = event.angleDelta();
    const double steps = (turned.y() != 0 ? turned.y() : turned.x()) / kWheelStep;
    const double factor = std::pow(kZoom, steps);
    const QCPAxisRect& area = plot_->axisArea();
    ChartView view = plot_->view();
    if (event.modifiers().testFlag(Qt::ShiftModifier) || turned.y() == 0) {
        view.rows -= steps * view.rows.size() * (1 - kZoom) / 2;
        look(view);
    } else if (event.modifiers().testFlag(Qt::ControlModifier)) {
        const double part = std::clamp((area.bottom() - event.position().y()) / area.height(), 0.0, 1.0);
        for (QCPRange* values : {&view.primary, &view.secondary}) {
            const double center = values->lower + part * values->size();
            *values = QCPRange(center - (center - values->lower) * factor, center + (values->upper - center) * factor);
        }
        look(view);
    } else {
        zoomRows(factor, area.axis(QCPAxis::atBottom)->pixelToCoord(event.position().x()));
    }
}

bool chaTab::isMargin(const QPoint& at) const {
    return !plot_->hasAxes() || !plot_->axisArea().rect().contains(at);
}

void chaTab::moveBy(double pixels) {
    if (!plot_->hasAxes()) return;
    const QCPAxis& rows = *plot_->axisArea().axis(QCPAxis::atBottom);
    ChartView view = plot_->view();
    view.rows += rows.pixelToCoord(0) - rows.pixelToCoord(pixels);
    look(view);
}

void chaTab::pinch(double factor, const QPointF& at) {
    if (plot_->hasAxes()) zoomRows(1 / factor, plot_->axisArea().axis(QCPAxis::atBottom)->pixelToCoord(at.x()));
}

void chaTab::zoomRows(double factor, double center) {
    ChartView view = plot_->view();
    center = std::clamp(center, view.rows.lower, view.rows.upper);
    view.rows = QCPRange(center - (center - view.rows.lower) * factor, center + (view.rows.upper - center) * factor);
    look(view);
}

void chaTab::zoomInto(const QRect& rect) {
    const QRect drag = rect.normalized() & plot_->axisArea().rect();
    if (drag.width() <= kShortDrag && drag.height() <= kShortDrag) return;
    ChartView view = plot_->view();
    const auto part = [&](QCPAxis::AxisType type, int from, int to) {
        const QCPAxis& axis = *plot_->axisArea().axis(type);
        return QCPRange(axis.pixelToCoord(from), axis.pixelToCoord(to));
    };
    if (drag.width() > kThinDrag) view.rows = part(QCPAxis::atBottom, drag.left(), drag.right());
    if (drag.height() > kThinDrag) {
        view.primary = part(QCPAxis::atLeft, drag.bottom(), drag.top());
        view.secondary = part(QCPAxis::atRight, drag.bottom(), drag.top());
    }
    look(view);
}

void chaTab::keyPressEvent(QKeyEvent* event) {
    if (!plot_->hasAxes()) return QWidget::keyPressEvent(event);
    const ChartView view = plot_->view();
    const auto& row = plot_->readOut().row();
    const double center = row ? static_cast<double>(*row) : view.rows.center();
    const bool isWide = event->modifiers().testFlag(Qt::ControlModifier);
    const int wide = std::max(1, static_cast<int>(view.rows.size() / 10));
    if (isMarkable_ && markByKey(*event, isWide ? wide : 1)) return;
    switch (event->key()) {
    case Qt::Key_Left:
        return stepReadOut(isWide ? -wide : -1);
    case Qt::Key_Right:
        return stepReadOut(isWide ? wide : 1);
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (!content_->data.Map) break;
        return stepBand(event->key() == Qt::Key_Up ? 1 : -1);
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return zoomRows(kZoom, center);
    case Qt::Key_Minus:
        return zoomRows(1 / kZoom, center);
    case Qt::Key_Home:
        return goToRow(0);
    case Qt::Key_End:
        return goToRow(static_cast<double>(content_->data.RowCount) - 1);
    case Qt::Key_0:
        return look(plot_->wholeView());
    case Qt::Key_Escape:
        if (row) return readAt({});
        if (marked_.rows()) return clearMarked();
        break;
    default:
        break;
    }
    QWidget::keyPressEvent(event);
}

// Moves an end of the range, or takes hold of the other one. Returns false for a key that does neither.
bool chaTab::markByKey(const QKeyEvent& event, int wide) {
    const auto all = static_cast<std::int64_t>(content_->data.RowCount);
    const std::pair<int, std::int64_t> steps[] = {
        {Qt::Key_Left, -wide}, {Qt::Key_Right, wide}, {Qt::Key_Home, -all}, {Qt::Key_End, all}};
    const auto* const step =
        std::ranges::find_if(steps, [&](const auto& candidate) { return candidate.first == event.key(); });
    if (event.key() == Qt::Key_Space && marked_.rows()) {
        marked_.exchange();
    } else if (event.modifiers().testFlag(Qt::ShiftModifier) && step != std::end(steps)) {
        const double start = std::max(0.0, std::round(plot_->view().rows.center()));
        const bool isNew = !marked_.rows();
        // The first step only puts the cursors on the row that is read, or on the one in the middle of the view.
        marked_.step(isNew && std::abs(step->second) < all ? 0 : step->second,
                     plot_->readOut().row().value_or(static_cast<std::size_t>(start)));
    } else {
        return false;
    }
    readAt({});
    bringIntoView(static_cast<double>(*marked_.movingRow()));
    showMarked();
    emit RangeMarked();
    return true;
}

void chaTab::markRows(std::size_t first, std::size_t last) {
    marked_.mark(first, last);
    if (!marked_.rows()) return;
    bringIntoView(static_cast<double>(last));
    bringIntoView(static_cast<double>(first));
    showMarked();
    emit RangeMarked();
}

void chaTab::clearMarked() {
    marked_.clear();
    spokenFirst_.clear();
    showMarked();
    emit RangeMarked();
}

void chaTab::tellFirst(const QString& spoken) {
    spokenFirst_ = spoken;
    tellDescription(*this);
}

void chaTab::showMarked() {
    if (!plot_->hasAxes()) return;
    const auto rows = marked_.rows();
    if (!rows) return plot_->rangeBand().show({});
    plot_->rangeBand().show(RangeBand::Span{rows->first, rows->second, marked_.movingRow() == rows->first});
}

// Moves the read-out by a number of rows; it begins in the middle of the view when there is none yet.
void chaTab::stepReadOut(int rows) {
    const auto& shown = plot_->readOut().row();
    goToRow(shown ? static_cast<double>(*shown) + rows : std::round(plot_->view().rows.center()));
}

void chaTab::stepBand(int bands) {
    stepReadOut(0);
    readAt(readRow(), bandAt(static_cast<double>(plot_->readOut().band()) + bands));
}

// Moves the read-out to a row, or to the nearest one that exists.
void chaTab::goToRow(double row) {
    row = std::clamp(row, 0.0, static_cast<double>(content_->data.RowCount) - 1);
    bringIntoView(row); // first, as the owner may say what is in view then
    readAt(static_cast<std::size_t>(row));
}

// Scrolls when a row is not in view.
void chaTab::bringIntoView(double row) {
    if (!plot_->hasAxes()) return;
    ChartView view = plot_->view();
    const double before = std::min(0.0, row - 0.5 - view.rows.lower);
    const double behind = std::max(0.0, row + 0.5 - view.rows.upper);
    if (before == 0 && behind == 0) return;
    view.rows += before + behind;
    look(view);
}

} // namespace kestrane
