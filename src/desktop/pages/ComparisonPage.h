// The "Compare HPD" tab: the log compared with a hearing protector as a chart, with figures in the bar above it. Until
// a protector is chosen the page says so, and it asks for the screen to choose one unless the user has declined.
#pragma once

#include "app/ProtectorScreen.h"
#include "desktop/pages/GraphPage.h"

#include <functional>
#include <string>
#include <vector>

namespace kestrane {

class ComparisonPage : public GraphPage {
    Q_OBJECT

public:
    ComparisonPage(Session& session, ExplorerState& state);

    QWidget* Bar() override { return bar_; }

    void Follow(const clsLog* inView) override;
    void Draw(clsLog& inView) override;
    ClipboardForms Copy(const clsLog& inView, bool valuesOnly) const override;
    std::unique_ptr<PagedDocument> Pages(const PrintedView& printed) const override;

    void ChooseProtector(); // lets the user choose a protector to compare the log with
    void ChooseByRank();    // lets the user choose from all protectors, with the best first

signals:
    void DatabaseDownloadAsked(QWidget* parent, bool* isDone); // isDone is set before the signal returns
    void ProtectorAsked();                                     // the frame may ignore it when it is busy
    void RankAsked();                                          // the same
    void ProtectorChosen();

protected:
    ChartChoice choice() const override;

private:
    void choose(const std::function<std::optional<ProtectorChoice>(const clsLog& log)>& screen);
    void showFigures(const std::vector<std::pair<std::string, std::string>>& figures, const std::string& grade);

    QWidget* bar_;
    QLabel* fraHPD_;
    QLabel* lblGrade_;
    QLabel* placeholder_;
    HPDComparison comparison_; // as it was last drawn
};

} // namespace kestrane
