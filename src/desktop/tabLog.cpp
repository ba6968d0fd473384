#include "desktop/tabLog.h"

#include "charts/chaTab.h"
#include "desktop/CumulativePanelView.h"
#include "desktop/FlowLayout.h"
#include "desktop/StartPage.h"
#include "desktop/fraZoom.h"
#include "desktop/grdDose.h"
#include "desktop/grdTable.h"
#include "dialogs/Words.h"
#include "explorer/BandChart.h"
#include "explorer/CalculationEntries.h"
#include "explorer/Edits.h"
#include "explorer/HPDChart.h"
#include "explorer/IntervalTable.h"
#include "explorer/NodeKeys.h"
#include "explorer/NoiseRatingChart.h"
#include "explorer/TimeChart.h"

#include <QApplication>
#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QProxyStyle>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QStyleFactory>
#include <QTabBar>

#include <utility>

namespace kestrane {

namespace {

constexpr int kMargin = 8;
constexpr Text::Id kCaptions[kLogTabs] = {Text::TabFullLog,         Text::TabIntervalsTable,    Text::TabIntervalsGraph,
                                          Text::TabCumulativeGraph, Text::TabNoiseRating,       Text::TabCompareHPD,
                                          Text::TabCumulativeData,  Text::TabExposureCalculator};

// Lets code set controls without their handlers taking it for the user's doing.
class Setting {
public:
    explicit Setting(bool& flag) : flag_(flag), before_(flag) { flag = true; }

    ~Setting() { flag_ = before_; }

    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

private:
    bool& flag_;
    bool before_;
};

// Tabs with half the usual room beside their text: all eight fit into a window 1024 pixels wide.
class NarrowTabs : public QProxyStyle {
public:
    NarrowTabs() : QProxyStyle(QStyleFactory::create(QApplication::style()->name())) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        const int usual = QProxyStyle::pixelMetric(metric, option, widget);
        return metric == PM_TabBarTabHSpace ? usual / 2 : usual;
    }
};

} // namespace

tabLog::tabLog(Session& session, ExplorerState& state, QWidget* parent) :
    QWidget(parent), session_(session), state_(state) {
    tabs_ = new QTabBar;
    auto* const narrow = new NarrowTabs;
    narrow->setParent(tabs_);
    tabs_->setStyle(narrow);
    nameControl(*tabs_, "tabLog", loadText(session, Text::ViewOfTheLog));
    tabs_->setExpanding(false);
    tabs_->setFocusPolicy(Qt::StrongFocus);
    tabs_->setUsesScrollButtons(true);
    tabs_->setDrawBase(false);
    for (const Text::Id caption : kCaptions)
        tabs_->addTab(loadText(session, caption));

    placeholder_ = new QLabel;
    placeholder_->setAlignment(Qt::AlignCenter);
    placeholder_->setWordWrap(true);
    placeholder_->setForegroundRole(QPalette::PlaceholderText);
    start_ = new StartPage(session);
    table_ = new grdTable(session);
    panels_ = new CumulativePanelView(session);
    exposures_ = new grdDose(session, [this] { return state_.OpenedLog(session_); });
    pages_ = new QStackedWidget;
    for (QWidget* page : std::initializer_list<QWidget*>{placeholder_, start_, table_, panels_, exposures_})
        pages_->addWidget(page);
    options_ = optionsBar();

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tabs_);
    column->addWidget(options_);
    column->addWidget(wholeFiguresBar());
    column->addWidget(pages_, 1);

    connect(tabs_, &QTabBar::currentChanged, this, [this](int tab) {
        const clsLog* log = state_.LogInView(session_);
        if (isSetting_ || log == nullptr || !state_.View.chooseTab(tab, *log)) return;
        tabClick();
    });
    connect(panels_, &CumulativePanelView::ApplyChanges, this, &tabLog::applyChanges);
    connect(panels_, &CumulativePanelView::RevertChanges, this, [this] {
        if (clsLog* log = state_.LogInView(session_); log != nullptr) drawPanels(*log);
    });
    ShowLog();
}

