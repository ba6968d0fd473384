#include "desktop/tabLog.h"

#include "app/HelpPages.h"
#include "desktop/StartPage.h"
#include "desktop/fraZoom.h"
#include "desktop/pages/ChoicesBar.h"
#include "desktop/pages/ComparisonPage.h"
#include "desktop/pages/CriteriaPage.h"
#include "desktop/pages/ExposurePage.h"
#include "desktop/pages/FiguresPage.h"
#include "desktop/pages/TablePage.h"
#include "desktop/pages/TimePage.h"
#include "dialogs/Palettes.h"
#include "dialogs/Words.h"
#include "explorer/NodeKeys.h"
#include "reports/Report.h"
#include "views/CaptionHints.h"
#include "views/LogWarnings.h"

#include <QApplication>
#include <QBoxLayout>
#include <QContextMenuEvent>
#include <QLabel>
#include <QPainter>
#include <QProxyStyle>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTabBar>

namespace kestrane {

namespace {

constexpr int kMargin = 8; // pixels

// What the reader of the figures in view has to know, a sentence a line.
std::string warningsInView(const Session& session, const ExplorerState& state) {
    const std::string warnings = logWarnings(*state.LogInView(session));
    const std::string selection = state.ZoomRange.otherSelectionLine(*state.OpenedLog(session));
    return warnings + (warnings.empty() || selection.empty() ? "" : "\n") + selection;
}

// Tabs with less space beside their text, so that all of them fit into a window 1024 pixels wide.
class NarrowTabs : public QProxyStyle {
public:
    NarrowTabs() : QProxyStyle(QStyleFactory::create(QApplication::style()->name())) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        const int usual = QProxyStyle::pixelMetric(metric, option, widget);
        constexpr int kNarrower = 5;
        if (metric == PM_TabBarScrollButtonWidth) return std::max(usual, kLeastHit);
        return metric == PM_TabBarTabHSpace ? usual / kNarrower : usual;
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        return type == CT_TabBarTab ? size.expandedTo({0, kLeastHit}) : size;
    }

    // A line under the tab in front: its shade alone is hard to see, and in high contrast there is none.
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        QProxyStyle::drawControl(element, option, painter, widget);
        if (element != CE_TabBarTabShape || !option->state.testFlag(State_Selected)) return;
        constexpr int kLine = 2; // pixels
        const QRect line(option->rect.left(), option->rect.bottom() + 1 - kLine, option->rect.width(), kLine);
        painter->fillRect(line, option->palette.color(QPalette::Highlight));
    }
};

// The captions that tabs take on, from the left, until all of them fit beside each other.
constexpr std::array<Text::Id, kAllLogTabs.size()> kShortCaptions = {
    Text::TabFullLog,           Text::ShortIntervalsTable,   Text::ShortIntervalsGraph,
    Text::ShortCumulativeGraph, Text::ShortNoiseRating,      Text::ShortCompareHPD,
    Text::ShortCumulativeData,  Text::TabExposureCalculator, Text::TabCriteria};

QString hintOf(const Session& session, LogTab tab) {
    const std::string caption = session.LoadText(tabRow(tab).Caption);
    const std::string hint = captionHint(session, caption);
    return shown(hint.empty() ? caption : hint);
}

// A caption that is shortened can be read in full as a tool tip, and is read out in full.
class TabsOfLog : public QTabBar {
public:
    explicit TabsOfLog(const Session& session) {
        setStyle(new NarrowTabs);
        style()->setParent(this);
        for (const LogTab tab : kAllLogTabs) {
            whole_.append(loadText(session, tabRow(tab).Caption));
            short_.append(loadText(session, kShortCaptions[static_cast<std::size_t>(tab)]));
            addTab(whole_.back());
            setAccessibleTabName(tab, whole_.back());
        }
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        for (int tab = 0; tab < count(); ++tab)
            setTabText(tab, whole_[tab]);
        for (int tab = 0; tab < count() && sizeHint().width() > width(); ++tab)
            setTabText(tab, short_[tab]);
        QTabBar::resizeEvent(event);
    }

private:
    QStringList whole_, short_;
};

} // namespace

