// The whole program used without sense (Monkey.h). After every step, what the windows show must be what the core says
// now; now and then steps are undone and done again. The environment makes other and longer runs: the numbers
// KESTRANE_MONKEY_SEED (those behind it are used), KESTRANE_MONKEY_SEEDS and KESTRANE_MONKEY_EVENTS;
// KESTRANE_MONKEY_LOG names a file for all steps.
#include "desktop/Monkey.h"

#include "assessment/CriteriaTable.h"
#include "desktop/frmExplorer.h"
#include "dialogs/Words.h"
#include "explorer/Edits.h"
#include "explorer/NodeKeys.h"
#include "files/XmlWriter.h"
#include "views/CumulativePanel.h"
#include "views/ExposureTable.h"
#include "views/IntervalTable.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QTableView>
#include <QTreeWidgetItemIterator>

#include <cstdlib>
#include <iostream>
#include <set>

namespace kestrane {
namespace {

constexpr int kEventsToUndo = 50;     // that many events later, something is undone
constexpr std::size_t kStepsBack = 8; // most often; the text of the document is written for each
constexpr int kRarely = 20;           // one time in so many, all steps

int numberOf(const char* variable, int otherwise) {
    const char* const text = std::getenv(variable);
    return text == nullptr ? otherwise : std::atoi(text);
}

// The keys and texts of the nodes, in order. Those that stand outermost have the mark of their document.
QStringList nodesOf(const Session& session, const std::vector<TreeNode>& nodes, bool isOutermost = true) {
    QStringList all;
    for (const TreeNode& node : nodes) {
        const std::string mark = isOutermost ? markOf(*resolve(session, node.Key).file) : "";
        all.push_back(shown(node.Key + " " + node.Text + mark));
        all += nodesOf(session, node.Children, false);
    }
    return all;
}

QStringList nodesOf(QTreeWidget& tree) {
    QStringList all;
    for (QTreeWidgetItemIterator at(&tree); *at != nullptr; ++at)
        all.push_back((*at)->data(0, Qt::UserRole).toString() + " " + (*at)->text(0));
    return all;
}

// Captions and values that the cumulative panel should have, sorted.
QStringList figuresOf(const clsLog& log, const LogView& view) {
    const PanelForm form = cumulativePanelOf(log, view.Panel);
    QStringList all;
    for (const PanelRow& row : cumulativePanel(log, view.PanelBand(log))) {
        const bool hasB = log.IsChannelBOn && showsChannelB(form) && !row.B.Name.empty() && !row.B.Text.empty();
        if (!isShownIn(form, row.Section) || (row.A.Text.empty() && !hasB)) continue;
        all.push_back(shown(row.Caption + "|" + valueText(row.A, row.Unit)));
        if (hasB) all.back() += shown("|" + valueText(row.B, row.Unit));
    }
    all.sort();
    return all;
}

// Those that it has.
QStringList figuresOn(const QWidget& panel) {
    QStringList all;
    for (const QGroupBox* const box : panel.findChildren<QGroupBox*>()) {
        const auto* const grid = qobject_cast<QGridLayout*>(box->layout());
        const auto text = [&](int row, int column) {
            const QLayoutItem* const item = grid->itemAtPosition(row, column);
            return item == nullptr ? QString() : qobject_cast<QLabel*>(item->widget())->text();
        };
        for (int row = 0; grid != nullptr && grid->itemAtPosition(row, 0) != nullptr; ++row) {
            all.push_back(text(row, 0) + "|" + text(row, 1));
            const bool hasB =
                grid->itemAtPosition(row, 3) != nullptr && grid->itemAtPosition(row, 3) != grid->itemAtPosition(row, 1);
            if (hasB) all.back() += "|" + text(row, 3);
        }
    }
    all.sort();
    return all;
}

using Cells = std::vector<std::vector<std::string>>;

// Of all rows, the first ones, the last one and some between.
template <class Cell>
void compareCells(const QAbstractItemView& grid, std::size_t rows, std::size_t columns, Cell cell) {
    ASSERT_EQ(grid.model()->rowCount(), static_cast<int>(rows));
    ASSERT_EQ(grid.model()->columnCount(), static_cast<int>(columns));
    constexpr std::size_t kCompared = 7;
    const std::size_t every = std::max<std::size_t>(rows / kCompared, 1);
    for (std::size_t row = 0; row < rows; row = row + every < rows || row + 1 == rows ? row + every : rows - 1) {
        for (std::size_t column = 0; column < columns; ++column) {
            const QModelIndex at = grid.model()->index(static_cast<int>(row), static_cast<int>(column));
            ASSERT_EQ(at.data().toString(), shown(cell(row, column))) << "row " << row << ", column " << column;
        }
    }
}

// first: the columns before it are not shown.
void compareCells(const QAbstractItemView& grid, const Cells& cells, std::size_t first) {
    compareCells(grid, cells.size(), cells.empty() ? 0 : cells.front().size() - first,
                 [&](std::size_t row, std::size_t column) { return cells[row][column + first]; });
}

template <class Caption>
void compareCaptions(const QAbstractItemView& grid, Caption caption) {
    for (int column = 0; column < grid.model()->columnCount(); ++column)
        ASSERT_EQ(grid.model()->headerData(column, Qt::Horizontal).toString(),
                  shown(caption(static_cast<std::size_t>(column))));
}

void compareTabs(const QTabBar& bar, const clsLog& log, LogTab inFront) {
    ASSERT_EQ(bar.currentIndex(), inFront);
    const TabFlags enabled = enabledTabs(log);
    for (const LogTab tab : kAllLogTabs) {
        ASSERT_EQ(bar.isTabEnabled(tab), enabled[static_cast<std::size_t>(tab)]) << "tab " << tab;
        ASSERT_EQ(bar.accessibleTabName(tab), loadText(log.session(), tabRow(tab).Caption));
    }
}

void compareLog(frmExplorer& explorer, const Session& session) {
    ExplorerState& state = explorer.State();
    const clsLog* const log = state.LogInView(session);
    if (log == nullptr || log->IsBusy() || state.Content(session) != LogContent::Values) return;
    ASSERT_NO_FATAL_FAILURE(compareTabs(*explorer.findChild<QTabBar*>("tabLog"), *log, state.View.Tab));
    const auto grid = [&](const char* name) -> QAbstractItemView& {
        return *explorer.findChild<QAbstractItemView*>(QLatin1String(name));
    };
    if (state.View.Tab == eTabCumulativeData) {
        ASSERT_EQ(figuresOn(*explorer.findChild<QScrollArea*>("fraDefaultData")).join("; "),
                  figuresOf(*log, state.View).join("; "));
    } else if (state.View.Tab == eTabIntervalsTable) {
        const IntervalTable table(*log, state.View.Channel(), state.View.Choice());
        compareCells(grid("grdTable"), table.rowCount(), table.columnCount(),
                     [&](std::size_t row, std::size_t column) { return table.cell(row, column); });
        compareCaptions(grid("grdTable"), [&](std::size_t column) { return table.caption(column); });
    } else if (state.View.Tab == eTabExposureCalculator) {
        ExposureTable table = exposureTable(*state.OpenedLog(session));
        table.Rows.push_back(table.Totals);
        compareCells(grid("grdDose"), table.Rows, 1);
    } else if (state.View.Tab == eTabCriteria) {
        const CriteriaTable table = criteriaTable(*log);
        compareCells(grid("grdCriteria"), table.Rows, 0);
        compareCaptions(grid("grdCriteria"), [&](std::size_t column) { return table.Captions[column]; });
    }
}

// The window's actions for commands stand in the order of the table. What could be pasted only the window knows.
void compareCommands(const mdiMain& frame, const Session& session, const frmExplorer& inFront) {
    std::set<Command> seen;
    for (const MenuItem& item : menuItems()) {
        if (!seen.insert(item.command).second || item.command == Command::EditPaste) continue;
        const QAction& action = *frame.actions()[static_cast<int>(seen.size()) - 1];
        ASSERT_EQ(action.isEnabled(), IsMenuEnabled(session, item.command, inFront.StateForMenus()))
            << action.text().toStdString();
        if (item.command != Command::EditUndo && item.command != Command::EditRedo) continue;
        const Direction direction = item.command == Command::EditUndo ? Direction::Undo : Direction::Redo;
        const clsFile* const file = documentToEdit(session, inFront.StateForMenus().SelectedKey, direction);
        ASSERT_EQ(action.text(), shown(exchangeText(session, file, direction)));
    }
}

void compareWindows(Monkey& monkey) {
    const Session& session = monkey.session;
    const QStringList nodes = nodesOf(session, buildTree(session));
    for (frmExplorer* const explorer : monkey.frame->findChildren<frmExplorer*>()) {
        ASSERT_EQ(nodesOf(*explorer->findChild<QTreeWidget*>("tvwTreeView")).join("; "), nodes.join("; "));
        ASSERT_EQ(explorer->windowTitle(), shown(explorer->State().Caption(session)));
        ASSERT_NO_FATAL_FAILURE(compareLog(*explorer, session));
    }
    const bool isSaidToLoad = monkey.panel("Status") == loadText(session, Text::LoadingIntervals);
    ASSERT_FALSE(isSaidToLoad && session.IsIdle());
    const QMdiSubWindow* const front = monkey.area().currentSubWindow();
    const auto* const explorer = front == nullptr ? nullptr : qobject_cast<frmExplorer*>(front->widget());
    if (explorer != nullptr && !front->isMinimized()) compareCommands(*monkey.frame, session, *explorer);
}

std::string textOf(const clsFile& file) {
    return file.FileName + DocumentText(file, true);
}

std::vector<std::string> textsOf(const Session& session) {
    std::vector<std::string> texts;
    for (const auto& file : session.OpenFiles)
        texts.push_back(textOf(*file));
    return texts;
}

// Undoes so many steps of a document, if it has them, and does them again; every state must come back.
void goBackAndForth(Monkey& monkey, std::size_t steps) {
    Session& session = monkey.session;
    if (session.OpenFiles.empty()) return;
    clsFile& file = *session.OpenFiles[monkey.below(static_cast<int>(session.OpenFiles.size()))];
    const std::vector<std::string> before = textsOf(session);
    std::vector<std::string> states = {textOf(file)};
    const auto goes = [&](Direction direction) {
        const bool isDone = exchangeStep(session, &file, direction);
        monkey.settle();
        compareWindows(monkey);
        return isDone && !testing::Test::HasFailure();
    };
    while (states.size() <= steps && goes(Direction::Undo))
        states.push_back(textOf(file));
    for (auto state = states.rbegin() + 1; state != states.rend(); ++state) {
        ASSERT_TRUE(goes(Direction::Redo));
        ASSERT_EQ(textOf(file), *state) << "there were " << states.size() - 1 << " steps";
    }
    ASSERT_EQ(textsOf(session), before); // a step may be one of two documents
}

class Used : public ::testing::TestWithParam<int> {};

TEST_P(Used, WithoutSenseTheProgramShowsWhatTheCoreSays) {
    const int seed = numberOf("KESTRANE_MONKEY_SEED", 0) + GetParam();
    const int events = numberOf("KESTRANE_MONKEY_EVENTS", 400);
    std::cout << "seed " << seed << ", " << events << " events" << std::endl;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}); // what the platform lacks
    DesktopMessages boxes([](Button) { return std::string("x"); });
    Monkey monkey(boxes, static_cast<unsigned>(seed));
    for (int event = 0; event < events && !HasFailure(); ++event) {
        monkey.step();
        compareWindows(monkey);
        if (event % kEventsToUndo == kEventsToUndo - 1 && !HasFailure())
            goBackAndForth(monkey, monkey.below(kRarely) == 0 ? SIZE_MAX : kStepsBack);
    }
    if (!HasFailure()) return;
    for (const std::string& step : monkey.log())
        std::cout << step << '\n';
}

INSTANTIATE_TEST_SUITE_P(Seeds, Used, ::testing::Range(1, 1 + numberOf("KESTRANE_MONKEY_SEEDS", 3)));

} // namespace
} // namespace kestrane