QWidget* tabLog::buttonsOf(const char* frame, Text::Id caption, QButtonGroup*& group,
                           std::initializer_list<Text::Id> texts) {
    auto* const box = new QWidget;
    box->setObjectName(QLatin1String(frame));
    auto* const row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    if (caption != Text::None) row->addWidget(new QLabel(loadText(session_, caption)));
    group = new QButtonGroup(box);
    for (const Text::Id text : texts) {
        QRadioButton* const button = radioButton(session_, text, "", false);
        group->addButton(button, static_cast<int>(group->buttons().size()));
        row->addWidget(button);
    }
    return box;
}

QWidget* tabLog::protectorBar() {
    auto* const bar = new QWidget;
    bar->setObjectName("fraProtector");
    QPushButton* const cmdHPD = pushButton(session_, Text::HearingProtectorButton, "cmdHPD",
                                           loadPlainText(session_, Text::HearingProtectorButton));
    fraHPD_ = new QLabel;
    fraHPD_->setObjectName("fraHPD");
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2 * kMargin);
    row->addWidget(cmdHPD);
    row->addWidget(fraHPD_);
    connect(cmdHPD, &QPushButton::clicked, this, &tabLog::ProtectorAsked);
    return bar;
}

QWidget* tabLog::wholeFiguresBar() {
    fraWholeFigures_ = new QWidget;
    fraWholeFigures_->setObjectName("fraWholeFigures");
    fraWholeFigures_->setAutoFillBackground(true);
    fraWholeFigures_->setBackgroundRole(QPalette::ToolTipBase);
    auto* const line = new QLabel(loadText(session_, Text::FiguresOfWholeLog));
    line->setForegroundRole(QPalette::ToolTipText);
    line->setWordWrap(true);
    QPushButton* const button = pushButton(session_, Text::RecalculateTheRange, "cmdRecalculateRange",
                                           loadPlainText(session_, Text::RecalculateTheRange));
    auto* const row = new QHBoxLayout(fraWholeFigures_);
    row->setContentsMargins(kMargin, kMargin / 2, kMargin, kMargin / 2);
    row->addWidget(line, 1);
    row->addWidget(button);
    connect(button, &QPushButton::clicked, this, [this] { state_.ZoomRange.RecalculateRange(); });
    return fraWholeFigures_;
}

QWidget* tabLog::exposureBar() {
    auto* const bar = new QWidget;
    bar->setObjectName("fraDose");
    chkSave_ = checkBox(session_, Text::SaveWithTheLog, "chkSave", false);
    QPushButton* const cmdInsertRows = pushButton(session_, Text::CommandInsertRowS, "cmdInsertRows",
                                                  loadPlainText(session_, Text::CommandInsertRowS));
    cmdDeleteRows_ = pushButton(session_, Text::CommandDeleteRowS, "cmdDeleteRows",
                                loadPlainText(session_, Text::CommandDeleteRowS));
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    for (QWidget* control : std::initializer_list<QWidget*>{cmdInsertRows, cmdDeleteRows_, chkSave_})
        row->addWidget(control);
    connect(cmdInsertRows, &QPushButton::clicked, this, &tabLog::InsertRows);
    connect(cmdDeleteRows_, &QPushButton::clicked, this, &tabLog::DeleteRows);
    connect(chkSave_, &QCheckBox::toggled, this, [this](bool isSaved) {
        if (clsLog* log = isSetting_ ? nullptr : state_.OpenedLog(session_); log != nullptr)
            editLog(*log, Text::StepExposureRows, [&] { return std::exchange(log->SaveDoseCalc, isSaved) != isSaved; });
    });
    connect(exposures_, &grdDose::CurrentRowChanged, this, [this] {
        cmdDeleteRows_->setEnabled(exposures_->IsOnRow());
        emit TabChanged();
    });
    return bar;
}

