#include "dialogs/frmTour.h"

#include "dialogs/Words.h"

#include <QBoxLayout>
#include <QDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QScreen>

#include <algorithm>
#include <iterator>

namespace kestrane {

namespace {

struct Stop {
    const char* picture;
    Text::Id words;
};

constexpr Stop kStops[] = {{":/pictures/tour-open.png", Text::TourOpen},
                           {":/pictures/tour-range.png", Text::TourRange},
                           {":/pictures/tour-figures.png", Text::TourFigures},
                           {":/pictures/tour-report.png", Text::TourReport}};
constexpr int kLast = static_cast<int>(std::size(kStops)) - 1;
constexpr QSize kPicture(640, 416); // in pixels of a screen of usual density
constexpr int kLinesOfWords = 4;
constexpr int kLinesAround = 16; // of the screen's height, for what is below the picture and around the window

class Tour : public QDialog {
public:
    Tour(const Session& session, QWidget* parent) : QDialog(parent), session_(session) {
        setObjectName("frmTour");
        setWindowTitle(loadText(session, Text::TourTitle));
        picture_ = new QLabel;
        picture_->setObjectName("imgTour");
        const int around = kLinesAround * fontMetrics().lineSpacing();
        const QSize room = kPicture.scaled(screen()->availableSize() - QSize(0, around), Qt::KeepAspectRatio);
        picture_->setFixedSize(kPicture.boundedTo(room)); // so that the words below it are seen, too
        picture_->setScaledContents(true);
        words_ = new QLabel;
        words_->setObjectName("lblTour");
        words_->setWordWrap(true);
        words_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
        words_->setMinimumHeight(words_->fontMetrics().lineSpacing() * kLinesOfWords);
        step_ = new QLabel;
        step_->setObjectName("lblStep");
        auto* const layout = new QVBoxLayout(this);
        layout->addWidget(picture_, 0, Qt::AlignHCenter);
        layout->addWidget(words_);
        layout->addWidget(buttons());
        layout->setSizeConstraint(QLayout::SetFixedSize);
        next_->setDefault(true); // which it can be once it is part of the dialog
        goTo(0);
        next_->setFocus();
    }

protected:
    // The arrow keys turn the pages, where a button would move on to the next button.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, event);
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key != Qt::Key_Left && key != Qt::Key_Right) return QDialog::eventFilter(watched, event);
        goTo(stop_ + (key == Qt::Key_Left ? -1 : 1));
        return true;
    }

private:
    QWidget* buttons() {
        const auto button = [&](Text::Id text, const char* name) {
            return pushButton(session_, text, name, loadPlainText(session_, text));
        };
        back_ = button(Text::TourBack, "cmdBack");
        next_ = button(Text::TourNext, "cmdNext");
        QPushButton* const close = button(Text::CloseButton, "cmdClose");
        connect(back_, &QPushButton::clicked, this, [this] { goTo(stop_ - 1); });
        connect(next_, &QPushButton::clicked, this, [this] { stop_ == kLast ? accept() : goTo(stop_ + 1); });
        connect(close, &QPushButton::clicked, this, &QDialog::reject);
        auto* const bar = new QWidget;
        auto* const row = new QHBoxLayout(bar);
        row->setContentsMargins(0, 0, 0, 0);
        row->addWidget(step_);
        row->addStretch(1);
        for (QPushButton* one : {back_, next_, close}) {
            row->addWidget(one);
            one->installEventFilter(this);
        }
        return bar;
    }

    void goTo(int stop) {
        stop_ = std::clamp(stop, 0, kLast);
        picture_->setPixmap(QPixmap(kStops[stop_].picture));
        words_->setText(loadText(session_, kStops[stop_].words));
        picture_->setAccessibleName(windowTitle()); // its words stand below it
        const std::string step = ReplaceText(session_.LoadText(Text::TourStep), "^", std::to_string(stop_ + 1));
        step_->setText(shown(ReplaceText(step, "*", std::to_string(kLast + 1))));
        next_->setText(loadText(session_, stop_ == kLast ? Text::TourFinish : Text::TourNext));
        next_->setAccessibleName(loadPlainText(session_, stop_ == kLast ? Text::TourFinish : Text::TourNext));
        if (stop_ == 0) next_->setFocus(); // Back cannot keep it
        back_->setEnabled(stop_ > 0);
    }

    const Session& session_;
    QLabel *picture_, *words_, *step_;
    QPushButton *back_, *next_;
    int stop_ = 0;
};

} // namespace

void ShowTour(const Session& session, QWidget* parent) {
    Tour(session, parent).exec();
}

} // namespace kestrane
