#include "desktop/frmPreview.h"

#include "app/Documents.h"
#include "dialogs/AskDialogs.h"
#include "dialogs/Words.h"
#include "platform/RuntimeError.h"
#include "printing/PdfFile.h"
#include "printing/QtPage.h"
#include "views/ChartSummary.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QProgressDialog>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSpinBox>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace kestrane {

namespace {

constexpr QSize kFirstSize(980, 860);
constexpr int kPatience = 400; // milliseconds before the dialog is shown
constexpr double kZoomStep = 1.25;
constexpr double kSmallest = 30 / kPaperDots; // 30 to 400 pixels per inch
constexpr double kLargest = 400 / kPaperDots;
constexpr int kRoomBesidePage = 24;

// Takes down what a page says, a line of it in each line.
class PageWords : public PageDevice {
public:
    explicit PageWords(const Session& session) : session_(session) {}

    QString Words() const { return shown(words_); }

    void newPage() override {}

    void text(double, double top, std::string_view text, const PageFont&, PageAlign) override {
        if (!words_.empty()) words_ += top == top_ ? ", " : "\n";
        words_ += text;
        top_ = top;
    }

    void rule(double, double, double) override {}

    double picture(const std::string&, const PageBox&) override { return 0; }

    double brandPicture(const PageBox&) override { return 0; }

    void chart(const ChartOnPage& chart, const PageBox& box) override {
        text(box.Left, box.Top, chartSummary(session_, *chart.Data), {}, PageAlign::Left);
    }

private:
    const Session& session_;
    std::string words_;
    double top_ = 0;
};

QString withoutMnemonic(QString text) {
    return text.remove('&');
}

} // namespace

PrintProgress::PrintProgress(const Session& session, QWidget* parent) :
    session_(session),
    dialog_(std::make_unique<QProgressDialog>(QString(), loadPlainText(session, Text::Cancel), 0, 0, parent)) {
    dialog_->reset(); // otherwise it would appear by itself after a while
    dialog_->setWindowTitle(loadPlainText(session, Text::CommandPrint));
    dialog_->setWindowModality(Qt::ApplicationModal);
    dialog_->setMinimumDuration(kPatience);
}

PrintProgress::~PrintProgress() = default;

PageProgress PrintProgress::function() {
    return [this](std::size_t drawn, std::size_t pages) {
        const std::string page = std::to_string(std::min(drawn + 1, pages));
        const std::string words = ReplaceText(session_.LoadText(Text::PrintingPage), "^", page);
        dialog_->setLabelText(shown(ReplaceText(words, "*", std::to_string(pages))));
        dialog_->setMaximum(static_cast<int>(pages));
        dialog_->setValue(static_cast<int>(drawn));
        return drawn == pages || !dialog_->wasCanceled();
    };
}

frmPreview::frmPreview(Session& session, std::vector<PreviewChoice> choices, Printers& printers, QWidget* parent,
                       PreviewParts* parts) :
    QDialog(parent), session_(session), choices_(std::move(choices)), printers_(printers), parts_(parts) {
    setObjectName("frmPreview");
    setWindowTitle(withoutMnemonic(loadText(session, Text::CommandPrintPreview)).remove("..."));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    picPage_ = new QLabel;
    picPage_->setObjectName("picPage");
    picPage_->setAutoFillBackground(true);
    area_ = new QScrollArea;
    area_->setObjectName("area");
    area_->setWidget(picPage_);
    area_->setAlignment(Qt::AlignCenter);
    area_->setBackgroundRole(QPalette::Mid);
    area_->setFocusPolicy(Qt::StrongFocus);
    area_->installEventFilter(this);
    area_->viewport()->installEventFilter(this);

    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(topBar());
    fraParts_ = partsBox();
    auto* const middle = new QHBoxLayout;
    middle->addWidget(fraParts_, 0, Qt::AlignTop);
    middle->addWidget(area_, 1);
    layout->addLayout(middle, 1);
    layout->addWidget(bottomBar());
    resize(kFirstSize.boundedTo(screen()->availableSize() * 9 / 10));
    area_->setFocus();

    connect(cboReport_, &QComboBox::currentIndexChanged, this, [this] { layOut(); });
    connect(chkLandscape_, &QCheckBox::toggled, this, [this] { layOut(); });
    connect(spnPage_, &QSpinBox::valueChanged, this, [this] { showPage(); });
}

frmPreview::~frmPreview() = default;