QWidget* tabLog::optionsBar() {
    fraDisplayBy_ = buttonsOf("fraDisplayBy", Text::None, optDisplayBy_, {Text::ByFrequency, Text::ByParameter});
    cboDisplayBy_ = new QComboBox;
    nameControl(*cboDisplayBy_, "cboDisplayBy", loadText(session_, Text::DisplayBy));
    cboDisplayBy_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    auto& displayBy = *qobject_cast<QHBoxLayout*>(fraDisplayBy_->layout());
    displayBy.insertWidget(0, labelOf(session_, Text::DisplayLabel, *cboDisplayBy_));
    displayBy.addWidget(cboDisplayBy_);
    fraAxis_ = buttonsOf("fraAxis", Text::None, optAxis_, {Text::Decibel, Text::Percent});
    fraTable_ = buttonsOf("fraTable", Text::ChannelLabel, optChannelX_, {Text::ChannelA, Text::ChannelB});
    fraDfltCum_ = buttonsOf("fraDfltCum", Text::PanelLabel, optCumPanels_,
                            {Text::ChannelsAAndB, Text::FullChannelA, Text::PanelAdvanced});
    fraInterval_ = new QWidget;
    auto* const interval = new QHBoxLayout(fraInterval_);
    interval->setContentsMargins(0, 0, 0, 0);
    lstInterval_ = intervalBox(intervals_);
    nameControl(*lstInterval_, "lstInterval", loadText(session_, Text::IntervalWord));
    interval->addWidget(labelOf(session_, Text::IntervalChoice, *lstInterval_));
    interval->addWidget(lstInterval_);

    fraProtector_ = protectorBar();
    fraDose_ = exposureBar();
    fraZoom_ = new fraZoom(session_, state_.ZoomRange);
    connect(fraZoom_, &fraZoom::ApplyZoom, this, &tabLog::applyZoom);

    auto* const bar = new QWidget;
    auto* const row = new FlowLayout(2 * kMargin, kMargin / 2);
    bar->setLayout(row);
    row->setContentsMargins(kMargin, kMargin / 2, kMargin, kMargin / 2);
    for (QWidget* panel : std::initializer_list<QWidget*>{fraInterval_, fraDisplayBy_, fraAxis_, fraTable_, fraDfltCum_,
                                                          fraProtector_, fraDose_, fraZoom_})
        row->addWidget(panel);

    const auto onLog = [this](auto choose) {
        return [this, choose](int value) {
            clsLog* log = isSetting_ ? nullptr : state_.LogInView(session_);
            if (log != nullptr && choose(value)) tabClick();
        };
    };
    // Assistive programs toggle a button, which is no click.
    const auto onButton = [&onLog](auto choose) {
        return [handle = onLog(choose)](int id, bool isOn) {
            if (isOn) handle(id);
        };
    };
    LogView& view = state_.View;
    connect(optDisplayBy_, &QButtonGroup::idToggled, this, onButton([&view](int mode) {
                view.chooseListMode(mode);
                return true;
            }));
    connect(cboDisplayBy_, &QComboBox::activated, this, onLog([this, &view](int index) {
                const auto list = displayByList(*state_.LogInView(session_), view.ListMode());
                return view.chooseEntry(list[static_cast<std::size_t>(index)].Choice);
            }));
    connect(optAxis_, &QButtonGroup::idToggled, this,
            onButton([&view](int axis) { return view.chooseAxis(kByDecibels + axis); }));
    connect(optChannelX_, &QButtonGroup::idToggled, this,
            onButton([&view](int channel) { return view.chooseChannel(kChannelA + channel); }));
    connect(optCumPanels_, &QButtonGroup::idToggled, this,
            onButton([&view](int panel) { return view.choosePanel(panel); }));
    connect(lstInterval_, &QComboBox::currentIndexChanged, this,
            onLog([&view](int index) { return index >= 0 && view.chooseInterval(index + 1); }));
    return bar;
}

void tabLog::ShowLog() {
    if (const clsLog* log = state_.LogInView(session_); log != nullptr) {
        const Setting setting(isSetting_);
        intervals_.SetLog(*log);
        lstInterval_->setCurrentIndex(static_cast<int>(state_.View.IntervalRow) - 1);
        fraZoom_->ShowLog(*state_.OpenedLog(session_));
    }
    tabClick();
}

void tabLog::Redraw() {
    if (const clsLog* opened = state_.OpenedLog(session_); opened != nullptr) state_.ZoomRange.follow(*opened);
    state_.View.ResetTabs();
    tabClick();
}

void tabLog::FollowSettings(bool isRedrawn) {
    state_.View.followPanelSetting(session_.Options.CumulativePanel);
    isRedrawn ? Redraw() : tabClick();
}

void tabLog::tabClick() {
    clsLog* log = state_.LogInView(session_);
    if (log != nullptr) state_.View.dropUnfitEntry(*log);
    ShowControls();
    if (log == nullptr) return;
    if (state_.View.Tab == eTabCompareHPD) state_.View.dropUnfitProtector(*log);
    choosePage();
    if (state_.View.takeDrawing()) drawTab(*log);
    emit TabChanged();
}

