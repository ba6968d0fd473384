// Somebody who uses the program without knowing what for: commands, keys, clicks, drags, files and dialogs, drawn by a
// seed. The same seed does the same as long as the program shows the same.
#pragma once

#include "desktop/Desk.h"
#include "download/ScriptedLine.h"
#include "platform/Http.h"
#include "platform/desktop/DesktopMessages.h"
#include "protection/ProtectorDatabase.h"

#include <QTimer>

#include <deque>
#include <random>

namespace kestrane {

struct NoNetwork : Http {
    HttpAnswer Get(const std::string&, std::int64_t, const GoOn&) override {
        return {HttpAnswer::End::Failed, {}, "There is no network."};
    }
};

class Monkey : public Desk {
public:
    Monkey(DesktopMessages& boxes, unsigned seed);
    ~Monkey();

    void step(); // does one thing, and waits until nothing goes on any more

    const std::deque<std::string>& log() const { return log_; } // the last steps, oldest first

    int below(int bound) { return bound < 1 ? 0 : static_cast<int>(random_() % static_cast<unsigned>(bound)); }

private:
    void note(const std::string& what);
    void recover();
    void openFile();
    void giveCommand();
    void pressKey(QWidget& receiver);
    void clickOn(QWidget& widget);
    void drag(QWidget& widget);
    void dropNode();
    void clickInTree();
    void chooseTab();
    void editFigures();
    void arrangeWindow();
    void answerMenu(QWidget& popup);
    void answerDialog(QDialog& dialog);
    void look(); // for a dialog or a drag that waits for somebody

    // In the window in front; null when it is not there or cannot be seen.
    template <class Widget>
    Widget* inFront(const char* name) {
        QMdiSubWindow* const window = area().currentSubWindow();
        auto* const found = window == nullptr ? nullptr : window->findChild<Widget*>(QLatin1String(name));
        return found != nullptr && found->isVisible() ? found : nullptr;
    }

    QWidget* anyWidgetIn(QWidget& parent);

    std::mt19937 random_;
    std::deque<std::string> log_;
    ScriptedTime time_;
    ScriptedComm comm_{time_};
    ProtectorCollection protectors_;
    NoNetwork http_;
    QTimer looking_;
    int files_ = 0; // that were made
};

} // namespace kestrane