QToolButton* frmPreview::toolButton(const char* name, Text::Id text, const char* sign) {
    auto* const button = new QToolButton;
    nameControl(*button, name, loadText(session_, text));
    button->setText(QString::fromUtf8(sign));
    button->setToolTip(loadText(session_, text));
    button->setAutoRaise(true);
    return button;
}

QWidget* frmPreview::topBar() {
    cboReport_ = new QComboBox;
    nameControl(*cboReport_, "cboReport", loadPlainText(session_, Text::ReportLabel));
    for (const PreviewChoice& choice : choices_)
        cboReport_->addItem(loadPlainText(session_, choice.text));
    chkLandscape_ = checkBox(session_, Text::LandscapeButton, "chkLandscape", false);
    cmdBack_ = toolButton("cmdBack", Text::PreviousPage, "\u25C0");
    cmdNext_ = toolButton("cmdNext", Text::NextPage, "\u25B6");
    spnPage_ = new QSpinBox;
    nameControl(*spnPage_, "spnPage", loadText(session_, Text::Page));
    spnPage_->setKeyboardTracking(false);
    spnPage_->setMinimum(1);
    lblPages_ = new QLabel;
    lblPages_->setObjectName("lblPages");
    QToolButton* const cmdSmaller = toolButton("cmdSmaller", Text::ZoomOut, "\u2212");
    QToolButton* const cmdLarger = toolButton("cmdLarger", Text::ZoomIn, "+");
    connect(cmdBack_, &QToolButton::clicked, this, [this] { turn(-1); });
    connect(cmdNext_, &QToolButton::clicked, this, [this] { turn(1); });
    connect(cmdSmaller, &QToolButton::clicked, this, [this] { zoom(1 / kZoomStep); });
    connect(cmdLarger, &QToolButton::clicked, this, [this] { zoom(kZoomStep); });

    auto* const bar = new QWidget;
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(labelOf(session_, Text::ReportLabel, *cboReport_));
    row->addWidget(cboReport_);
    row->addWidget(chkLandscape_);
    row->addStretch();
    for (QWidget* widget :
         std::initializer_list<QWidget*>{cmdBack_, spnPage_, lblPages_, cmdNext_, cmdSmaller, cmdLarger})
        row->addWidget(widget);
    return bar;
}

// A check box for each part. One of which there is nothing to print keeps its check for other logs.
QWidget* frmPreview::partsBox() {
    auto* const box = new QGroupBox(loadText(session_, Text::ReportParts));
    box->setObjectName("fraParts");
    auto* const column = new QVBoxLayout(box);
    for (const ReportPartRow& row : reportPartRows()) {
        if (parts_ == nullptr) break;
        const std::string name = "chkPart" + std::to_string(static_cast<int>(row.Part));
        QCheckBox* const check = checkBox(session_, row.Caption, name.c_str(), parts_->Chosen.contains(row.Part));
        check->setEnabled(parts_->Offered.contains(row.Part));
        connect(check, &QCheckBox::toggled, this, [this, part = row.Part](bool isChosen) {
            if (isChosen) parts_->Chosen.insert(part);
            if (!isChosen) parts_->Chosen.erase(part);
            layOut();
        });
        column->addWidget(check);
    }
    return box;
}

QWidget* frmPreview::bottomBar() {
    QPushButton* const cmdSave =
        pushButton(session_, Text::CommandSaveAsPdf, "cmdSave", loadPlainText(session_, Text::CommandSaveAsPdf));
    QPushButton* const cmdPrint =
        pushButton(session_, Text::PrintButton, "cmdPrint", loadPlainText(session_, Text::PrintButton));
    QPushButton* const cmdClose =
        pushButton(session_, Text::CloseButton, "cmdClose", loadPlainText(session_, Text::CloseButton));
    connect(cmdSave, &QPushButton::clicked, this, &frmPreview::savePdf);
    connect(cmdPrint, &QPushButton::clicked, this, &frmPreview::print);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    auto* const bar = new QWidget;
    auto* const row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->addStretch();
    for (QPushButton* button : {cmdSave, cmdPrint, cmdClose})
        row->addWidget(button);
    return bar;
}

void frmPreview::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!document_) layOut();
}