void tabLog::ShowControls() {
    const Setting setting(isSetting_);
    const clsLog* log = state_.LogInView(session_);
    exposures_->ForgetOtherLog();
    tabs_->setVisible(log != nullptr);
    if (log == nullptr) {
        options_->hide();
        fraWholeFigures_->hide();
        const bool isLoading = state_.Content(session_) == LogContent::Loading;
        placeholder_->setText(isLoading ? loadText(session_, Text::StillLoading)
                                        : loadText(session_, Text::NoLogIsOnDisplay) + "\n\n" +
                                              loadText(session_, Text::ChooseALog));
        if (session_.OpenFiles.empty()) start_->ShowFiles();
        pages_->setCurrentWidget(session_.OpenFiles.empty() ? static_cast<QWidget*>(start_) : placeholder_);
        return;
    }
    const TabFlags enabled = enabledTabs(*log);
    for (int tab = 0; tab < kLogTabs; ++tab)
        tabs_->setTabEnabled(tab, enabled[static_cast<std::size_t>(tab)]);
    tabs_->setCurrentIndex(state_.View.Tab);
    showChoices(*log);
}

void tabLog::showChoices(const clsLog& log) {
    const LogView& view = state_.View;
    const LogPanels panels = shownPanels(log, view.Tab);
    const bool hasPanelChoice = session_.Options.CumulativePanel != ePanelHidden;
    fraDisplayBy_->setVisible(panels.DisplayBy);
    fraAxis_->setVisible(panels.Axis);
    fraTable_->setVisible(panels.Channel);
    fraDfltCum_->setVisible(hasPanelChoice);
    fraInterval_->setVisible(panels.IntervalList);
    fraProtector_->setVisible(panels.Protector);
    fraDose_->setVisible(panels.ExposureRows);
    fraZoom_->setVisible(IsZoomShown());
    fraWholeFigures_->setVisible(panels.WholeFigures);
    options_->setVisible(panels.DisplayBy || panels.Axis || panels.Channel || hasPanelChoice || panels.IntervalList ||
                         panels.Protector || panels.ExposureRows || IsZoomShown());

    optDisplayBy_->button(kByParam)->setEnabled(panels.ByParam);
    optDisplayBy_->button(view.ListMode())->setChecked(true);
    optAxis_->button(view.Axis - kByDecibels)->setChecked(true);
    optChannelX_->button(view.Channel() - kChannelA)->setChecked(true);
    optCumPanels_->button(ePanelBothChannels)->setVisible(log.IsChannelBOn);
    optCumPanels_->button(cumulativePanelOf(log, view.Panel))->setChecked(true);
    chkSave_->setChecked(log.SaveDoseCalc);
    fillDisplayBy(log);
}

void tabLog::fillDisplayBy(const clsLog& log) {
    const std::vector<DisplayEntry> list = displayByList(log, state_.View.ListMode());
    cboDisplayBy_->clear();
    for (const DisplayEntry& entry : list)
        cboDisplayBy_->addItem(shown(entry.Text));
    cboDisplayBy_->setCurrentIndex(static_cast<int>(placeOf(state_.View.Choice(), list)));
}

// A chart's page is made on the first visit to its tab.
void tabLog::choosePage() {
    switch (state_.View.Tab) {
    case eTabIntervalsTable:
        pages_->setCurrentWidget(table_);
        break;
    case eTabCumulativeData:
        pages_->setCurrentWidget(panels_);
        break;
    case eTabExposureCalculator:
        pages_->setCurrentWidget(exposures_);
        break;
    case eTabCompareHPD:
        if (!state_.View.Protector) {
            placeholder_->setText(loadText(session_, Text::ChooseAProtector));
            pages_->setCurrentWidget(placeholder_);
            break;
        }
        [[fallthrough]];
    default:
        chart();
        pages_->setCurrentWidget(chartPages_[static_cast<std::size_t>(state_.View.Tab)]);
    }
}

chaTab& tabLog::chart() {
    const auto tab = static_cast<std::size_t>(state_.View.Tab);
    if (charts_[tab] == nullptr) {
        auto* const page = new QWidget; // stays when the chart is hidden for want of data
        auto* const layout = new QVBoxLayout(page);
        layout->setContentsMargins(0, 0, 0, 0);
        charts_[tab] = new chaTab(session_.locale);
        charts_[tab]->setObjectName("chaTab" + QString::number(tab));
        if (tab == eTabFullLog) connect(charts_[tab], &chaTab::ViewChanged, this, &tabLog::offerRowsInView);
        layout->addWidget(charts_[tab]);
        chartPages_[tab] = page;
        pages_->addWidget(page);
    }
    return *charts_[tab];
}

