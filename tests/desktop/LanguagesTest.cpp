// The window in a language that nobody speaks: every text of the table has other vowels and is longer by two fifths.
// What still reads like English did not come from the table, and what is cut would be cut in some language.
#include "desktop/Desk.h"
#include "desktop/HelpTopic.h"
#include "desktop/assessment/tvwAssessment.h"
#include "desktop/frmRank.h"
#include "dialogs/DownloadDialogs.h"
#include "dialogs/ModalDialog.h"
#include "dialogs/frmAcquire.h"
#include "dialogs/frmHPD.h"
#include "dialogs/frmProgress.h"
#include "dialogs/frmRecovery.h"
#include "protection/ProtectorDatabase.h"

#include <QComboBox>
#include <QDir>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QStackedWidget>
#include <QTabWidget>

#include <deque>
#include <set>

namespace kestrane {
namespace {

// Patterns, which only look like words, and the filters of file dialogs.
bool isNoWord(const TextEntry& entry) {
    return entry.Id == Text::LongDate || entry.Id == Text::DateOfPrinting ||
           entry.Text.find('|') != std::string_view::npos;
}

std::string stretched(std::string_view text) {
    static const std::map<char, std::string_view> kVowels = {
        {'a', "\u00E1"}, {'e', "\u00E9"}, {'i', "\u00ED"}, {'o', "\u00F3"}, {'u', "\u00FA"}, {'y', "\u00FD"},
        {'A', "\u00C1"}, {'E', "\u00C9"}, {'I', "\u00CD"}, {'O', "\u00D3"}, {'U', "\u00DA"}, {'Y', "\u00DD"}};
    std::string result;
    std::size_t letters = 0;
    std::size_t behindLetters = 0;
    for (const char c : text) {
        const auto vowel = kVowels.find(c);
        vowel == kVowels.end() ? result += c : result += vowel->second;
        if (std::isalpha(static_cast<unsigned char>(c)) == 0) continue;
        ++letters;
        behindLetters = result.size();
    }
    return letters < 4 ? result : result.insert(behindLetters, letters * 2 / 5, 'l');
}

// The texts last as long as the program.
Language foreignLanguage() {
    static std::deque<std::string> texts;
    static std::vector<TextEntry> words;
    if (words.empty())
        for (const TextEntry& entry : TextTable())
            if (!isNoWord(entry)) words.push_back({entry.Id, texts.emplace_back(stretched(entry.Text))});
    return {"zz", "", words};
}

// Words of the samples, of instruments, fonts and addresses, which are not the program's. "Auto" is a word everywhere.
bool isOfData(const QString& word) {
    static const QStringList kWords = {"Kestrane", "Ordwyn", "Acoustics", "Broadband", "Planer", "Octave",
                                       "Third",    "Fast",   "Slow",      "Auto",      "Arial",  "Courier",
                                       "New",      "Tern",   "House",     "Lane",      "Bay",    "Saltmarsh",
                                       "support",  "sales",  "ISO",       "ordwyn",    "example"};
    static const QString kSamples = QDir(SAMPLES_DIR).entryList().join(' ');
    return kWords.contains(word) || kSamples.contains(word);
}

QStringList englishIn(const QString& text) {
    static const QRegularExpression kWord("(?<![\\p{L}/.])[A-Za-z]*[AEIOUYaeiouy][A-Za-z]*(?![\\p{L}/.])");
    static const QRegularExpression kTag("<[^>]*>");
    QStringList words;
    for (auto match = kWord.globalMatch(QString(text).remove(kTag)); match.hasNext();) {
        const QString word = match.next().captured();
        if (word.size() > 2 && !isOfData(word)) words.push_back(word);
    }
    return words;
}

bool hasHeader(const QAbstractItemView& view) {
    const auto* const header = view.findChild<QHeaderView*>();
    return header != nullptr && header->isVisible();
}

QStringList textsOf(const QWidget& widget) {
    QStringList texts = {widget.windowTitle(), widget.accessibleName(), widget.toolTip()};
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) texts.push_back(label->text());
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) texts.push_back(button->text());
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) texts.push_back(group->title());
    if (const auto* tabs = qobject_cast<const QTabBar*>(&widget))
        for (int tab = 0; tab < tabs->count(); ++tab)
            texts.push_back(tabs->tabText(tab));
    if (const auto* list = qobject_cast<const QComboBox*>(&widget)) texts.push_back(list->currentText());
    if (const auto* table = qobject_cast<const QAbstractItemView*>(&widget); table != nullptr && hasHeader(*table))
        for (int column = 0; table->model() != nullptr && column < table->model()->columnCount(); ++column)
            texts.push_back(table->model()->headerData(column, Qt::Horizontal).toString());
    for (const QAction* action : widget.actions())
        texts << action->text() << action->toolTip();
    return texts;
}

