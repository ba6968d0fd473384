#include "desktop/StartPage.h"

#include "app/StartUp.h"
#include "dialogs/Icons.h"
#include "dialogs/Words.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace kestrane {

namespace {

constexpr int kListWidth = 240; // pixels
constexpr int kSentenceWidth = 340;
constexpr int kGap = 24;
constexpr qreal kHeadingSize = 1.5; // of the usual font size

struct Offer {
    Command command;
    Text::Id text;
    const char* icon;
    const char* name;
};

constexpr Offer kOffers[] = {{Command::FileOpen, Text::CommandOpen, "open", "cmdOpen"},
                             {Command::FileDownload, Text::CommandDownload, "download", "cmdDownload"},
                             {Command::HelpTour, Text::CommandTour, "help", "cmdTour"}};

void enlarge(QLabel& label, qreal size) {
    QFont font = label.font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(true);
    label.setFont(font);
}

void empty(QGridLayout& list) {
    while (QLayoutItem* const item = list.takeAt(0)) {
        if (item->widget() != nullptr) item->widget()->deleteLater();
        delete item;
    }
}

} // namespace

StartPage::StartPage(const Session& session) : session_(session) {
    setObjectName("StartPage");
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    auto* const heading = new QLabel(loadText(session, Text::NoDataFileIsOpen));
    enlarge(*heading, kHeadingSize);
    auto* const advice = new QLabel(loadText(session, Text::OpenADataFile));
    advice->setForegroundRole(QPalette::PlaceholderText);
    auto* const page = new QWidget;
    auto* const column = new QVBoxLayout(page);
    column->addStretch(1);
    column->addWidget(heading);
    column->addWidget(advice);
    column->addSpacing(kGap / 2);
    column->addWidget(commands());
    for (QGridLayout** list : {&recent_, &samples_}) {
        *list = new QGridLayout;
        (*list)->setVerticalSpacing(kGap / 6);
        column->addSpacing(kGap / 2);
        column->addLayout(*list);
    }
    column->addStretch(2);
    setWidget(page);
}

QWidget* StartPage::commands() {
    auto* const buttons = new QWidget;
    auto* const row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    for (const Offer& offer : kOffers) {
        QPushButton* const button = pushButton(session_, offer.text, offer.name, loadPlainText(session_, offer.text));
        button->setIcon(iconOf(offer.icon));
        connect(button, &QPushButton::clicked, this, [this, offer] { emit CommandAsked(offer.command); });
        row->addWidget(button);
    }
    row->addStretch(1);
    return buttons;
}

void StartPage::ShowFiles() {
    fillList(*recent_, Text::RecentFiles, "cmdRecent", session_.RecentFiles, &StartPage::RecentAsked);
    fillList(*samples_, Text::Samples, "cmdSample", sampleFiles(), &StartPage::SampleAsked);
}

void StartPage::fillList(QGridLayout& list, Text::Id heading, const char* name, const std::vector<std::string>& paths,
                         FileAsked asked) {
    empty(list);
    if (paths.empty()) return;
    auto* const caption = new QLabel(loadText(session_, heading));
    enlarge(*caption, 1);
    list.addWidget(caption, 0, 0, 1, 2);
    list.setColumnStretch(1, 1);
    for (const std::string& path : paths) {
        const int row = static_cast<int>(&path - paths.data()) + 1;
        const QString fileName = shown(path.substr(path.find_last_of("/\\") + 1));
        auto* const button = new QPushButton(iconOf("file"), {});
        button->setText(button->fontMetrics().elidedText(fileName, Qt::ElideMiddle, kListWidth).replace("&", "&&"));
        button->setFlat(true);
        button->setStyleSheet("text-align: left");
        button->setCursor(Qt::PointingHandCursor);
        button->setToolTip(shown(path));
        nameControl(*button, (name + std::to_string(row)).c_str(), fileName);
        // Deferred, because opening may fill the list again.
        connect(
            button, &QPushButton::clicked, this, [this, asked, path] { emit(this->*asked)(shown(path)); },
            Qt::QueuedConnection);
        list.addWidget(button, row, 0);
        const Text::Id sentence = sampleSentence(path);
        if (asked != &StartPage::SampleAsked || sentence == Text::None) continue;
        auto* const words = new QLabel(loadText(session_, sentence));
        words->setWordWrap(true);
        words->setMinimumWidth(kSentenceWidth);
        button->setAccessibleDescription(words->text());
        list.addWidget(words, row, 1);
    }
}

} // namespace kestrane