void tabLog::drawTab(clsLog& log) {
    using Draw = void (tabLog::*)(clsLog&);
    constexpr std::array<Draw, kLogTabs> kDraw = {
        &tabLog::drawTimeChart,   &tabLog::drawTable,      &tabLog::drawBandChart, &tabLog::drawBandChart,
        &tabLog::drawNoiseRating, &tabLog::drawComparison, &tabLog::drawPanels,    &tabLog::drawExposures};
    if (const Draw draw = kDraw[static_cast<std::size_t>(state_.View.Tab)]; draw != nullptr) (this->*draw)(log);
}

void tabLog::drawTimeChart(clsLog& log) {
    ChartData drawn = fullLogChart(&log, state_.View.Choice());
    const bool isDrawn =
        !isAskedBefore3D(log, drawn.Style) ||
        session_.ShowMessage(session_.LoadText(Text::Ask3DTakesTime), kButtonsYesNo + kIconQuestion) == Button::Yes;
    chaTab& cha = chart();
    cha.setVisible(isDrawn);
    if (!isDrawn) return;
    cha.setChart(std::move(drawn));
    if (!state_.View.ShowsLegend) cha.showLegend(false);
    cha.showFootnote(state_.View.ShowsNote);
}

void tabLog::drawTable(clsLog& log) {
    table_->SetTable(IntervalTable(log, state_.View.Channel(), state_.View.Choice()));
}

void tabLog::drawBandChart(clsLog& log) {
    const LogView& view = state_.View;
    const std::int64_t row = view.Tab == eTabIntervalsGraph ? view.IntervalRow : kWholeLog;
    std::optional<ChartData> drawn = bandChart(log, row, view.Choice(), view.Axis);
    chaTab& cha = chart();
    cha.setVisible(drawn.has_value());
    if (!drawn) {
        session_.ShowMessage(session_.LoadText(Text::NoAvailableData), kIconInformation);
        return;
    }
    cha.setChart(std::move(*drawn));
    if (!view.ShowsLegend) cha.showLegend(false);
}

void tabLog::drawNoiseRating(clsLog& log) {
    if (std::optional<ChartData> drawn = noiseRatingChart(log)) chart().setChart(std::move(*drawn));
}

void tabLog::drawPanels(clsLog& log) {
    panels_->ShowLog(log, state_.View.PanelBand(log), cumulativePanelOf(log, state_.View.Panel));
}

// Without a protector the screen to choose one comes up by itself, once the tab has been drawn.
void tabLog::drawComparison(clsLog& log) {
    const LogView& view = state_.View;
    showProtectorPanel({});
    if (view.Protector) {
        comparison_ = compareWithProtector(log, *view.Protector, session_.Options, view.CorrectionFactor);
        chart().setChart(hpdChart(log, comparison_));
        showProtectorPanel(comparison_.Panel);
    } else if (!view.IsComparisonDeclined) {
        QMetaObject::invokeMethod(this, &tabLog::ProtectorAsked, Qt::QueuedConnection);
    }
}

void tabLog::showProtectorPanel(const std::vector<std::pair<std::string, std::string>>& panel) {
    QString text;
    for (const auto& [label, value] : panel)
        text += (text.isEmpty() ? "" : "&nbsp;&nbsp;&nbsp; ") + shown(label).toHtmlEscaped() + "&nbsp;<b>" +
                shown(value).toHtmlEscaped() + "</b>";
    fraHPD_->setText(text);
    fraHPD_->setVisible(!panel.empty());
}

void tabLog::drawExposures(clsLog&) {
    if (clsLog* log = state_.OpenedLog(session_); log != nullptr) fillExposureRows(*log);
    exposures_->ShowRows();
}

void tabLog::contextMenuEvent(QContextMenuEvent* event) {
    if (state_.LogInView(session_) == nullptr) return;
    if (!isAncestorOf(QApplication::focusWidget())) tabs_->setFocus(); // its commands are of the log
    emit PopUpMenuAsked(event->globalPos());
}

} // namespace kestrane