bool isCut(const QWidget& widget) {
    const auto* label = qobject_cast<const QLabel*>(&widget);
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    const bool hasText =
        (label != nullptr && !label->text().isEmpty()) || (button != nullptr && !button->text().isEmpty());
    const bool wraps = label != nullptr && label->wordWrap();
    const QSize least = widget.minimumSizeHint();
    return hasText && ((!wraps && widget.width() < least.width()) || widget.height() + 1 < least.height());
}

void checkTexts(const QWidget& window, const std::string& where) {
    QList<const QWidget*> widgets = window.findChildren<const QWidget*>();
    widgets.push_back(&window);
    for (const QWidget* widget : widgets) {
        const bool isOfToolkit = widget->inherits("QMdiSubWindow") ||
                                 qobject_cast<QTabBar*>(widget->parentWidget()) != nullptr || widget->inherits("QMenu");
        const bool isOfExport = widget->inherits("QTableView") && widget->window()->objectName() == "frmExport";
        if (!widget->isVisible() || isOfToolkit || isOfExport) continue;
        const std::string name = where + ": " + widget->objectName().toStdString();
        for (const QString& text : textsOf(*widget))
            EXPECT_EQ(englishIn(text), QStringList()) << name << ": " << text.toStdString();
        EXPECT_FALSE(isCut(*widget)) << name << ": " << textsOf(*widget).join(' ').toStdString();
    }
    const QSize screen(1024, 768);
    EXPECT_TRUE(window.width() <= screen.width() && window.height() <= screen.height()) << where << " is too large";
}

QAction& commandOf(Desk& desk, Text::Id text) {
    const QString words = QString::fromStdString(PlainCaption(desk.session.LoadText(text)));
    QList<QAction*> actions = desk.frame->actions();
    for (const QAction* menu : desk.frame->menuBar()->actions())
        if (menu->menu() != nullptr) actions += menu->menu()->actions();
    for (QAction* action : actions)
        if (action->text().remove('&') == words) return *action;
    throw std::runtime_error(words.toStdString());
}

ProtectorCollection* oneProtector() {
    static ProtectorCollection protectors;
    protectors.Protectors.resize(1);
    clsHP& protector = protectors.Protectors.front();
    protector.Name = "1";
    for (int band = 1; band <= kProtectorBands; ++band)
        protector.Mean(band) = 20;
    return &protectors;
}

// Takes the protector, whenever the comparison asks for one.
void takeProtector(QTimer& asked) {
    QObject::connect(&asked, &QTimer::timeout, [] {
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr) return;
        type(control<QLineEdit>(*dialog, "txtSearch"), "1");
        click(*dialog, "cmdOK");
    });
    asked.start(20);
}

TEST(ForeignLanguage, EveryTabSpeaksIt) {
    const Language foreign = foreignLanguage();
    Desk desk({}, {1024, 740}, nullptr, {foreign, foreign});
    desk.session.protectors = oneProtector();
    QTimer asked;
    takeProtector(asked);
    checkTexts(*desk.frame, "start page");
    for (const auto& [sample, log] :
         {std::pair("night-environment.xml", "Broadband 1"), std::pair("shift-dosimeter.xml", "Broadband 1"),
          std::pair("machine-survey-octave.xml", "Planer"), std::pair("third-octave-2000.xml", "Third Octave 1")}) {
        desk.open(sample);
        desk.clickNode(log);
        for (int tab = 0; tab < desk.tabs().count(); ++tab) {
            QTest::mouseClick(&desk.tabs(), Qt::LeftButton, {}, desk.tabs().tabRect(tab).center());
            desk.settle();
            checkTexts(*desk.frame, std::string(sample) + ", " + desk.tabInFront().toStdString());
        }
    }
    for (const QAction* menu : desk.frame->menuBar()->actions())
        for (const QAction* action : menu->menu()->actions())
            EXPECT_EQ(englishIn(action->text() + " " + action->toolTip()), QStringList());
}

