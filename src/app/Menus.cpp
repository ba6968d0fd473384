#include "app/Menus.h"

#include "explorer/Edits.h"
#include "explorer/ExplorerState.h"
#include "explorer/NodeKeys.h"
#include "views/LogTabs.h"
#include "views/Spectrogram.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <map>
#include <set>

namespace kestrane {

namespace {

constexpr MenuItem kItems[] = {
    {Menu::File, 0, Command::FileDownload, Text::CommandDownload, Text::TipDownload, "download", "Ctrl+D", 1},
    {Menu::File, 1, Command::FileOpen, Text::CommandOpen, Text::TipOpen, "open", "Ctrl+O", 2},
    {Menu::File, 2, Command::FileNewAssessment, Text::CommandNewAssessment, Text::TipNewAssessment, "", "Ctrl+Shift+N"},
    {Menu::File, 3, Command::FileMerge, Text::CommandMerge, Text::TipMerge},
    {Menu::File, 4, Command::FileRecoverDownload, Text::CommandRecoverDownload},
    {Menu::File, 5, Command::FileClose, Text::CommandClose, Text::TipClose, "close", "Ctrl+W"},
    {Menu::File, 6, Command::FileCloseAll, Text::CommandCloseAll, Text::TipCloseAll, "", "Ctrl+Shift+W"},
    {Menu::File, 8, Command::FileSave, Text::CommandSave, Text::TipSave, "save", "Ctrl+S", 3},
    {Menu::File, 9, Command::FileSaveAs, Text::CommandSaveAs, Text::TipSaveAs, "", "Ctrl+Shift+S"},
    {Menu::File, 11, Command::FileExport, Text::CommandExport, Text::TipExport, "", "Ctrl+Shift+E"},
    {Menu::File, 12, Command::FileExportPicture, Text::CommandExportPicture, Text::TipExportPicture, "",
     "Ctrl+Shift+P"},
    {Menu::File, 14, Command::FilePrint, Text::CommandPrint, Text::TipPrint, "print", "", 4, Menu::Print},
    {Menu::File, 15, Command::FilePrintPreview, Text::CommandPrintPreview, Text::TipPrintPreview},
    {Menu::File, 22, Command::FileExit, Text::CommandExit, Text::TipExit, "exit", "Ctrl+Q"},

    {Menu::Print, 0, Command::PrintDefault, Text::CommandDefaultReport, Text::None, "", "Ctrl+P"},
    {Menu::Print, 2, Command::PrintCumulative, Text::CommandCumulativeReport},
    {Menu::Print, 3, Command::PrintIntervals, Text::CommandIntervalsReport},
    {Menu::Print, 4, Command::PrintCriteria, Text::CommandCriteriaReport},
    {Menu::Print, 6, Command::PrintCurrentView, Text::CommandCurrentView},

    {Menu::Edit, 0, Command::EditUndo, Text::Undo, Text::None, "", "Ctrl+Z"},
    {Menu::Edit, 1, Command::EditRedo, Text::Redo, Text::None, "", "Ctrl+Shift+Z; Ctrl+Y"},
    {Menu::Edit, 10, Command::EditCut, Text::CommandCut, Text::TipCut, "cut", "Ctrl+X; Shift+Del", 6},
    {Menu::Edit, 11, Command::EditCopy, Text::CommandCopy, Text::TipCopy, "copy", "Ctrl+C; Ctrl+Ins", 7},
    {Menu::Edit, 12, Command::EditCopyValues, Text::CommandCopyValues, Text::TipCopyValues, "", "Ctrl+Shift+C"},
    {Menu::Edit, 13, Command::EditPaste, Text::CommandPaste, Text::TipPaste, "paste", "Ctrl+V; Shift+Ins", 8},
    {Menu::Edit, 14, Command::EditDelete, Text::CommandDelete, Text::None, "", "Del"},
    {Menu::Edit, 20, Command::EditFind, Text::CommandFind, Text::TipFind, "find", "Ctrl+F", 10},
    {Menu::Edit, 21, Command::EditFindNext, Text::FindNext, Text::None, "", "F3; Ctrl+G"},
    {Menu::Edit, 23, Command::LogEditNote, Text::EditNote},

    {Menu::View, 0, Command::ViewToolbar, Text::CommandToolbar, Text::TipToolbar},
    {Menu::View, 1, Command::ViewStatusBar, Text::CommandStatusBar, Text::TipStatusBar},
    {Menu::View, 3, Command::ViewHPD, Text::CommandProtectorDatabase, Text::TipProtectorDatabase, "", "Ctrl+H"},
    {Menu::View, 5, Command::ViewZoom, Text::CommandZoom, Text::TipZoom, "zoom", "Ctrl+T", 12},
    {Menu::View, 6, Command::ViewIntervals, Text::CommandAddRemoveIntervals, Text::TipIntervals, "intervals", "Ctrl+I",
     13},
    {Menu::View, 7, Command::ViewExposureTime, Text::CommandExposureTime, Text::TipExposureTime, "time", "Ctrl+E", 14},
    {Menu::View, 8, Command::LogCalibration, Text::CommandCalibration, Text::None, "", "Ctrl+Shift+B"},
    {Menu::View, 9, Command::RangeMenu, Text::CommandRangeMenu, Text::None, "", "", 0, Menu::Range},
    {Menu::View, 11, Command::ViewHistory, Text::CommandHistory, Text::TipHistory, "", "Ctrl+Shift+H"},

    {Menu::Range, 0, Command::RangeMeasure, Text::CommandMeasureRange, Text::TipMeasureRange, "", "Ctrl+Shift+R"},
    {Menu::Range, 2, Command::RangeExclude, Text::CommandRangeExclude, Text::None, "", "Ctrl+Shift+X"},
    {Menu::Range, 3, Command::RangeIncludeOnly, Text::CommandRangeIncludeOnly, Text::None, "", "Ctrl+Shift+I"},
    {Menu::Range, 4, Command::RangeZoom, Text::CommandRangeZoom, Text::None, "", "Ctrl+Shift+M"},
    {Menu::Range, 5, Command::LogAddToAssessment, Text::CommandAddToAssessment, Text::TipAddToAssessment, "",
     "Ctrl+Shift+A"},
    {Menu::Range, 6, Command::RangeNote, Text::CommandRangeNote},
    {Menu::Range, 7, Command::RangeCopy, Text::CommandRangeCopy, Text::None, "", "Ctrl+Shift+F"},
    {Menu::Range, 9, Command::RangeLoudest, Text::WindowLoudest, Text::None, "", "Ctrl+Shift+L"},
    {Menu::Range, 10, Command::RangeQuietest, Text::WindowQuietest, Text::None, "", "Ctrl+Shift+K"},
    {Menu::Range, 11, Command::RangeEvents, Text::CommandEvents, Text::None, "", "Ctrl+Shift+V"},
    {Menu::Range, 12, Command::LogDistribution, Text::CommandDistribution, Text::None, "", "Ctrl+Shift+D"},
    {Menu::Range, 13, Command::LogCompare, Text::CommandCompareLogs, Text::None, "", "Ctrl+Shift+G"},
    {Menu::Range, 14, Command::LogSpectrogram, Text::CommandSpectrogram, Text::None, "", "Ctrl+Shift+O"},

    {Menu::Tools, 0, Command::ToolsSettings, Text::CommandSettings, Text::TipSettings, "settings", "Ctrl+,"},
    {Menu::Tools, 3, Command::ToolsSynchronizeClocks, Text::CommandSynchronizeClocks, Text::TipSynchronizeClock,
     "clock"},
    {Menu::Tools, 5, Command::ToolsDownloadHPD, Text::CommandDownloadProtectors, Text::TipDownloadProtectors},

    {Menu::Window, 0, Command::WindowNew, Text::CommandNewExplorer, Text::TipNewExplorer, "", "Ctrl+N"},
    {Menu::Window, 1, Command::WindowReset, Text::CommandResetExplorer, Text::TipResetExplorer, "reset", "Ctrl+R", 16},
    {Menu::Window, 3, Command::WindowTileHorizontally, Text::CommandTileHorizontally},
    {Menu::Window, 4, Command::WindowTileVertically, Text::CommandTileVertically},
    {Menu::Window, 5, Command::WindowCascade, Text::CommandCascade},
    {Menu::Window, 6, Command::WindowArrangeIcons, Text::CommandArrangeIcons},

    {Menu::Help, 0, Command::HelpHelp, Text::CommandHelp, Text::None, "help", "F1"},
    {Menu::Help, 1, Command::HelpTerms, Text::CommandAcousticTerms},
    {Menu::Help, 2, Command::HelpTour, Text::CommandTour},
    {Menu::Help, 3, Command::HelpKeys, Text::CommandKeys, Text::TipKeys, "", "Ctrl+F1"},
    {Menu::Help, 4, Command::HelpHomePage, Text::CommandHomePage},
    {Menu::Help, 5, Command::HelpManual, Text::CommandManual, Text::None, "manual"},
    {Menu::Help, 7, Command::HelpAbout, Text::CommandAbout, Text::TipAbout},

    {Menu::TreePopup, 0, Command::EditCut, Text::CommandCut, Text::TipCut, "cut", "Ctrl+X; Shift+Del"},
    {Menu::TreePopup, 1, Command::EditCopy, Text::CommandCopy, Text::TipCopy, "copy", "Ctrl+C; Ctrl+Ins"},
    {Menu::TreePopup, 2, Command::EditPaste, Text::CommandPaste, Text::TipPaste, "paste", "Ctrl+V; Shift+Ins"},
    {Menu::TreePopup, 4, Command::ForceRecalc, Text::CommandForceRecalc, Text::None, "", "F5"},
    {Menu::TreePopup, 6, Command::EditDelete, Text::CommandDelete, Text::None, "", "Del"},
    {Menu::TreePopup, 7, Command::Rename, Text::CommandRename, Text::None, "", "F2"},
    {Menu::TreePopup, 8, Command::FileClose, Text::CommandClose, Text::TipClose, "close", "Ctrl+W"},
    {Menu::TreePopup, 10, Command::TreeDisplayOptions, Text::CommandDisplayOptions, Text::None, "settings"},

    {Menu::LogPopup, 0, Command::LogDeleteRows, Text::CommandDeleteRowS, Text::None, "", "Ctrl+-"},
    {Menu::LogPopup, 1, Command::LogInsertRows, Text::CommandInsertRowS, Text::None, "", "Ctrl++"},
    {Menu::LogPopup, 3, Command::EditCopy, Text::CommandCopy, Text::TipCopy, "copy", "Ctrl+C; Ctrl+Ins"},
    {Menu::LogPopup, 4, Command::EditCopyValues, Text::CommandCopyValues, Text::TipCopyValues, "", "Ctrl+Shift+C"},
    {Menu::LogPopup, 5, Command::LogShowTable, Text::ShowChartTable, Text::None, "", "Ctrl+Shift+T"},
    {Menu::LogPopup, 6, Command::FileExportPicture, Text::CommandExportPicture, Text::TipExportPicture, "",
     "Ctrl+Shift+P"},
    {Menu::LogPopup, 7, Command::LogDelete, Text::CommandDelete},
    {Menu::LogPopup, 8, Command::FilePrint, Text::CommandPrint, Text::TipPrint, "print", "", 0, Menu::Print},
    {Menu::LogPopup, 10, Command::LogNote, Text::CommandNote},
    {Menu::LogPopup, 11, Command::LogEditNote, Text::EditNote},
    {Menu::LogPopup, 12, Command::LogLegend, Text::CommandLegend},
    {Menu::LogPopup, 14, Command::ViewZoom, Text::CommandZoom, Text::TipZoom, "zoom", "Ctrl+T"},
    {Menu::LogPopup, 15, Command::ViewIntervals, Text::CommandAddRemoveIntervals, Text::TipIntervals, "intervals",
     "Ctrl+I"},
    {Menu::LogPopup, 16, Command::ViewExposureTime, Text::CommandExposureTime, Text::TipExposureTime, "time", "Ctrl+E"},
    {Menu::LogPopup, 17, Command::ForceRecalc, Text::CommandForceRecalc, Text::None, "", "F5"},
    {Menu::LogPopup, 18, Command::LogCompareHPD, Text::CommandCompareHPD, Text::HintHPD},
    {Menu::LogPopup, 19, Command::LogConvertWeighting, Text::CommandConvertWeighting},
    {Menu::LogPopup, 21, Command::LogAddToAssessment, Text::CommandAddToAssessment, Text::TipAddToAssessment, "",
     "Ctrl+Shift+A"},
    {Menu::LogPopup, 22, Command::RangeMenu, Text::CommandRangeMenu, Text::None, "", "", 0, Menu::Range},
    {Menu::LogPopup, 24, Command::LogDisplayOptions, Text::CommandDisplayOptions, Text::None, "settings"},
};

bool hasSelection(const MenuState& state) {
    return state.HasExplorer && !state.SelectedKey.empty();
}

bool isLogSelected(const MenuState& state) {
    return state.HasExplorer && isLogKind(state.SelectedKey);
}

// Whether the log view, which had the focus last, can be copied.
bool isViewCopyable(const MenuState& state, bool valuesOnly) {
    return state.HasExplorer && state.Displayed != nullptr && !state.IsTreeActive &&
           IsCopyable(state.Tab, valuesOnly, state.HasContent);
}

bool hasLog(const Session& session) {
    bool isThere = false;
    forEachLog(session, [&](const clsLog&) { isThere = true; });
    return isThere;
}

struct Rule {
    Command command;
    bool (*isEnabled)(const Session& session, const MenuState& state);
};

constexpr char kMark = '&';

// The position of the letter behind the mark; npos when there is none. Two marks stand for the character itself.
std::size_t mnemonicOf(const std::string& text) {
    for (std::size_t at = text.find(kMark); at != std::string::npos && at + 1 < text.size();
         at = text.find(kMark, at + 2))
        if (text[at + 1] != kMark) return at + 1;
    return std::string::npos;
}

bool isLetter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0;
}

char lowerCase(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool isAtWord(const std::string& text, std::size_t at) {
    return at == 0 || !isLetter(text[at - 1]);
}

// The letters of a text by preference: the marked one, those at which a word begins, the others.
std::string lettersOf(const std::string& text) {
    const std::size_t marked = mnemonicOf(text);
    std::string first = marked == std::string::npos ? std::string() : std::string(1, lowerCase(text[marked]));
    std::string others;
    for (std::size_t at = 0; at < text.size(); ++at)
        if (isLetter(text[at])) (isAtWord(text, at) ? first : others) += lowerCase(text[at]);
    return first + others;
}

// The number of the text that has a letter.
using Seats = std::map<char, std::size_t>;

// Gives a text a letter that is free, or one whose owner can take another. False when there is none.
bool seat(std::size_t text, const std::vector<std::string>& letters, Seats& seats, std::set<char>& tried) {
    for (const char letter : letters[text])
        if (seats.emplace(letter, text).second) return true;
    for (const char letter : letters[text]) {
        if (!tried.insert(letter).second || !seat(seats[letter], letters, seats, tried)) continue;
        seats[letter] = text;
        return true;
    }
    return false;
}

void mark(std::string& text, char letter) {
    const std::size_t marked = mnemonicOf(text);
    if (marked != std::string::npos && lowerCase(text[marked]) == letter) return;
    if (marked != std::string::npos) text.erase(marked - 1, 1);
    for (const bool atWord : {true, false}) {
        for (std::size_t at = 0; at < text.size(); ++at) {
            if (lowerCase(text[at]) != letter || (atWord && !isAtWord(text, at))) continue;
            text.insert(at, 1, kMark);
            return;
        }
    }
}

constexpr auto kOnSavable = [](const Session& session, const MenuState& state) {
    if (state.Assessment != nullptr) return true;
    return hasSelection(state) && resolve(session, state.SelectedKey).file != nullptr && session.IsIdle();
};
constexpr auto kOnPrintable = [](const Session& session, const MenuState& state) {
    return state.HasExplorer && state.Displayed != nullptr && session.IsIdle();
};
constexpr auto kOnReport = [](const Session& session, const MenuState& state) {
    return state.Assessment != nullptr || kOnPrintable(session, state);
};
constexpr auto kOnFullLog = [](const Session&, const MenuState& state) {
    return state.HasExplorer && state.Displayed != nullptr && tabRow(state.Tab).IsOverTime;
};
constexpr auto kOnChartRows = [](const Session& session, const MenuState& state) {
    return kOnFullLog(session, state) && state.HasContent && state.InView != nullptr && !state.InView->IsBusy();
};
constexpr auto kOnRange = [](const Session& session, const MenuState& state) {
    return kOnChartRows(session, state) && state.HasRange;
};
constexpr auto kOnCut = [](const Session&, const MenuState& state) {
    return state.HasExplorer && state.InView != nullptr && IsCutIntervalSelectable(*state.InView, state.Tab);
};
constexpr auto kOnCutRange = [](const Session& session, const MenuState& state) {
    return kOnRange(session, state) && kOnCut(session, state);
};
constexpr auto kOnExposures = [](const Session&, const MenuState& state) {
    return state.HasExplorer && state.Displayed != nullptr && tabRow(state.Tab).Panels.ExposureRows;
};

template <Direction direction>
bool isOnStep(const Session& session, const MenuState& state) {
    if (state.Assessment != nullptr) return state.Assessment->CanExchange(direction);
    return canExchange(documentToEdit(session, state.SelectedKey, direction), direction);
}

constexpr auto kOnDisplayed = [](const Session&, const MenuState& state) {
    return state.HasExplorer && state.Displayed != nullptr;
};
constexpr auto kOnExplorer = [](const Session&, const MenuState& state) { return state.HasExplorer; };

// A command without a row here is always allowed.
constexpr Rule kRules[] = {
    {Command::FileMerge,
     [](const Session& session, const MenuState& state) { return hasSelection(state) && session.IsIdle(); }},
    {Command::FileRecoverDownload,
     [](const Session& session, const MenuState&) { return !session.StateFolder.empty() && session.IsIdle(); }},
    {Command::FileClose,
     [](const Session&, const MenuState& state) { return state.Assessment != nullptr || hasSelection(state); }},
    {Command::FileCloseAll, [](const Session& session, const MenuState&) { return !session.OpenFiles.empty(); }},
    {Command::FileSave, kOnSavable},
    {Command::FileSaveAs, kOnSavable},
    {Command::EditUndo, isOnStep<Direction::Undo>},
    {Command::EditRedo, isOnStep<Direction::Redo>},
    {Command::EditCut,
     [](const Session&, const MenuState& state) { return state.IsTreeActive && isLogSelected(state); }},
    {Command::EditCopy,
     [](const Session&, const MenuState& state) {
         return state.IsTreeActive ? isLogSelected(state) : isViewCopyable(state, false);
     }},
    {Command::EditPaste,
     [](const Session&, const MenuState& state) {
         return state.HasExplorer && state.IsTreeActive &&
                (state.HasClipboardFiles || SittingOnValidNode(state.CopiedKey, {}, state.SelectedKey));
     }},
    {Command::EditDelete,
     [](const Session&, const MenuState& state) {
         return hasSelection(state) && !state.SelectedKey.starts_with(tFILE);
     }},
    {Command::EditCopyValues, [](const Session&, const MenuState& state) { return isViewCopyable(state, true); }},
    {Command::EditFind, kOnExplorer},
    {Command::EditFindNext, kOnExplorer},
    {Command::ViewHPD, [](const Session& session, const MenuState&) { return session.protectors != nullptr; }},
    {Command::ViewZoom,
     [](const Session&, const MenuState& state) {
         return state.HasExplorer && state.Displayed != nullptr && IsZoomSelectable(*state.Displayed, state.Tab);
     }},
    {Command::ViewIntervals, kOnCut},
    {Command::RangeMenu, kOnFullLog},
    {Command::RangeMeasure, kOnFullLog},
    {Command::RangeExclude, kOnCutRange},
    {Command::RangeIncludeOnly, kOnCutRange},
    {Command::RangeZoom, kOnRange},
    {Command::RangeNote, kOnRange},
    {Command::RangeCopy, kOnRange},
    {Command::RangeLoudest, kOnChartRows},
    {Command::RangeQuietest, kOnChartRows},
    {Command::RangeEvents, kOnChartRows},
    {Command::LogDistribution, kOnChartRows},
    {Command::LogCompare, kOnChartRows},
    {Command::LogSpectrogram,
     [](const Session& session, const MenuState& state) {
         return kOnChartRows(session, state) && hasSpectrogram(*state.InView);
     }},
    {Command::LogCalibration,
     [](const Session&, const MenuState& state) {
         return state.HasExplorer && state.Displayed != nullptr && !state.Displayed->IsBusy();
     }},
    {Command::FilePrint, kOnReport},
    {Command::FilePrintPreview, kOnReport},
    {Command::PrintDefault, kOnReport},
    {Command::PrintCumulative, kOnPrintable},
    {Command::PrintCriteria, kOnPrintable},
    {Command::PrintIntervals,
     [](const Session& session, const MenuState& state) {
         return kOnPrintable(session, state) && state.Displayed->LogIntervals.Count() > 0;
     }},
    {Command::PrintCurrentView, kOnPrintable},
    {Command::ToolsDownloadHPD,
     [](const Session& session, const MenuState&) { return session.protectors != nullptr && session.http != nullptr; }},
    {Command::ViewExposureTime, [](const Session&, const MenuState& state) { return isLogSelected(state); }},
    {Command::ViewHistory,
     [](const Session& session, const MenuState& state) {
         return hasSelection(state) && resolve(session, state.SelectedKey).file != nullptr;
     }},
    {Command::WindowReset, kOnExplorer},
    {Command::ForceRecalc,
     [](const Session& session, const MenuState& state) { return isLogSelected(state) && session.IsIdle(); }},
    {Command::Rename,
     [](const Session&, const MenuState& state) { return hasSelection(state) && isEditableKind(state.SelectedKey); }},
    {Command::TreeDisplayOptions, kOnExplorer},
    {Command::LogDeleteRows,
     [](const Session& session, const MenuState& state) {
         return kOnExposures(session, state) && state.IsOnExposureRow;
     }},
    {Command::LogInsertRows, kOnExposures},
    {Command::LogCompareHPD,
     [](const Session&, const MenuState& state) {
         return state.HasExplorer && state.Displayed != nullptr && tabRow(state.Tab).Panels.Protector;
     }},
    {Command::LogConvertWeighting,
     [](const Session&, const MenuState& state) {
         return state.HasExplorer && state.Displayed != nullptr && state.Displayed->IsOctaveLog() &&
                !state.Displayed->IsBusy();
     }},
    {Command::LogNote, kOnFullLog},
    {Command::LogLegend, kOnFullLog},
    {Command::LogEditNote, kOnFullLog},
    {Command::LogShowTable,
     [](const Session&, const MenuState& state) {
         return state.HasExplorer && state.Displayed != nullptr && state.HasContent &&
                tabRow(state.Tab).Chart != nullptr;
     }},
    {Command::FileExport,
     [](const Session& session, const MenuState& state) {
         return state.HasExplorer && session.IsIdle() && hasLog(session);
     }},
    {Command::FileExportPicture,
     [](const Session&, const MenuState& state) {
         return state.Displayed != nullptr && tabRow(state.Tab).SavesPicture;
     }},
    {Command::LogDelete, kOnDisplayed},
    {Command::LogAddToAssessment,
     [](const Session& session, const MenuState& state) {
         return kOnDisplayed(session, state) && state.Displayed->LogIntervals.Count() > 0;
     }},
    {Command::LogDisplayOptions, kOnDisplayed},
};

} // namespace

std::span<const MenuItem> menuItems() {
    return kItems;
}

std::vector<std::string> menuTexts(const Session& session, Menu menu) {
    std::vector<std::string> texts;
    for (const MenuItem& item : kItems)
        if (item.menu == menu) texts.push_back(session.LoadText(item.text));
    std::vector<std::string> letters(texts.size());
    std::ranges::transform(texts, letters.begin(), lettersOf);
    Seats seats;
    std::vector<std::size_t> others;
    others.reserve(texts.size());
    for (std::size_t text = 0; text < texts.size(); ++text)
        if (mnemonicOf(texts[text]) == std::string::npos || !seats.emplace(letters[text].front(), text).second)
            others.push_back(text);
    for (const std::size_t text : others) {
        std::set<char> tried;
        const std::size_t marked = mnemonicOf(texts[text]);
        if (!seat(text, letters, seats, tried) && marked != std::string::npos) texts[text].erase(marked - 1, 1);
    }
    for (const auto& [letter, text] : seats)
        mark(texts[text], letter);
    return texts;
}

bool IsGroupEnabled(const Session& session, Menu menu, int index, const MenuState& state) {
    for (const MenuItem& item : kItems) {
        if (item.menu != menu || item.index < index) continue;
        if (item.index > index) return false; // the next group begins
        if (IsMenuEnabled(session, item.command, state)) return true;
        ++index;
    }
    return false;
}

bool IsMenuEnabled(const Session& session, Command command, const MenuState& state) {
    const auto rule = std::find_if(std::begin(kRules), std::end(kRules),
                                   [&](const Rule& candidate) { return candidate.command == command; });
    return rule == std::end(kRules) || rule->isEnabled(session, state);
}

} // namespace kestrane
