#include "charts/ChartPlot.h"

#include "charts/ExcludedShade.h"
#include "charts/LevelLines.h"
#include "charts/LevelMapPlot.h"
#include "charts/RangeBand.h"
#include "charts/SeriesBars.h"
#include "charts/SeriesLine.h"

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

constexpr int kMargin = 12;
constexpr int kSpacing = 8;
constexpr int kRowsBelow = 2;          // of a legend; a larger one goes beside the chart if that is wide enough
constexpr double kMostOfWidth = 0.34;  // of the page's width, for a legend beside the chart
constexpr double kMostOfHeight = 0.25; // of the page's height, for each part above and below the chart
constexpr double kLeastRows = 4;       // the fewest rows that a zoom shows
constexpr double kDeepestZoom = 1000;  // how many times a value axis can be enlarged
constexpr double kFewRows = 40;
constexpr int kScaleWidth = 14;  // pixels, of the bar of colours
const QSize kSmallest(260, 180); // pixels
constexpr int kFewestLines = 9;  // of text, in the height of the smallest chart
constexpr int kFocus = 2;        // pixels, of the frame that shows the focus
constexpr int kLeastPlot = 40;   // pixels: the parts around a smaller plot give way
constexpr int kPartsToSpare =
    3; // the note, the title and the legend, in the order in which they make room for the plot

QCPRange within(QCPRange part, const QCPRange& whole, double least) {
    const double size = std::clamp(part.size(), std::min(least, whole.size()), whole.size());
    const double lower = std::clamp(part.center() - size / 2, whole.lower, whole.upper - size);
    return {lower, lower + size};
}

QCPRange rangeOf(const ChartRange& range) {
    return {range.Minimum, range.Maximum};
}

// Adds a part below what is there; in the grid in the middle, beside it.
void place(QCPLayoutElement* part, QCPLayoutGrid& grid) {
    part->setVisible(true);
    const bool isBeside = grid.layout() != nullptr;
    grid.addElement(isBeside ? 0 : grid.rowCount(), isBeside ? grid.columnCount() : 0, part);
}

// Breaks a text between words into lines of at most width pixels. The blanks at a break are dropped.
QString inLines(QString text, int width, const QFontMetrics& metrics) {
    QString lines;
    while (metrics.horizontalAdvance(text) > width) {
        qsizetype end = -1;
        for (qsizetype blank = text.indexOf(' '); blank > 0; blank = text.indexOf(' ', blank + 1))
            if (end < 0 || metrics.horizontalAdvance(text.left(blank)) <= width) end = blank;
        if (end < 0) break; // a single word is left
        lines += text.left(end).trimmed() + '\n';
        text = text.mid(end).trimmed();
    }
    return lines + text;
}

void fitTitle(QCPAxis* axis, const std::string& title, int length) {
    if (axis != nullptr)
        axis->setLabel(inLines(QString::fromStdString(title), length, QFontMetrics(axis->labelFont())));
}

} // namespace

ChartPlot::ChartPlot(Locale locale, QWidget* parent) : QCustomPlot(parent), locale_(std::move(locale)) {
    setAutoAddPlottableToLegend(false);
    plotLayout()->clear();
    plotLayout()->setRowSpacing(kSpacing);
    plotLayout()->setColumnSpacing(kSpacing);
    plotLayout()->setAutoMargins(QCP::msNone);
    plotLayout()->setMargins(QMargins(kMargin, kMargin, kMargin, kMargin));
}

ChartPlot::~ChartPlot() {
    clearContent();
}

void ChartPlot::clearContent() {
    clearPlottables();
    readOut_.reset();
    rangeBand_.reset();
    lines_.reset();
    shade_.reset();
    map_.reset();
    scale_.reset();
    axisRect_.reset();
    solid_.reset();
    legend_.reset();
    footnote_.reset();
    title_.reset();
}

void ChartPlot::setContent(std::shared_ptr<const ChartContent> content, const ChartLooks& looks) {
    clearContent();
    content_ = std::move(content);
    looks_ = looks;
    setBackground(looks_.Background);
    const ChartData& chart = content_->data;
    title_ = std::make_unique<ChartText>(this, chart.Title, looks_.font(chart.TitleFont), looks_.titleColor(chart),
                                         Qt::AlignHCenter);
    footnote_ =
        std::make_unique<ChartText>(this, chart.Footnote, looks_.font(chart.NoteFont), looks_.Text, Qt::AlignLeft);
    legend_ = std::make_unique<ChartLegend>(this, *content_, looks_);
    if (chart.RowCount == 0) return;
    if (chart.Style == eChartAs3D && !content_->series.empty()) {
        solid_ = std::make_unique<Chart3D>(this, *content_, looks_, locale_);
    } else {
        makeAxes();
        if (chart.Map) {
            makeMap();
        } else {
            makeSeries();
        }
        setView(wholeView());
    }
}