tabLog::tabLog(Session& session, ExplorerState& state, QWidget* parent) :
    QWidget(parent), session_(session), state_(state) {
    makeTabs();
    makePages();
    makeBars();
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(tabs_);
    column->addWidget(choices_);
    column->addWidget(wholeFiguresBar());
    column->addWidget(warningsBar());
    column->addWidget(stack_, 1);
    ShowLog();
}

void tabLog::makeTabs() {
    tabs_ = new TabsOfLog(session_);
    nameControl(*tabs_, "tabLog", loadText(session_, Text::ViewOfTheLog));
    tabs_->setExpanding(false);
    tabs_->setFocusPolicy(Qt::StrongFocus);
    tabs_->setUsesScrollButtons(true);
    tabs_->setDrawBase(false);
    connect(tabs_, &QTabBar::currentChanged, this, [this](int tab) {
        const clsLog* log = state_.LogInView(session_);
        if (isSetting_ || log == nullptr) return;
        if (state_.View.chooseTab(static_cast<LogTab>(tab), *log)) return tabClick();
        // Assistive programs can press even a tab that is disabled.
        const QScopedValueRollback setting(isSetting_, true);
        tabs_->setCurrentIndex(state_.View.Tab);
    });
}

void tabLog::makePages() {
    timeGraph_ = new TimePage(session_, state_);
    comparison_ = new ComparisonPage(session_, state_);
    exposures_ = new ExposurePage(session_, state_);
    graphs_ = {timeGraph_, new GraphPage(session_, state_, eTabIntervalsGraph),
               new GraphPage(session_, state_, eTabCumulativeGraph), new GraphPage(session_, state_, eTabNoiseRating),
               comparison_};
    pages_ = {graphs_[0],
              new TablePage(session_, state_),
              graphs_[1],
              graphs_[2],
              graphs_[3],
              graphs_[4],
              new FiguresPage(session_, state_),
              exposures_,
              new CriteriaPage(session_, state_)};
    placeholder_ = placeholderLabel();
    start_ = new StartPage(session_);
    stack_ = new QStackedWidget;
    stack_->addWidget(placeholder_);
    stack_->addWidget(start_);
    for (LogPage* page : pages_) {
        stack_->addWidget(page);
        connect(page, &LogPage::Changed, this, &tabLog::TabChanged);
    }
    connect(timeGraph_, &GraphPage::ViewChanged, this, &tabLog::offerRowsInView);
    connect(comparison_, &ComparisonPage::DatabaseDownloadAsked, this, &tabLog::DatabaseDownloadAsked);
    connect(comparison_, &ComparisonPage::ProtectorAsked, this, &tabLog::ProtectorAsked);
    connect(comparison_, &ComparisonPage::RankAsked, this, &tabLog::RankAsked);
    connect(comparison_, &ComparisonPage::ProtectorChosen, this, &tabLog::tabClick);
}