void frmPreview::layOut() {
    document_.reset(); // it refers to the paper, which is replaced
    paper_.emplace(a4Paper(chkLandscape_->isChecked()));
    const PreviewChoice& choice = choices_[static_cast<std::size_t>(cboReport_->currentIndex())];
    fraParts_->setVisible(choice.HasParts && parts_ != nullptr);
    document_ = choice.layOut(*paper_);
    const auto pages = static_cast<int>(document_->pageCount());
    const QSignalBlocker quiet(spnPage_);
    spnPage_->setMaximum(pages);
    lblPages_->setText("/ " + QString::number(pages));
    showPage();
}

void frmPreview::showPage() {
    const double across = paper_->width() * kCentimetre;
    const int room = area_->width() - area_->verticalScrollBar()->sizeHint().width() - kRoomBesidePage;
    const double scale = std::clamp(zoom_ > 0 ? zoom_ : room / across, kSmallest, kLargest);
    const double ratio = devicePixelRatioF();
    const QSizeF size = QSizeF(across, paper_->height() * kCentimetre) * scale;
    QImage image((size * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    {
        QPainter painter(&image);
        QtPage page(*paper_, session_.locale, painter, scale);
        document_->drawPage(page, static_cast<std::size_t>(spnPage_->value() - 1));
    }
    picPage_->setPixmap(QPixmap::fromImage(image));
    picPage_->resize(size.toSize());
    tellPage();
    cmdBack_->setEnabled(spnPage_->value() > 1);
    cmdNext_->setEnabled(spnPage_->value() < spnPage_->maximum());
}

// A screen reader says the page where the focus is.
void frmPreview::tellPage() {
    const auto page = static_cast<std::size_t>(spnPage_->value());
    const std::string name = ReplaceText(session_.LoadText(Text::PageOfPages), "^", std::to_string(page));
    const QString ofPages = shown(ReplaceText(name, "*", std::to_string(spnPage_->maximum())));
    PageWords words(session_);
    document_->drawPage(words, page - 1);
    picPage_->setAccessibleName(ofPages);
    area_->setAccessibleName(ofPages);
    area_->setAccessibleDescription(words.Words());
}

void frmPreview::zoom(double factor) {
    const double now = picPage_->width() / (paper_->width() * kCentimetre);
    zoom_ = std::clamp(now * factor, kSmallest, kLargest);
    showPage();
}

void frmPreview::turn(int pages) {
    const int before = spnPage_->value();
    spnPage_->setValue(before + pages);
    if (spnPage_->value() != before) area_->verticalScrollBar()->setValue(pages > 0 ? 0 : INT_MAX);
}

bool frmPreview::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress && watched == area_) {
        const QScrollBar& bar = *area_->verticalScrollBar();
        switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_PageDown:
            if (bar.value() < bar.maximum()) break;
            turn(1);
            return true;
        case Qt::Key_PageUp:
            if (bar.value() > bar.minimum()) break;
            turn(-1);
            return true;
        case Qt::Key_Home:
            spnPage_->setValue(1);
            return true;
        case Qt::Key_End:
            spnPage_->setValue(spnPage_->maximum());
            return true;
        case Qt::Key_Plus:
        case Qt::Key_Equal:
            zoom(kZoomStep);
            return true;
        case Qt::Key_Minus:
            zoom(1 / kZoomStep);
            return true;
        default:
            break;
        }
    }
    if (event->type() == QEvent::Wheel && watched == area_->viewport()) {
        const auto& wheel = *static_cast<QWheelEvent*>(event);
        if (wheel.modifiers().testFlag(Qt::ControlModifier)) {
            zoom(wheel.angleDelta().y() > 0 ? kZoomStep : 1 / kZoomStep);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmPreview::savePdf() {
    const QString start = shown(session_.Options.DefaultDataDirectory + fileNameOf(document_->Title())) + ".pdf";
    const auto name = askSaveName(
        session_, this,
        {loadText(session_, Text::SaveAsPdfTitle), start, fileFilter(session_.LoadText(Text::PdfFilter)), "pdf"});
    if (!name) return;
    PrintProgress progress(session_, this);
    try {
        writePdf(session_, *document_, *paper_, *name, progress.function());
    } catch (const RuntimeError& error) {
        session_.ShowMessage(saveErrorText(session_, error, *name), kIconExclamation);
    }
}

void frmPreview::print() {
    PrintProgress progress(session_, this);
    const LayOut& chosen = choices_[static_cast<std::size_t>(cboReport_->currentIndex())].layOut;
    printDocument(session_, printers_, this, chkLandscape_->isChecked(), chosen, progress.function());
}

} // namespace kestrane
