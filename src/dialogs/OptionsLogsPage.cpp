#include "dialogs/OptionsLogsPage.h"

#include "dialogs/LinePreview.h"
#include "dialogs/Words.h"
#include "dialogs/frmExpTime.h"
#include "model/Captions.h"
#include "views/CaptionHints.h"

#include <QAbstractItemView>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFontDialog>
#include <QFontInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

namespace kestrane {

namespace {

constexpr int kParameterRows = 7;
constexpr int kThinnest = 10; // twentieths of a point
constexpr int kThickest = 60;
constexpr int kLimitsWidth = 18; // characters

struct FontRow {
    clsFont clsLogOptions::*font;
    Text::Id textId;
    const char* name;
};

constexpr FontRow kFonts[] = {{&clsLogOptions::TitleFont, Text::TitleFont, "cmdFontTitle"},
                              {&clsLogOptions::AxisFont, Text::AxesFont, "cmdFontAxis"},
                              {&clsLogOptions::LegendFont, Text::LegendFont, "cmdFontLegend"},
                              {&clsLogOptions::NoteFont, Text::NoteFont, "cmdFontNote"}};

QString points(const Session& session, double size) {
    const QString number = QString::number(size).replace('.', QString::fromStdString(session.locale.DecimalSeparator));
    return loadText(session, Text::PointSize).replace('^', number);
}

void showFont(const Session& session, const clsFont& font, QLabel& sample) {
    const QString family = QString::fromStdString(font.Name);
    sample.setText(family + ", " + points(session, static_cast<double>(font.Size)));
    sample.setToolTip(sample.text().toHtmlEscaped());
    QFont face = sample.font();
    face.setFamily(family);
    sample.setFont(face);
}

QButtonGroup* addButtons(QBoxLayout& layout, std::initializer_list<std::pair<int, QRadioButton*>> buttons) {
    auto* const group = new QButtonGroup(&layout);
    for (const auto& [value, button] : buttons) {
        group->addButton(button, value);
        layout.addWidget(button);
    }
    return group;
}

} // namespace

OptionsLogsPage::OptionsLogsPage(SettingsDialog& settings) : OptionsPage(settings) {
    auto* const below = new QHBoxLayout;
    below->addWidget(charts(), 1);
    below->addWidget(fonts(), 1);

    auto* const understood = new QLabel;
    txtExposureTime_ = exposureTimeBox(settings.session(), settings.Edited.objLogOptions.ExposureTime, *understood);
    txtExposureTime_->setFixedWidth(txtExposureTime_->fontMetrics().averageCharWidth() * 14);
    auto* const time = new QHBoxLayout;
    time->addWidget(labelOf(settings.session(), Text::ExposureTimeEdit, *txtExposureTime_));
    time->addWidget(txtExposureTime_);
    time->addWidget(understood, 1);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(parameters());
    layout->addLayout(below);
    layout->addLayout(lines());
    layout->addLayout(time);
    layout->addStretch(1);
    showParameters();
}

std::string OptionsLogsPage::ExposureTimeEntry() const {
    return txtExposureTime_->text().toStdString();
}

void OptionsLogsPage::FocusExposureTime() {
    txtExposureTime_->setFocus();
    txtExposureTime_->selectAll();
}

QGroupBox* OptionsLogsPage::parameters() {
    auto* const group = new QGroupBox(loadText(settings_.session(), Text::ParametersToShow));
    auto* const grid = new QGridLayout;
    for (const Parameter parameter : kParameters) {
        const int index = parameter - 1;
        auto* const box = new QCheckBox;
        box->setObjectName("chkPlot" + QString::number(parameter));
        connect(box, &QCheckBox::toggled, this, [this, parameter](bool isChecked) {
            settings_.Edited.objLogOptions.IsPlotted.set(channel(), kind(), parameter, isChecked);
        });
        chkPlot_[static_cast<std::size_t>(index)] = box;
        grid->addWidget(box, index % kParameterRows, index / kParameterRows);
    }
    auto* const layout = new QVBoxLayout(group);
    layout->addWidget(choices());
    layout->addSpacing(fontMetrics().descent());
    layout->addLayout(grid);
    return group;
}

// The choice of the channel and the kind of figures that the check boxes stand for.
QWidget* OptionsLogsPage::choices() {
    const Session& session = settings_.session();
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const channelB = radioButton(session, Text::ShowChannelB, "optChannel2", false);
    channelB->setEnabled(settings_.HasChannelB());
    optChannel_ = addButtons(
        *layout, {{kChannelA, radioButton(session, Text::ShowChannelA, "optChannel1", true)}, {kChannelB, channelB}});

    auto* const fraCumInt = new QWidget;
    fraCumInt->setObjectName("fraCumInt");
    auto* const kinds = new QHBoxLayout(fraCumInt);
    kinds->setContentsMargins(fontMetrics().averageCharWidth() * 4, 0, 0, 0);
    const bool isInterval = settings_.Kind() == kInterval;
    optCumInt_ =
        addButtons(*kinds, {{kCumulative, radioButton(session, Text::CumulativeFigures, "optCumInt1", !isInterval)},
                            {kInterval, radioButton(session, Text::IntervalFigures, "optCumInt2", isInterval)}});
    fraCumInt->setVisible(settings_.Mode() != SettingsMode::Logs);
    layout->addWidget(fraCumInt);
    layout->addStretch(1);

    for (QButtonGroup* const group : {optChannel_, optCumInt_})
        onChosen(*group, [this](int) { showParameters(); });
    return row;
}

LogChannel OptionsLogsPage::channel() const {
    return static_cast<LogChannel>(optChannel_->checkedId());
}

FigureKind OptionsLogsPage::kind() const {
    return static_cast<FigureKind>(optCumInt_->checkedId());
}

void OptionsLogsPage::showParameters() {
    for (const Parameter parameter : kParameters) {
        QCheckBox* const box = chkPlot_[static_cast<std::size_t>(parameter) - 1];
        const QString caption = shown(settings_.Caption(parameter));
        const bool isOffered = settings_.IsOffered(channel(), kind(), parameter);
        box->setText(QString(caption).replace('&', "&&"));
        box->setAccessibleName(caption);
        box->setToolTip(shown(captionHint(settings_.session(), caption.toStdString())));
        box->setEnabled(isOffered);
        const QSignalBlocker blocker(box); // what is shown is not a choice of the user
        box->setChecked(isOffered && settings_.Edited.objLogOptions.IsPlotted(channel(), kind(), parameter));
    }
}

QGroupBox* OptionsLogsPage::charts() {
    const Session& session = settings_.session();
    clsLogOptions& options = settings_.Edited.objLogOptions;
    auto* const group = new QGroupBox(loadText(session, Text::ChartStyle));
    auto* const layout = new QVBoxLayout(group);
    auto* const styles = new QHBoxLayout;
    const bool is3D = options.ChartStyle == eChartAs3D;
    QButtonGroup* const optChartLines =
        addButtons(*styles, {{eChartAs2D, radioButton(session, Text::ChartStyle2D, "optChartLines0", !is3D)},
                             {eChartAs3D, radioButton(session, Text::ChartStyle3D, "optChartLines1", is3D)}});
    styles->addStretch(1);
    onChosen(*optChartLines, [&options](int style) { options.ChartStyle = static_cast<std::int16_t>(style); });

    auto* const slider = new QSlider(Qt::Horizontal);
    nameControl(*slider, "sliderWidth", loadPlainText(session, Text::LineWidth));
    slider->setRange(kThinnest, kThickest);
    slider->setPageStep(kThinnest);
    slider->setTickInterval(kThinnest);
    slider->setTickPosition(QSlider::TicksBelow);
    slider->setValue(options.LineWidth);
    slider->setMinimumWidth(fontMetrics().averageCharWidth() * 12);
    auto* const preview = new LinePreview(options.LineWidth);
    connect(slider, &QSlider::valueChanged, this, [&options, preview](int width) {
        options.LineWidth = static_cast<std::int16_t>(width);
        preview->SetLineWidth(width);
    });

    auto* const width = new QHBoxLayout;
    width->addWidget(slider, 1);
    width->addWidget(preview);
    layout->addLayout(styles);
    layout->addWidget(labelOf(session, Text::LineWidth, *slider));
    layout->addLayout(width);
    layout->addStretch(1);
    return group;
}

// What is added to the chart of all rows.
QGridLayout* OptionsLogsPage::lines() {
    const Session& session = settings_.session();
    ChartLines& lines = settings_.Lines;
    auto* const limits = new QComboBox;
    nameControl(*limits, "cboLimits", loadPlainText(session, Text::LinesLabel));
    for (const Text::Id text :
         {Text::LinesNone, Text::LinesUsual, Text::LinesCriterion, Text::LinesOwn, Text::LinesCriteria})
        limits->addItem(loadText(session, text));
    limits->setCurrentIndex(static_cast<int>(lines.Limits));
    limits->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon); // the list is as wide as its texts
    limits->setMinimumContentsLength(kLimitsWidth);
    limits->view()->setMinimumWidth(limits->view()->sizeHintForColumn(0) + limits->view()->frameWidth() * 2);
    auto* const own = new QLineEdit(shown(lines.OwnLevels));
    nameControl(*own, "txtOwnLines", loadText(session, Text::OwnLines));
    own->setToolTip(own->accessibleName());
    own->setEnabled(lines.Limits == LimitLines::Own);
    QCheckBox* const running = checkBox(session, Text::RunningSeries, "chkRunning", lines.IsRunningShown);
    QCheckBox* const bands = checkBox(session, Text::FromBandsSeries, "chkFromBands", lines.IsFromBandsShown);
    connect(limits, &QComboBox::currentIndexChanged, this, [&lines, own](int index) {
        lines.Limits = static_cast<LimitLines>(index);
        own->setEnabled(lines.Limits == LimitLines::Own);
    });
    connect(own, &QLineEdit::textChanged, this,
            [&lines](const QString& text) { lines.OwnLevels = text.toStdString(); });
    connect(running, &QCheckBox::toggled, this, [&lines](bool isChecked) { lines.IsRunningShown = isChecked; });
    connect(bands, &QCheckBox::toggled, this, [&lines](bool isChecked) { lines.IsFromBandsShown = isChecked; });
    QCheckBox* const marks = checkBox(session, Text::MarkSeries, "chkMarks", lines.AreSeriesMarked);
    connect(marks, &QCheckBox::toggled, this, [&lines](bool isChecked) { lines.AreSeriesMarked = isChecked; });
    auto* const grid = new QGridLayout;
    grid->addWidget(labelOf(session, Text::LinesLabel, *limits), 0, 0);
    grid->addWidget(limits, 0, 1);
    grid->addWidget(own, 0, 2);
    grid->addWidget(running, 1, 0, 1, 3);
    grid->addWidget(bands, 2, 0, 1, 3);
    grid->addWidget(marks, 3, 0, 1, 3);
    grid->setColumnStretch(1, 2);
    grid->setColumnStretch(2, 1);
    return grid;
}

