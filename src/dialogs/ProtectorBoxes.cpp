#include "dialogs/ProtectorBoxes.h"

#include "dialogs/AttenuationBars.h"
#include "dialogs/Words.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace kestrane {

namespace {

// Selects its text when it gets the focus and remembers it. When it is left with a text that is no number, it shows the
// remembered text again.
class NumberBox : public QLineEdit {
public:
    explicit NumberBox(const ProtectorScreen& screen) : screen_(screen) {
        setAlignment(Qt::AlignRight);
        setMinimumWidth(fontMetrics().horizontalAdvance("-00.0") + fontMetrics().height());
    }

protected:
    void focusInEvent(QFocusEvent* event) override {
        QLineEdit::focusInEvent(event);
        if (event->reason() == Qt::PopupFocusReason) return;
        before_ = text();
        selectAll();
    }

    void focusOutEvent(QFocusEvent* event) override {
        QLineEdit::focusOutEvent(event);
        if (event->reason() == Qt::PopupFocusReason || isReadOnly()) return;
        setText(shown(screen_.AcceptedNumber(text().toStdString(), before_.toStdString())));
    }

private:
    const ProtectorScreen& screen_;
    QString before_;
};

void put(QLineEdit& box, const std::string& text) {
    box.setText(shown(text));
    box.setCursorPosition(0);
}

} // namespace

ProtectorBoxes::ProtectorBoxes(const ProtectorScreen& screen, QWidget* parent) :
    QWidget(parent), screen_(screen), txtName_(new QLineEdit), cboType_(new QComboBox), bars_(new AttenuationBars) {
    const Session& session = screen.session();
    nameControl(*txtName_, "txtName", loadPlainText(session, Text::ProtectorNameLabel));
    nameControl(*cboType_, "cboType", loadPlainText(session, Text::ProtectorTypeLabel));
    cboType_->addItems({loadText(session, Text::Earplug), loadText(session, Text::Earmuff)});
    auto* const form = new QFormLayout;
    form->addRow(labelOf(session, Text::ProtectorNameLabel, *txtName_), txtName_);
    form->addRow(labelOf(session, Text::ProtectorTypeLabel, *cboType_), cboType_);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(form);
    layout->addWidget(bandsGroup(), 1);
    layout->addWidget(figuresRow());
    ShowFigures(screen.IsUS());
    SetEditable(false);
}

QLineEdit* ProtectorBoxes::numberBox(const QString& name, const QString& spoken) {
    auto* const box = new NumberBox(screen_);
    nameControl(*box, name.toLatin1().constData(), spoken);
    connect(box, &QLineEdit::textChanged, this, &ProtectorBoxes::showBars);
    numbers_.push_back(box);
    return box;
}

void ProtectorBoxes::addBands(QGridLayout& grid, int row, Text::Id caption, const char* name, Bands& boxes) {
    const QString text = loadText(screen_.session(), caption);
    const bool isUS = QLatin1String(name).endsWith(QLatin1String("US"));
    auto* const label = new QLabel(text);
    grid.addWidget(label, row, 0);
    std::vector<QWidget*>& shownWith = isUS ? ofUS_ : ofEU_;
    shownWith.push_back(label);
    for (int band = 1; band <= kProtectorBands; ++band) {
        const QString spoken = text + ' ' + QString::fromLatin1(protectorBand(band).data()) + " Hz";
        QLineEdit* const box = numberBox(QLatin1String(name) + QString::number(band), spoken);
        grid.addWidget(box, row, band);
        shownWith.push_back(box);
        boxes[static_cast<std::size_t>(band) - 1] = box;
    }
}