void ChartPlot::makeAxes() {
    const ChartData& chart = content_->data;
    axisRect_ = std::make_unique<QCPAxisRect>(this, true);
    axisRect_->setMinimumMargins(QMargins(kMargin, kMargin / 2, 2 * kMargin, 0));
    axisRect_->setRangeZoom({});
    categories_.reset(new CategoryTicker(*content_));
    times_.reset(content_->data.RowBegins.empty() ? nullptr : new TimeTicker(*content_));
    primaryValues_.reset(new ValueTicker(locale_));
    secondaryValues_.reset(new ValueTicker(locale_));

    QCPAxis& rows = *axisRect_->axis(QCPAxis::atBottom);
    QCPAxis& primary = *axisRect_->axis(QCPAxis::atLeft);
    QCPAxis& secondary = *axisRect_->axis(QCPAxis::atRight);
    styleAxis(rows, chart.CategoryTitle);
    styleAxis(primary, chart.PrimaryTitle);
    styleAxis(secondary, chart.SecondaryTitle);
    styleAxis(*axisRect_->axis(QCPAxis::atTop), {});
    if (times_) {
        rows.setTicker(times_);
    } else {
        rows.setTicker(categories_);
    }
    primary.setTicker(primaryValues_);
    secondary.setTicker(secondaryValues_);
    rows.grid()->setVisible(!content_->hasSeriesAsRows());
    secondary.grid()->setVisible(false);
    secondary.setTickLabels(chart.HasSecondaryAxis);
    secondary.setTicks(chart.HasSecondaryAxis);
    secondary.setVisible(true);
    QCPAxis& top = *axisRect_->axis(QCPAxis::atTop);
    top.setVisible(true);
    top.setTicks(false);
    top.setTickLabels(false);

    shade_ = std::make_unique<ExcludedShade>(&rows, *content_, looks_);
    lines_ = std::make_unique<LevelLines>(&primary, *content_, looks_);
    rangeBand_ = std::make_unique<RangeBand>(&rows, looks_);
    readOut_ = std::make_unique<ReadOut>(&rows, std::pair(&primary, &secondary), *content_, looks_, locale_);
}

// The map takes the place of series; the right axis belongs to the scale of its colours.
void ChartPlot::makeMap() {
    const ChartData& chart = content_->data;
    QCPAxis& bands = *axisRect_->axis(QCPAxis::atLeft);
    axisRect_->setMinimumMargins(QMargins(kMargin, kMargin / 2, kMargin / 2, 0));
    bands_.reset(new BandTicker(*content_));
    bands.setTicker(bands_);
    axisRect_->axis(QCPAxis::atRight)->setLabel({});
    map_ = std::make_unique<LevelMapPlot>(*axisRect_, *content_, looks_);
    scale_ = std::make_unique<QCPColorScale>(this);
    scale_->setType(QCPAxis::atRight);
    scale_->setBarWidth(kScaleWidth);
    scale_->setGradient(levelGradient());
    scale_->setDataRange(rangeOf(content_->valueRange(ChartAxis::Secondary)));
    scale_->setRangeDrag(false);
    styleAxis(*scale_->axis(), chart.SecondaryTitle);
    scale_->axis()->setTicker(secondaryValues_);
    auto* const margins = new QCPMarginGroup(this); // the plot owns it
    axisRect_->setMarginGroup(QCP::msTop | QCP::msBottom, margins);
    scale_->setMarginGroup(QCP::msTop | QCP::msBottom, margins);
}

