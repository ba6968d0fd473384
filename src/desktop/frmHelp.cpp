#include "desktop/frmHelp.h"

#include "dialogs/HandySplitter.h"
#include "dialogs/Words.h"

#include <QApplication>
#include <QBoxLayout>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QTextBlock>
#include <QTextBrowser>
#include <QUrl>

namespace kestrane {

namespace {

constexpr QSize kFirstSize(1000, 660);
constexpr int kListWidth = 270; // pixels
constexpr int kRowGap = 3;
constexpr int kPictureWidth = 600; // as the pages say
constexpr double kMargin = 16;     // of a page
const QColor kMark(0xff, 0xe0, 0x66), kMarkedInk(0x1d, 0x27, 0x33);

QString between(const QColor& a, const QColor& b, double partOfB) {
    const auto mixed = [&](int from, int to) { return static_cast<int>(from + (to - from) * partOfB); };
    return QColor(mixed(a.red(), b.red()), mixed(a.green(), b.green()), mixed(a.blue(), b.blue())).name();
}

// The style sheet of the pages is for web browsers. This one is for the window, in the colours of its palette.
QString sheetFor(const QPalette& palette) {
    const QColor ground = palette.color(QPalette::Base), ink = palette.color(QPalette::Text);
    return QStringLiteral(
               "h1 { font-size: 18pt; margin: 0px 0px 6px 0px; } h2 { font-size: 14pt; margin: 18px 0px 4px 0px; }"
               "h3 { font-size: 11pt; margin: 12px 0px 2px 0px; } .lead { color: %1; }"
               "th { color: %1; text-align: left; } th, td { padding: 3px 10px 3px 2px; }"
               "kbd, code, pre { font-family: \"DejaVu Sans Mono\", monospace; background-color: %2; }"
               ".formula { font-family: \"Liberation Serif\", serif; background-color: %2; margin-left: 12px; }")
        .arg(between(ink, ground, 0.25), between(ground, ink, 0.08));
}

// A page without the style sheet that it names, its pictures scaled more smoothly than a document scales them.
class PageBrowser : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl& name) override {
        if (type == QTextDocument::StyleSheetResource) return QString();
        if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
        const QImage picture(QTextBrowser::source().resolved(name).toLocalFile());
        const int width = static_cast<int>(kPictureWidth * devicePixelRatioF());
        return picture.width() > width ? picture.scaledToWidth(width, Qt::SmoothTransformation) : picture;
    }
};

bool isPartOfWord(const QTextCursor& cursor) {
    const int before = cursor.selectionStart() - cursor.block().position() - 1;
    return before >= 0 && cursor.block().text().at(before).isLetterOrNumber();
}

} // namespace

frmHelp::frmHelp(const Session& session, const std::string& folder, QWidget* parent) :
    QDialog(parent), session_(session), pages_(helpPages(session, folder)) {
    setObjectName("frmHelp");
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowTitle(loadText(session, Text::HelpTitle));
    auto* const parts = new HandySplitter;
    parts->addWidget(search());
    parts->addWidget(page());
    parts->setStretchFactor(1, 1);
    parts->setChildrenCollapsible(false);
    parts->setSizes({kListWidth, kFirstSize.width() - kListWidth});
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(parts);
    resize(kFirstSize);
    list();
    browser_->setFocus();
}

QWidget* frmHelp::search() {
    txtSearch_ = new QLineEdit;
    nameControl(*txtSearch_, "txtSearch", loadPlainText(session_, Text::HelpSearch));
    txtSearch_->setClearButtonEnabled(true);
    lstPages_ = new QListWidget;
    nameControl(*lstPages_, "lstPages", loadText(session_, Text::HelpPagesFound));
    lstPages_->setWordWrap(true);
    lstPages_->setSpacing(kRowGap);
    lstPages_->setResizeMode(QListView::Adjust);
    lstPages_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(txtSearch_, &QLineEdit::textChanged, this, &frmHelp::list);
    connect(txtSearch_, &QLineEdit::returnPressed, this, [this] { openListed(std::max(0, lstPages_->currentRow())); });
    connect(new QShortcut(Qt::Key_Down, txtSearch_, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            lstPages_, [this] { lstPages_->setFocus(); });
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, txtSearch_, [this] {
        txtSearch_->setFocus();
        txtSearch_->selectAll();
    });
    connect(lstPages_, &QListWidget::itemActivated, this, [this] { openListed(lstPages_->currentRow()); });
    connect(lstPages_, &QListWidget::itemClicked, this, [this] { openListed(lstPages_->currentRow()); });
    auto* const part = new QWidget;
    auto* const column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(labelOf(session_, Text::HelpSearch, *txtSearch_));
    column->addWidget(txtSearch_);
    column->addWidget(lstPages_, 1);
    return part;
}

