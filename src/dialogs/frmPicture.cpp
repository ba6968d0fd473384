#include "dialogs/frmPicture.h"

#include "dialogs/AskDialogs.h"
#include "dialogs/Words.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>

#include <cmath>
#include <utility>

namespace kestrane {

namespace {

constexpr Text::Id kFormatTexts[] = {Text::PicturePng, Text::PictureSvg, Text::PicturePdf}; // as kPictureEndings

QDoubleSpinBox* lengthBox(const Session& session, Text::Id label, const char* name, double value) {
    auto* const box = new QDoubleSpinBox;
    nameControl(*box, name, loadPlainText(session, label));
    box->setDecimals(1);
    box->setRange(std::ceil(kSmallestPicture / kDotsOfCentimetre * 10) / 10,
                  std::floor(kLargestPicture / kDotsOfCentimetre * 10) / 10);
    box->setSuffix(loadText(session, Text::Centimetres));
    box->setValue(value);
    return box;
}

} // namespace

void frmPicture::Export(Session& session, const std::string& title, const SavePicture& save, QWidget* parent) {
    frmPicture(session, title, save, parent).exec();
}

frmPicture::frmPicture(Session& session, std::string title, SavePicture save, QWidget* parent) :
    QDialog(parent), session_(session), title_(std::move(title)), save_(std::move(save)) {
    setObjectName("frmPicture");
    setWindowTitle(loadText(session, Text::PictureTitle));
    const PictureChoice last = readPictureChoice(*session.state);
    cboFormat_ = new QComboBox;
    nameControl(*cboFormat_, "cboFormat", loadPlainText(session, Text::PictureFormatLabel));
    for (std::size_t i = 0; i < std::size(kFormatTexts); ++i) {
        cboFormat_->addItem(loadText(session, kFormatTexts[i]));
        if (last.Ending == kPictureEndings[i]) cboFormat_->setCurrentIndex(static_cast<int>(i));
    }
    spnWidth_ = lengthBox(session, Text::PictureWidthLabel, "spnWidth", last.Width);
    spnHeight_ = lengthBox(session, Text::PictureHeightLabel, "spnHeight", last.Height);
    spnResolution_ = new QSpinBox;
    nameControl(*spnResolution_, "spnResolution", loadPlainText(session, Text::PictureResolutionLabel));
    spnResolution_->setRange(kLowestResolution, kHighestResolution);
    spnResolution_->setSuffix(loadText(session, Text::PixelsPerInch));
    spnResolution_->setValue(last.Resolution);
    lblPixels_ = new QLabel;
    lblPixels_->setObjectName("lblPixels");
    QDialogButtonBox* const buttons = okAndCancel(session);
    cmdOK_ = buttons->button(QDialogButtonBox::Ok);

    auto* const form = new QFormLayout;
    form->addRow(labelOf(session, Text::PictureFormatLabel, *cboFormat_), cboFormat_);
    form->addRow(labelOf(session, Text::PictureWidthLabel, *spnWidth_), spnWidth_);
    form->addRow(labelOf(session, Text::PictureHeightLabel, *spnHeight_), spnHeight_);
    form->addRow(labelOf(session, Text::PictureResolutionLabel, *spnResolution_), spnResolution_);
    form->addRow(QString(), lblPixels_);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(cboFormat_, &QComboBox::currentIndexChanged, this, &frmPicture::showPixels);
    connect(spnWidth_, &QDoubleSpinBox::valueChanged, this, &frmPicture::showPixels);
    connect(spnHeight_, &QDoubleSpinBox::valueChanged, this, &frmPicture::showPixels);
    connect(spnResolution_, &QSpinBox::valueChanged, this, &frmPicture::showPixels);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmPicture::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showPixels();
}

PictureChoice frmPicture::choice() const {
    return {kPictureEndings[cboFormat_->currentIndex()], spnWidth_->value(), spnHeight_->value(),
            spnResolution_->value()};
}

// A drawing has no resolution.
void frmPicture::showPixels() {
    const PictureChoice chosen = choice();
    const PictureSize size = chosen.Size();
    const bool hasPixels = chosen.Ending == kPictureEndings[0];
    spnResolution_->setEnabled(hasPixels);
    const auto pixels = [&](double dots) { return std::to_string(std::lround(dots * size.PixelsOfDot)); };
    std::string words = ReplaceText(session_.LoadText(Text::PicturePixels), "^", pixels(size.Width));
    words = ReplaceText(words, "*", pixels(size.Height));
    if (!chosen.IsPossible())
        words =
            ReplaceText(session_.LoadText(Text::PictureTooLarge), "^", std::to_string(static_cast<int>(kMostPixels)));
    lblPixels_->setText(hasPixels ? shown(words) : QString());
    cmdOK_->setEnabled(chosen.IsPossible());
}

void frmPicture::accept() {
    const PictureChoice chosen = choice();
    const QString filter =
        fileFilter(session_.LoadText(Text::PictureFilter)).split(";;").value(cboFormat_->currentIndex());
    const QString ending = QString::fromStdString(chosen.Ending).mid(1); // without the point
    const auto name =
        askSaveName(session_, this, {windowTitle(), shown(pictureName(session_, title_, chosen)), filter, ending});
    if (name && exportPicture(session_, chosen, *name, save_)) QDialog::accept();
}

} // namespace kestrane