TEST(ForeignLanguage, TheAssessmentSpeaksIt) {
    const Language foreign = foreignLanguage();
    Desk desk({}, {1024, 740}, nullptr, {foreign, foreign});
    commandOf(desk, Text::CommandNewAssessment).trigger();
    desk.settle();
    desk.control<QAbstractButton>("cmdTask").click();
    desk.settle();
    auto& groups = desk.control<QTreeWidget>("tvwAssessment");
    for (const auto& [column, entry] :
         {std::pair(AssessmentColumn::Samples, "91"), std::pair(AssessmentColumn::Hours, "5")}) {
        groups.setFocus();
        groups.setCurrentItem(groups.topLevelItem(0)->child(0), static_cast<int>(column));
        desk.press(Qt::Key_F2);
        type(*QApplication::focusWidget(), entry);
        desk.press(Qt::Key_Return);
        desk.settle();
    }
    EXPECT_TRUE(desk.control<QLabel>("lblFigures").text().contains("89.0 dB"));
    checkTexts(*desk.frame, "assessment");
}

using Visit = std::function<void(const QDialog&, const std::string& name)>;

// Goes through the pages that a user of a dialog can reach, whether they lie on each other or a button turns them.
void visitPages(QDialog& dialog, const std::string& name, const Visit& visit) {
    auto* const pages = dialog.findChild<QStackedWidget*>();
    const auto* const tabs = dialog.findChild<QTabWidget*>();
    auto* const next = dialog.findChild<QAbstractButton*>("cmdNext");
    for (int page = 0; page < (pages == nullptr ? 1 : pages->count()); ++page) {
        if (tabs != nullptr && !tabs->isTabEnabled(page)) continue;
        if (pages != nullptr) pages->setCurrentIndex(page);
        QCoreApplication::processEvents();
        visit(dialog, name);
    }
    if (next == nullptr || !next->isEnabled()) return;
    next->click();
    if (dialog.isVisible()) visitPages(dialog, name, visit);
}

// One that lets nothing else be used, or one beside the window.
QDialog* dialogInSight(Desk& desk) {
    auto* const modal = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (modal != nullptr) return modal;
    const auto all = desk.frame->findChildren<QDialog*>();
    const auto shown = std::ranges::find_if(all, &QDialog::isVisible);
    return shown == all.end() ? nullptr : *shown;
}

// Those that an instrument, an unsaved document or a comparison brings up.
struct DialogRow {
    const char* name;
    void (*open)(Desk& desk);
};

constexpr DialogRow kOtherDialogs[] = {
    {"rank",
     [](Desk& desk) {
         clsFile& file = *desk.session.OpenFiles.back();
         frmRank::Choose(desk.session, file, *file.InstrumentDatas.front()->Octaves.front(), {}, desk.frame.get());
     }},
    {"choice of a protector",
     [](Desk& desk) {
         const clsLog& log = *desk.session.OpenFiles.back()->InstrumentDatas.front()->Octaves.front();
         frmHPD::ShowHPDComparisonScreen(desk.session, log, {}, {}, desk.frame.get());
     }},
    {"recovery",
     [](Desk& desk) {
         frmRecovery::Ask(desk.session, {{"1.xml", "12:00", "", "/1.xml"}}, desk.frame.get());
     }},
    {"logs of an instrument",
     [](Desk& desk) {
         frmAcquire::ChooseLogs(desk.session, {"1", "2", {"3"}, true, true, {60}}, desk.frame.get());
     }},
    {"exchange rate", [](Desk& desk) { frmAcquire::setExchRate(desk.session, 3, desk.frame.get()); }},
    {"criterion level", [](Desk& desk) { frmAcquire::setCriterion(desk.session, 90, desk.frame.get()); }},
    {"download",
     [](Desk& desk) {
         const SteadyClock clock;
         DownloadDialogs dialogs(desk.session, clock, desk.frame.get());
         dialogs.ShowProgress({"", 4096, 1, 2, 2048, 4096, 20});
         QCoreApplication::processEvents();
     }},
    {"failed download", [](Desk& desk) { frmProgress(desk.session, desk.frame.get()).AskTranscript(); }},
};