void ChartPlot::styleAxis(QCPAxis& axis, const std::string& title) const {
    const QFont font = looks_.font(content_->data.AxisFont);
    axis.setLayer("axes");
    axis.grid()->setLayer("grid");
    axis.setLabel(QString::fromStdString(title));
    axis.setLabelFont(font);
    axis.setLabelColor(looks_.axisTitleColor(content_->data));
    axis.setLabelPadding(title.empty() ? 0 : 6);
    axis.setTickLabelFont(font);
    axis.setTickLabelColor(looks_.Text);
    axis.setTickLabelPadding(6);
    axis.setBasePen(QPen(looks_.Frame, 1));
    axis.setTickPen(QPen(looks_.Frame, 1));
    axis.setTickLength(0, 4);
    axis.setSubTicks(false);
    axis.grid()->setPen(QPen(looks_.Grid, 1, Qt::DotLine));
    axis.grid()->setZeroLinePen(Qt::NoPen);
    axis.grid()->setSubGridVisible(false);
}

// What is created later is drawn on top: first the curves to compare with, then the other series from the last to the
// first, which is the most important.
void ChartPlot::makeSeries() {
    const std::size_t references = std::min(content_->data.ReferenceSeries, content_->series.size());
    for (std::size_t i = 0; i < references; ++i)
        makeOne(i);
    for (std::size_t i = content_->series.size(); i > references; --i)
        makeOne(i - 1);
}

void ChartPlot::makeOne(std::size_t drawn) {
    QCPAxis* const rows = axisRect_->axis(QCPAxis::atBottom);
    const bool isPrimary = content_->series[drawn]->Axis == ChartAxis::Primary;
    QCPAxis* const values = axisRect_->axis(isPrimary ? QCPAxis::atLeft : QCPAxis::atRight);
    if (content_->data.Shape == ChartShape::Line) {
        new SeriesLine(rows, values, *content_, drawn, looks_); // the plot owns it
    } else {
        new SeriesBars(rows, values, *content_, drawn, looks_, locale_);
    }
}

void ChartPlot::showParts(bool isLegendShown, bool isFootnoteShown) {
    isLegendShown_ = isLegendShown;
    isFootnoteShown_ = isFootnoteShown;
}

// A line with many rows reaches from edge to edge; few rows, and bars, are drawn in the middle of their own width.
ChartView ChartPlot::wholeView() const {
    const auto rows = static_cast<double>(content_->data.RowCount);
    const double half = content_->data.Shape == ChartShape::Line && rows > kFewRows ? 0 : 0.5;
    return {{-half, rows - 1 + half},
            rangeOf(content_->valueRange(ChartAxis::Primary)),
            rangeOf(content_->valueRange(ChartAxis::Secondary))};
}

ChartView ChartPlot::view() const {
    return {axisRect_->axis(QCPAxis::atBottom)->range(), axisRect_->axis(QCPAxis::atLeft)->range(),
            axisRect_->axis(QCPAxis::atRight)->range()};
}

void ChartPlot::setView(const ChartView& view) {
    const ChartView whole = wholeView();
    axisRect_->axis(QCPAxis::atBottom)->setRange(within(view.rows, whole.rows, kLeastRows));
    axisRect_->axis(QCPAxis::atLeft)
        ->setRange(within(view.primary, whole.primary, whole.primary.size() / kDeepestZoom));
    axisRect_->axis(QCPAxis::atRight)
        ->setRange(within(view.secondary, whole.secondary, whole.secondary.size() / kDeepestZoom));
}

QSize ChartPlot::minimumSizeHint() const {
    return kSmallest.expandedTo(QSize(0, kFewestLines * fontMetrics().height()));
}

// Where there is little room, the plot comes before the parts around it. How much the axes leave to it is known only
// once they are laid out.
void ChartPlot::updateLayout() {
    const int least = isLegendWhole_ ? 1 : kLeastPlot; // a picture keeps its parts as long as there is a plot
    int side = 0;                                      // of the plot, the shorter one
    for (int spared = 0; side < least && spared <= kPartsToSpare; ++spared) {
        if (content_) placeParts(spared);
        QCustomPlot::updateLayout();
        side = body() == nullptr ? least : std::min(body()->rect().width(), body()->rect().height());
    }
    // In an area of less than nothing the axes would run the other way.
    for (int i = 0; i < layerCount(); ++i)
        layer(i)->setVisible(side > 0);
}

// The owner has the focus, and is covered by the plot.
void ChartPlot::paintEvent(QPaintEvent* event) {
    QCustomPlot::paintEvent(event);
    if (parentWidget() == nullptr || !parentWidget()->hasFocus()) return;
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Highlight), kFocus, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(rect().adjusted(kFocus / 2, kFocus / 2, -kFocus / 2, -kFocus / 2));
}