QWidget* ProtectorBoxes::bandsGroup() {
    const Session& session = screen_.session();
    nameControl(*bars_, "picBars", loadText(session, Text::MeanAttenuation));
    auto* const group = new QGroupBox(loadText(session, Text::OctaveBandsHz));
    auto* const grid = new QGridLayout(group);
    grid->addWidget(bars_, 0, 1, 1, kProtectorBands);
    bars_->SetGap(grid->horizontalSpacing());
    grid->setRowStretch(0, 1);
    for (int band = 1; band <= kProtectorBands; ++band) {
        auto* const label = new QLabel(QString::fromLatin1(protectorBand(band).data()));
        label->setAlignment(Qt::AlignCenter);
        grid->addWidget(label, 1, band);
        grid->setColumnStretch(band, 1);
    }
    addBands(*grid, 2, Text::Mean, "txtOctMean", mean_);
    addBands(*grid, 3, Text::StdDev, "txtOctSD", sd_);
    addBands(*grid, 2, Text::Mean, "txtOctMeanUS", meanUS_);
    addBands(*grid, 3, Text::StdDev, "txtOctSDUS", sdUS_);
    return group;
}

QWidget* ProtectorBoxes::figuresRow() {
    const Session& session = screen_.session();
    auto* const row = new QWidget;
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto add = [&](Text::Id caption, const char* name, std::vector<QWidget*>& shownWith) {
        QLineEdit* const box = numberBox(QLatin1String(name), loadText(session, caption));
        QLabel* const label = labelOf(session, caption, *box);
        for (QWidget* widget : std::initializer_list<QWidget*>{label, box}) {
            layout->addWidget(widget);
            shownWith.push_back(widget);
        }
        layout->addSpacing(layout->spacing());
        return box;
    };
    hml_ = {add(Text::ProtectorHigh, "txtHML1", ofEU_), add(Text::ProtectorMedium, "txtHML2", ofEU_),
            add(Text::ProtectorLow, "txtHML3", ofEU_)};
    snr_ = add(Text::SNRMethod, "txtSNR", ofEU_);
    nrr_ = add(Text::NRRMethod, "txtNRR", ofUS_);
    layout->addStretch(1);
    return row;
}

void ProtectorBoxes::ShowEntries(const ProtectorEntries& entries) {
    put(*txtName_, entries.Name);
    cboType_->setCurrentIndex(cboType_->findText(shown(entries.Type)));
    for (std::size_t i = 0; i < mean_.size(); ++i) {
        put(*mean_[i], entries.Mean[i]);
        put(*sd_[i], entries.SD[i]);
        put(*meanUS_[i], entries.MeanUS[i]);
        put(*sdUS_[i], entries.SDUS[i]);
    }
    for (std::size_t i = 0; i < hml_.size(); ++i)
        put(*hml_[i], entries.HML[i]);
    put(*snr_, entries.SNR);
    put(*nrr_, entries.NRR);
    showBars();
}

ProtectorEntries ProtectorBoxes::Entries() const {
    const auto textOf = [](const QLineEdit* box) { return box->text().toStdString(); };
    ProtectorEntries entries;
    entries.Name = textOf(txtName_);
    entries.Type = cboType_->currentText().toStdString();
    for (std::size_t i = 0; i < mean_.size(); ++i) {
        entries.Mean[i] = textOf(mean_[i]);
        entries.SD[i] = textOf(sd_[i]);
        entries.MeanUS[i] = textOf(meanUS_[i]);
        entries.SDUS[i] = textOf(sdUS_[i]);
    }
    for (std::size_t i = 0; i < hml_.size(); ++i)
        entries.HML[i] = textOf(hml_[i]);
    entries.SNR = textOf(snr_);
    entries.NRR = textOf(nrr_);
    return entries;
}

void ProtectorBoxes::ShowFigures(bool isUS) {
    isUS_ = isUS;
    for (QWidget* widget : isUS ? ofEU_ : ofUS_)
        widget->hide();
    for (QWidget* widget : isUS ? ofUS_ : ofEU_)
        widget->show();
    showBars();
}

void ProtectorBoxes::SetEditable(bool isEditable) {
    txtName_->setReadOnly(!isEditable);
    cboType_->setEnabled(isEditable);
    for (QLineEdit* box : numbers_)
        box->setReadOnly(!isEditable);
}

void ProtectorBoxes::FocusName() {
    txtName_->setFocus();
    txtName_->selectAll();
}

void ProtectorBoxes::showBars() {
    if (nrr_ != nullptr) bars_->Show(screen_.Draft(Entries()), isUS_); // only once all boxes have been created
}

} // namespace kestrane
