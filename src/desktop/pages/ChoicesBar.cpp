#include "desktop/pages/ChoicesBar.h"

#include "desktop/FlowLayout.h"
#include "dialogs/Words.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QComboBox>
#include <QLabel>
#include <QRadioButton>
#include <QScopedValueRollback>

#include <algorithm>

namespace kestrane {

namespace {

constexpr int kMargin = 8; // pixels

} // namespace

ChoicesBar::ChoicesBar(const Session& session, ExplorerState& state) : session_(session), state_(state) {
    auto* const row = new FlowLayout(2 * kMargin, kMargin / 2);
    setLayout(row);
    row->setContentsMargins(kMargin, kMargin / 2, kMargin, kMargin / 2);
    makePanels();
    connectChoices();
}

void ChoicesBar::Add(QWidget& panel) {
    panels_.push_back(&panel);
    layout()->addWidget(&panel);
}

QWidget& ChoicesBar::buttonsOf(const char* frame, Text::Id caption, QButtonGroup*& group,
                               std::initializer_list<Choice> choices) {
    auto* const box = new QWidget;
    box->setObjectName(QLatin1String(frame));
    auto* const row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    if (caption != Text::None) row->addWidget(new QLabel(loadText(session_, caption)));
    group = new QButtonGroup(box);
    for (const Choice& choice : choices) {
        QRadioButton* const button = radioButton(session_, choice.Words, "", false);
        group->addButton(button, choice.Id);
        row->addWidget(button);
    }
    return *box;
}

void ChoicesBar::makePanels() {
    fraInterval_ = new QWidget;
    auto* const interval = new QHBoxLayout(fraInterval_);
    interval->setContentsMargins(0, 0, 0, 0);
    lstInterval_ = intervalBox(intervals_);
    nameControl(*lstInterval_, "lstInterval", loadText(session_, Text::IntervalWord));
    interval->addWidget(labelOf(session_, Text::IntervalChoice, *lstInterval_));
    interval->addWidget(lstInterval_);

    fraDisplayBy_ = &buttonsOf("fraDisplayBy", Text::None, optDisplayBy_,
                               {{kByFreq, Text::ByFrequency}, {kByParam, Text::ByParameter}});
    cboDisplayBy_ = new QComboBox;
    nameControl(*cboDisplayBy_, "cboDisplayBy", loadText(session_, Text::DisplayBy));
    cboDisplayBy_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    auto& displayBy = *qobject_cast<QHBoxLayout*>(fraDisplayBy_->layout());
    displayBy.insertWidget(0, labelOf(session_, Text::DisplayLabel, *cboDisplayBy_));
    displayBy.addWidget(cboDisplayBy_);

    fraAxis_ = &buttonsOf("fraAxis", Text::None, optAxis_, {{kByDecibels, Text::Decibel}, {kByPercent, Text::Percent}});
    fraTable_ = &buttonsOf("fraTable", Text::ChannelLabel, optChannelX_,
                           {{kChannelA, Text::ChannelA}, {kChannelB, Text::ChannelB}});
    fraDfltCum_ = &buttonsOf("fraDfltCum", Text::PanelLabel, optCumPanels_,
                             {{ePanelBothChannels, Text::ChannelsAAndB},
                              {ePanelMainChannelA, Text::FullChannelA},
                              {ePanelAdvanced, Text::PanelAdvanced}});
    for (QWidget* panel : {fraInterval_, fraDisplayBy_, fraAxis_, fraTable_, fraDfltCum_})
        Add(*panel);
}

void ChoicesBar::connectChoices() {
    const auto onLog = [this](auto choose) {
        return [this, choose](int value) {
            const clsLog* log = isSetting_ ? nullptr : state_.LogInView(session_);
            if (log != nullptr && choose(*log, value)) emit Chosen();
        };
    };
    LogView& view = state_.View;
    onChosen(*optDisplayBy_, onLog([&view](const clsLog&, int mode) {
        view.chooseListMode(static_cast<DisplayMode>(mode));
        return true;
    }));
    connect(cboDisplayBy_, &QComboBox::activated, this, onLog([&view](const clsLog& log, int index) {
                const auto list = displayByList(log, view.ListMode());
                return view.chooseEntry(list[static_cast<std::size_t>(index)].Choice);
            }));
    onChosen(*optAxis_,
             onLog([&view](const clsLog&, int axis) { return view.chooseAxis(static_cast<DisplayMode>(axis)); }));
    onChosen(*optChannelX_, onLog([&view](const clsLog&, int channel) {
        return view.chooseChannel(static_cast<LogChannel>(channel));
    }));
    onChosen(*optCumPanels_,
             onLog([&view](const clsLog&, int panel) { return view.choosePanel(static_cast<PanelForm>(panel)); }));
    connect(lstInterval_, &QComboBox::currentIndexChanged, this,
            onLog([&view](const clsLog&, int index) { return index >= 0 && view.chooseInterval(index + 1); }));
}

void ChoicesBar::ShowLog(const clsLog& inView) {
    const QScopedValueRollback setting(isSetting_, true);
    intervals_.SetLog(inView);
    lstInterval_->setCurrentIndex(static_cast<int>(state_.View.IntervalRow) - 1);
}

void ChoicesBar::ShowChoices(const clsLog& inView) {
    const QScopedValueRollback setting(isSetting_, true);
    const LogView& view = state_.View;
    const LogPanels panels = shownPanels(inView, view.Tab);
    fraInterval_->setVisible(panels.IntervalList);
    fraDisplayBy_->setVisible(panels.DisplayBy);
    fraAxis_->setVisible(panels.Axis);
    fraTable_->setVisible(panels.Channel);
    fraDfltCum_->setVisible(session_.Options.CumulativePanel != ePanelHidden); // it is on every tab
    setVisible(std::any_of(panels_.begin(), panels_.end(), [](const QWidget* panel) { return !panel->isHidden(); }));

    optDisplayBy_->button(kByParam)->setEnabled(panels.ByParam);
    optDisplayBy_->button(view.ListMode())->setChecked(true);
    optAxis_->button(view.Axis)->setChecked(true);
    optChannelX_->button(view.Channel())->setChecked(true);
    optCumPanels_->button(ePanelBothChannels)->setVisible(inView.IsChannelBOn);
    optCumPanels_->button(cumulativePanelOf(inView, view.Panel))->setChecked(true);
    fillDisplayBy(inView);
}

void ChoicesBar::fillDisplayBy(const clsLog& inView) {
    const std::vector<DisplayEntry> list = displayByList(inView, state_.View.ListMode());
    cboDisplayBy_->clear();
    for (const DisplayEntry& entry : list)
        cboDisplayBy_->addItem(shown(entry.Text));
    cboDisplayBy_->setCurrentIndex(static_cast<int>(placeOf(state_.View.Choice(), list)));
}

} // namespace kestrane