bool ChartPlot::cutsFootnote(const QSize& size) {
    setViewport(QRect(QPoint(), size));
    updateLayout();
    return footnote_->visible() && footnote_->isCut();
}

double ChartPlot::plotHeight(const QSize& size) {
    setViewport(QRect(QPoint(), size));
    updateLayout();
    return body() == nullptr ? size.height() : body()->rect().height();
}

QCPLayoutElement* ChartPlot::body() const {
    if (axisRect_) return axisRect_.get();
    return solid_.get();
}

std::vector<QCPLayoutElement*> ChartPlot::parts() const {
    std::vector<QCPLayoutElement*> parts = {title_.get(), legend_.get(), footnote_.get()};
    if (body() != nullptr) parts.push_back(body());
    if (scale_) parts.push_back(scale_.get());
    return parts;
}

// Arranges the parts, without so many of those that can be spared. Their sizes depend on that of the page, so this is
// done for each layout.
void ChartPlot::placeParts(int spared) {
    const bool hasNote = spared < 1 && isFootnoteShown_ && !footnote_->isEmpty();
    const bool hasTitle = spared < 2 && !title_->isEmpty();
    const bool hasLegend = spared < 3 && isLegendShown_ && body() != nullptr && !legend_->isEmpty();
    for (QCPLayoutElement* part : parts()) {
        if (part->layout() != nullptr) part->layout()->take(part);
        part->setVisible(false);
    }
    plotLayout()->clear();
    plotLayout()->simplify();

    const QSize page = viewport().size() - QSize(2 * kMargin, 2 * kMargin);
    const int mostHeight = static_cast<int>(page.height() * kMostOfHeight);
    QSize room = page;
    for (const auto& [text, isShown] : {std::pair(title_.get(), hasTitle), std::pair(footnote_.get(), hasNote)}) {
        if (!isShown) continue;
        text->fit(page.width(), mostHeight);
        room.rheight() -= text->minimumSize().height() + kSpacing;
    }
    auto* const middle = new QCPLayoutGrid; // the layout owns it
    middle->setColumnSpacing(kSpacing);
    if (hasTitle) place(title_.get(), *plotLayout());
    place(middle, *plotLayout());
    // Without it the grid would be empty and leave no width for the texts.
    place(body() != nullptr ? body() : new QCPLayoutElement(this), *middle);
    if (scale_) place(scale_.get(), *middle);
    if (hasLegend) {
        if (isLegendBeside(room)) {
            legend_->fitBeside(room.height());
            room.rwidth() -= legend_->minimumSize().width() + kSpacing;
            place(legend_.get(), *middle);
        } else {
            legend_->fitBelow(page.width(), isLegendWhole_ ? page.height() : mostHeight);
            room.rheight() -= legend_->minimumSize().height() + kSpacing;
            place(legend_.get(), *plotLayout());
        }
    }
    if (hasNote) place(footnote_.get(), *plotLayout());
    if (axisRect_) fitLabels(room);
}

bool ChartPlot::isLegendBeside(const QSize& room) const {
    return legend_->rowsBelow(room.width()) > kRowsBelow &&
           legend_->widthBeside(room.height()) <= room.width() * kMostOfWidth;
}

// Fits the labels of the axes to the approximate space that the axes will have.
void ChartPlot::fitLabels(const QSize& room) {
    QCPAxis& rows = *axisRect_->axis(QCPAxis::atBottom);
    const QFontMetrics metrics(rows.tickLabelFont());
    const bool hasSecondary = content_->data.HasSecondaryAxis;
    const int sides = (hasSecondary ? 2 : 1) * 4 * metrics.height() + 2 * kMargin;
    const int width = std::max(1, room.width() - sides);
    const int height = std::max(1, room.height() - 4 * metrics.height());
    if (times_) times_->fit(width, metrics);
    rows.setTickLabelRotation(times_ ? 0 : categories_->fit(rows.range(), width, metrics));
    fitTitle(&rows, content_->data.CategoryTitle, width);
    fitTitle(axisRect_->axis(QCPAxis::atLeft), content_->data.PrimaryTitle, height);
    fitTitle(scale_ ? scale_->axis() : axisRect_->axis(QCPAxis::atRight), content_->data.SecondaryTitle, height);
    primaryValues_->fit(height, metrics);
    if (bands_) bands_->fit(height, metrics);
    secondaryValues_->fit(height, metrics);
}

} // namespace kestrane