QGroupBox* OptionsLogsPage::fonts() {
    const Session& session = settings_.session();
    auto* const group = new QGroupBox(loadText(session, Text::Fonts));
    auto* const grid = new QGridLayout(group);
    int row = 0;
    for (const FontRow& entry : kFonts) {
        clsFont& font = settings_.Edited.objLogOptions.*entry.font;
        auto* const button = pushButton(session, entry.textId, entry.name,
                                        shown(captioned(session, session.LoadText(Text::Fonts),
                                                        loadPlainText(session, entry.textId).toStdString())));
        auto* const sample = new QLabel;
        sample->setTextFormat(Qt::PlainText);
        sample->setMinimumWidth(fontMetrics().averageCharWidth() * 22);
        // A long name is cut, so that the dialog keeps its width.
        sample->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        showFont(session, font, *sample);
        connect(button, &QPushButton::clicked, this, [this, &font, sample] { chooseFont(font, *sample); });
        grid->addWidget(button, row, 0);
        grid->addWidget(sample, row++, 1);
    }
    grid->setColumnStretch(1, 1);
    return group;
}

void OptionsLogsPage::chooseFont(clsFont& font, QLabel& sample) {
    QFont present(QString::fromStdString(font.Name));
    if (font.Size > 0) present.setPointSizeF(static_cast<double>(font.Size));
    // The replacement for a font that this machine does not have.
    const QString substitute = QFontInfo(present).family();
    present.setFamily(substitute);
    bool isChosen = false;
    const QFont chosen = QFontDialog::getFont(&isChosen, present, this, loadText(settings_.session(), Text::Fonts));
    if (!isChosen) return;
    if (chosen.family() != substitute) font.Name = chosen.family().toStdString();
    font.Size = static_cast<float>(chosen.pointSizeF());
    showFont(settings_.session(), font, sample);
}

} // namespace kestrane