// Opens each dialog of the log and of the program, and visits every page of it.
void forEachDialog(Desk& desk, const Visit& visit) {
    desk.session.protectors = oneProtector();
    desk.open("machine-survey-octave.xml");
    desk.clickNode("Planer");
    const auto visitOpened = [&](const std::string& name, const std::function<void()>& open) {
        bool isShown = false;
        QTimer::singleShot(0, [&] {
            QDialog* const dialog = dialogInSight(desk);
            isShown = dialog != nullptr && QTest::qWaitForWindowActive(dialog);
            if (!isShown) return;
            visitPages(*dialog, name, visit);
            if (dialog->isVisible()) dialog->reject();
        });
        open();
        QCoreApplication::processEvents();
        EXPECT_TRUE(isShown) << name;
    };
    const auto visitCommand = [&](Text::Id text) {
        visitOpened(desk.session.LoadText(text), [&] { commandOf(desk, text).trigger(); });
    };
    for (const Text::Id text :
         {Text::CommandProtectorDatabase, Text::CommandSettings, Text::CommandExposureTime,
          Text::CommandAddRemoveIntervals, Text::CommandPrintPreview, Text::CommandAbout, Text::EditNote,
          Text::CommandConvertWeighting, Text::CommandDisplayOptions, Text::ShowChartTable, Text::CommandHistory,
          Text::CommandExport, Text::CommandExportPicture, Text::CommandEvents, Text::CommandDistribution,
          Text::CommandCompareLogs, Text::CommandSpectrogram, Text::CommandKeys, Text::CommandCalibration})
        visitCommand(text);
    for (const Text::Id text :
         {Text::CommandFind, Text::CommandHelp, Text::CommandTour}) // which lie beside the window or turn pages
        visitCommand(text);
    for (const DialogRow& row : kOtherDialogs)
        visitOpened(row.name, [&] { row.open(desk); });
}

TEST(ForeignLanguage, EveryDialogSpeaksIt) {
    const Language foreign = foreignLanguage();
    Desk desk({}, {1024, 740}, nullptr, {foreign, foreign});
    forEachDialog(desk, [](const QDialog& dialog, const std::string& name) { checkTexts(dialog, name); });
}

QString lettersOf(const QWidget& window) {
    static const QRegularExpression kMark("&([^&])");
    QString letters;
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<const QLabel*>(widget);
        if (!widget->isVisible() || (label != nullptr && label->buddy() == nullptr)) continue;
        QStringList captions = textsOf(*widget).mid(3); // without the texts that have no marks
        for (QString& caption : captions)
            if (const auto mark = kMark.match(caption.remove("&&")); mark.hasMatch())
                letters += mark.captured(1).toLower();
    }
    return letters;
}

TEST(Help, HasAPageAboutEveryDialog) {
    Desk desk;
    forEachDialog(desk, [&](const QDialog& dialog, const std::string& name) {
        const bool isItself = dialog.objectName().isEmpty() || dialog.objectName() == "frmHelp"; // or a question
        EXPECT_EQ(helpTopicOf(&dialog) == "help", isItself) << name;
    });
}

TEST(EveryLanguage, GivesTheControlsOfADialogLettersOfTheirOwn) {
    for (const Language& language : Languages()) {
        Desk desk({}, {1024, 740}, nullptr, {language, language});
        std::set<QString> titles;
        for (const QAction* menu : desk.frame->menuBar()->actions())
            EXPECT_TRUE(titles.insert(menu->text().section('&', 1).left(1).toLower()).second)
                << language.Name << ": " << menu->text().toStdString();
        forEachDialog(desk, [&](const QDialog& dialog, const std::string& name) {
            const QString letters = lettersOf(dialog);
            const std::set<QChar> different(letters.begin(), letters.end());
            EXPECT_EQ(different.size(), static_cast<std::size_t>(letters.size()))
                << language.Name << ", " << name << ": " << letters.toStdString();
        });
        Desk used({}, {1024, 740}, nullptr, {language, language});
        const auto checkLetters = [&](const std::string& where) {
            for (const QWidget* widget : used.area().currentSubWindow()->findChildren<QWidget*>()) {
                const auto* const label = qobject_cast<const QLabel*>(widget);
                const auto* const button = qobject_cast<const QAbstractButton*>(widget);
                if (!widget->isVisible() || (button == nullptr && (label == nullptr || label->buddy() == nullptr)))
                    continue;
                const QString text = button != nullptr ? button->text() : label->text();
                EXPECT_FALSE(titles.contains(QKeySequence::mnemonic(text).toString().section('+', 1).toLower()))
                    << language.Name << ", " << where << ": " << text.toStdString();
            }
        };
        checkLetters("start page");
        used.open("third-octave-2000.xml");
        used.clickNode("Third Octave 1");
        used.press(QKeySequence("Ctrl+Shift+R")); // the strip of the range
        for (int tab = 0; tab < used.tabs().count(); ++tab) {
            if (tab == eTabCompareHPD) continue; // asks for a protector
            used.tabs().setCurrentIndex(tab);
            used.settle();
            checkLetters(used.tabInFront().toStdString());
        }
    }
}

} // namespace
} // namespace kestrane