QWidget* frmHelp::page() {
    browser_ = new PageBrowser;
    nameControl(*browser_, "txtPage", loadText(session_, Text::HelpPageShown));
    browser_->setOpenExternalLinks(true);
    browser_->document()->setDefaultStyleSheet(sheetFor(palette()));
    browser_->document()->setDocumentMargin(kMargin);
    const auto button = [&](Text::Id text, const char* name) {
        return pushButton(session_, text, name, loadPlainText(session_, text));
    };
    QPushButton* const cmdBack = button(Text::HelpBack, "cmdBack");
    QPushButton* const cmdForward = button(Text::HelpForward, "cmdForward");
    QPushButton* const cmdClose = button(Text::CloseButton, "cmdClose");
    cmdBack->setEnabled(false);
    cmdForward->setEnabled(false);
    connect(browser_, &QTextBrowser::backwardAvailable, cmdBack, &QWidget::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, cmdForward, &QWidget::setEnabled);
    connect(cmdBack, &QPushButton::clicked, browser_, &QTextBrowser::backward);
    connect(cmdForward, &QPushButton::clicked, browser_, &QTextBrowser::forward);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    auto* const part = new QWidget;
    auto* const column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(cmdBack);
    buttons->addWidget(cmdForward);
    buttons->addStretch(1);
    buttons->addWidget(cmdClose);
    column->addLayout(buttons);
    column->addWidget(browser_, 1);
    return part;
}

void frmHelp::ShowPage(const std::string& path) {
    browser_->setExtraSelections({});
    browser_->setSource(QUrl::fromLocalFile(shown(path)));
}

void frmHelp::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) before_ = QApplication::activeWindow();
    QDialog::showEvent(event);
}

void frmHelp::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    if (!event->spontaneous() && before_ != nullptr && before_->isVisible()) before_->activateWindow();
}

void frmHelp::list() {
    const std::string question = txtSearch_->text().toStdString();
    matches_ = findInHelp(pages_, question);
    lstPages_->clear();
    if (helpWords(question).empty())
        for (const HelpPage& page : pages_)
            matches_.push_back({&page, {}});
    for (const HelpMatch& match : matches_) {
        const QString title = shown(match.Page->Title);
        lstPages_->addItem(match.Sentence.empty() ? title : title + '\n' + shown(match.Sentence));
    }
    if (matches_.empty()) {
        lstPages_->addItem(loadText(session_, Text::HelpNothingFound));
        lstPages_->item(0)->setFlags(Qt::NoItemFlags);
    } else if (!txtSearch_->text().isEmpty()) {
        lstPages_->setCurrentRow(0);
    }
}

void frmHelp::openListed(int row) {
    if (row < 0 || static_cast<std::size_t>(row) >= matches_.size()) return;
    const HelpMatch& match = matches_[static_cast<std::size_t>(row)];
    ShowPage(match.Page->Path);
    markFound(shown(match.Sentence));
}

// Marks the words that were looked for wherever they stand on the page, and goes to the sentence that was listed.
void frmHelp::markFound(const QString& sentence) {
    const QTextDocument& page = *browser_->document();
    QList<QTextEdit::ExtraSelection> marks;
    for (const QString& word : txtSearch_->text().split(' ', Qt::SkipEmptyParts)) {
        for (QTextCursor found = page.find(word); !found.isNull(); found = page.find(word, found)) {
            if (isPartOfWord(found)) continue;
            QTextEdit::ExtraSelection mark;
            mark.cursor = found;
            mark.format.setBackground(kMark);
            mark.format.setForeground(kMarkedInk);
            marks.push_back(mark);
        }
    }
    browser_->setExtraSelections(marks);
    QTextCursor place = sentence.isEmpty() ? QTextCursor() : page.find(sentence);
    if (place.isNull() && !marks.isEmpty()) place = marks.front().cursor;
    if (place.isNull()) return;
    place.setPosition(place.selectionStart());
    browser_->setTextCursor(place);
    browser_->ensureCursorVisible();
}

} // namespace kestrane
