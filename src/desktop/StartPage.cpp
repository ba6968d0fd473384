#include "desktop/StartPage.h"

#include "app/StartUp.h"
#include "dialogs/Icons.h"
#include "dialogs/Words.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace kestrane {

namespace {

constexpr int kListWidth = 260; // pixels
constexpr int kGap = 24;
constexpr qreal kHeadingSize = 1.5; // of the usual font size

struct Offer {
    Command command;
    Text::Id text;
    const char* icon;
    const char* name;
};

constexpr Offer kOffers[] = {{Command::FileOpen, Text::CommandOpen, "open", "cmdOpen"},
                             {Command::FileDownload, Text::CommandDownload, "download", "cmdDownload"}};

void enlarge(QLabel& label, qreal size) {
    QFont font = label.font();
    font.setPointSizeF(font.pointSizeF() * size);
    font.setBold(true);
    label.setFont(font);
}

void empty(QVBoxLayout& list) {
    while (QLayoutItem* const item = list.takeAt(0)) {
        if (item->widget() != nullptr) item->widget()->deleteLater();
        delete item;
    }
}

} // namespace

StartPage::StartPage(const Session& session) : session_(session) {
    setObjectName("StartPage");
    auto* const heading = new QLabel(loadText(session, Text::NoDataFileIsOpen));
    enlarge(*heading, kHeadingSize);
    auto* const advice = new QLabel(loadText(session, Text::OpenADataFile));
    advice->setForegroundRole(QPalette::PlaceholderText);
    recent_ = new QVBoxLayout;
    samples_ = new QVBoxLayout;
    auto* const lists = new QHBoxLayout;
    lists->setSpacing(kGap);
    for (QVBoxLayout* list : {recent_, samples_}) {
        list->setSpacing(0);
        lists->addLayout(list);
        lists->setAlignment(list, Qt::AlignTop | Qt::AlignLeft);
    }

    auto* const column = new QVBoxLayout;
    column->addStretch(1);
    column->addWidget(heading);
    column->addWidget(advice);
    column->addSpacing(kGap / 2);
    column->addWidget(commands());
    column->addSpacing(kGap);
    column->addLayout(lists);
    column->addStretch(2);
    auto* const row = new QHBoxLayout(this);
    row->addStretch(1);
    row->addLayout(column);
    row->addStretch(1);
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

void StartPage::fillList(QVBoxLayout& list, Text::Id heading, const char* name, const std::vector<std::string>& paths,
                         FileAsked asked) {
    empty(list);
    if (paths.empty()) return;
    auto* const caption = new QLabel(loadText(session_, heading));
    enlarge(*caption, 1);
    list.addWidget(caption);
    for (const std::string& path : paths) {
        const QString fileName = shown(path.substr(path.find_last_of("/\\") + 1));
        auto* const button = new QPushButton(iconOf("file"), {});
        button->setText(button->fontMetrics().elidedText(fileName, Qt::ElideMiddle, kListWidth).replace("&", "&&"));
        button->setFlat(true);
        button->setStyleSheet("text-align: left");
        button->setCursor(Qt::PointingHandCursor);
        button->setToolTip(shown(path));
        nameControl(*button, (name + std::to_string(&path - paths.data() + 1)).c_str(), fileName);
        // Deferred, because opening may fill the list again.
        connect(
            button, &QPushButton::clicked, this, [this, asked, path] { emit(this->*asked)(shown(path)); },
            Qt::QueuedConnection);
        list.addWidget(button);
    }
}

} // namespace kestrane