void tabLog::makeBars() {
    choices_ = new ChoicesBar(session_, state_);
    for (LogPage* page : pages_)
        if (QWidget* const bar = page->Bar(); bar != nullptr) choices_->Add(*bar);
    fraZoom_ = new fraZoom(session_, state_.ZoomRange);
    choices_->Add(*fraZoom_);
    connect(choices_, &ChoicesBar::Chosen, this, &tabLog::tabClick);
    connect(fraZoom_, &fraZoom::ApplyZoom, this, &tabLog::applyZoom);
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

QLabel* tabLog::warningsBar() {
    lblWarnings_ = new QLabel;
    lblWarnings_->setObjectName("lblLogWarnings");
    lblWarnings_->setAutoFillBackground(true);
    lblWarnings_->setBackgroundRole(QPalette::ToolTipBase);
    lblWarnings_->setForegroundRole(QPalette::ToolTipText);
    lblWarnings_->setWordWrap(true);
    lblWarnings_->setMargin(kMargin / 2);
    return lblWarnings_;
}

LogPage& tabLog::front() const {
    return *pages_[static_cast<std::size_t>(state_.View.Tab)];
}

void tabLog::ShowLog() {
    if (const clsLog* log = state_.LogInView(session_); log != nullptr) {
        choices_->ShowLog(*log);
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
    state_.View.followPanelSetting(static_cast<PanelForm>(session_.Options.CumulativePanel));
    isRedrawn ? Redraw() : tabClick();
}

void tabLog::tabClick() {
    clsLog* log = state_.LogInView(session_);
    if (log != nullptr) {
        state_.View.dropUnfitEntry(*log);
        if (tabRow(state_.View.Tab).Panels.Protector) state_.View.dropUnfitProtector(*log);
    }
    ShowControls();
    if (log == nullptr) return;
    stack_->setCurrentWidget(&front());
    if (state_.View.takeDrawing()) front().Draw(*log);
    emit TabChanged();
}

void tabLog::ShowControls() {
    const QScopedValueRollback setting(isSetting_, true);
    const clsLog* log = state_.LogInView(session_);
    for (LogPage* page : pages_)
        page->Follow(log);
    tabs_->setVisible(log != nullptr);
    if (log == nullptr) return showNoLog();
    const TabFlags enabled = enabledTabs(*log);
    for (const LogTab tab : kAllLogTabs) {
        const bool isEnabled = enabled[static_cast<std::size_t>(tab)];
        tabs_->setTabEnabled(tab, isEnabled);
        tabs_->setTabToolTip(tab, isEnabled ? hintOf(session_, tab) : loadText(session_, tabRow(tab).Lack));
    }
    tabs_->setCurrentIndex(state_.View.Tab);
    for (LogPage* page : pages_)
        if (QWidget* const bar = page->Bar(); bar != nullptr) bar->setVisible(page == &front());
    fraZoom_->setVisible(IsZoomShown());
    fraWholeFigures_->setVisible(shownPanels(*log, state_.View.Tab).WholeFigures);
    lblWarnings_->setText(shown(warningsInView(session_, state_)));
    lblWarnings_->setVisible(!lblWarnings_->text().isEmpty());
    choices_->ShowChoices(*log);
}

void tabLog::showNoLog() {
    choices_->hide();
    fraWholeFigures_->hide();
    lblWarnings_->hide();
    const bool isLoading = state_.Content(session_) == LogContent::Loading;
    placeholder_->setText(isLoading ? loadText(session_, Text::StillLoading)
                                    : loadText(session_, Text::NoLogIsOnDisplay) + "\n\n" +
                                          loadText(session_, Text::ChooseALog));
    if (session_.OpenFiles.empty()) start_->ShowFiles();
    stack_->setCurrentWidget(session_.OpenFiles.empty() ? static_cast<QWidget*>(start_) : placeholder_);
}

bool tabLog::HasContent() const {
    return state_.LogInView(session_) != nullptr && front().HasContent();
}

bool tabLog::HasLog() const {
    return state_.LogInView(session_) != nullptr;
}

std::string_view tabLog::HelpTopic() const {
    return helpTopic(state_.View.Tab, state_.LogInView(session_)->objLogOptions.ChartStyle == eChartAs3D);
}

ClipboardForms tabLog::CopyData(bool valuesOnly) const {
    const clsLog* log = state_.LogInView(session_);
    return log == nullptr ? ClipboardForms() : front().Copy(*log, valuesOnly);
}

std::unique_ptr<PagedDocument> tabLog::CurrentView(const PageMetrics& paper) const {
    const Node opened = resolve(session_, state_.View.Key);
    const clsLog* log = state_.LogInView(session_);
    if (log == nullptr || opened.log == nullptr) return nullptr;
    return front().Pages({*opened.file, *log, state_.View.Tab, isModified(*opened.log, *log), paper});
}

void tabLog::ExportPicture() {
    const clsLog* log = state_.LogInView(session_);
    auto* const graph = qobject_cast<GraphPage*>(&front());
    if (log != nullptr && graph != nullptr) graph->ExportPicture(*log);
}

void tabLog::ShowChartTable() {
    if (const auto* const graph = qobject_cast<GraphPage*>(&front()); graph != nullptr) graph->ShowTable();
}

void tabLog::contextMenuEvent(QContextMenuEvent* event) {
    if (state_.LogInView(session_) == nullptr) return;
    if (!isAncestorOf(QApplication::focusWidget())) tabs_->setFocus(); // its commands apply to the log
    emit PopUpMenuAsked(event->globalPos());
}

} // namespace kestrane
