// The commands of the frame in one table (the place, text, icon and keys of each), and the rules that say which of them
// are allowed at the moment. The frame builds its menus, popups and tool bar from the table and asks the rules whenever
// a menu opens or something changes; the answers are not kept.
#pragma once

#include "assessment/AssessmentDocument.h"
#include "model/Session.h"
#include "resources/TextNames.h"
#include "views/LogTab.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestrane {

enum class Menu { File, Print, Edit, View, Tools, Window, Help, TreePopup, LogPopup, Range };

enum class Command {
    FileDownload,
    FileOpen,
    FileMerge,
    FileClose,
    FileCloseAll,
    FileSave,
    FileSaveAs,
    FilePrint,
    FilePrintPreview,
    PrintDefault,
    PrintCumulative,
    PrintIntervals,
    PrintCurrentView,
    FileExit,
    EditUndo,
    EditRedo,
    EditCut,
    EditCopy,
    EditCopyValues,
    EditPaste,
    EditDelete,
    EditFind,
    EditFindNext,
    ViewToolbar,
    ViewStatusBar,
    ViewHPD,
    ViewZoom,
    ViewIntervals,
    ViewExposureTime,
    ToolsSettings,
    ToolsSynchronizeClocks,
    ToolsDownloadHPD,
    WindowNew,
    WindowReset,
    WindowTileHorizontally,
    WindowTileVertically,
    WindowCascade,
    WindowArrangeIcons,
    HelpHelp,
    HelpTerms,
    HelpHomePage,
    HelpManual,
    HelpAbout,
    ForceRecalc,
    Rename,
    TreeDisplayOptions,
    LogDeleteRows,
    LogInsertRows,
    LogCompareHPD,
    LogConvertWeighting,
    LogNote,
    LogLegend,
    LogEditNote,
    LogShowTable,
    FileExportPicture,
    LogDelete,
    LogDisplayOptions,
    FileNewAssessment,
    LogAddToAssessment,
    PrintCriteria,
    FileExport,
    ViewHistory,
    FileRecoverDownload,
    RangeMenu,
    RangeMeasure,
    RangeExclude,
    RangeIncludeOnly,
    RangeZoom,
    RangeNote,
    RangeCopy,
    RangeLoudest,
    RangeQuietest,
    RangeEvents,
    LogDistribution,
    LogCompare,
    HelpTour,
    LogSpectrogram,
    HelpKeys,
    LogCalibration
};

// The place of a command in a menu. The items of a menu are in the order of their index, and a gap in the indexes is a
// separator. The same command may be in several menus.
struct MenuItem {
    Menu menu;
    int index;
    Command command;
    Text::Id text;
    Text::Id toolTip = Text::None;
    const char* icon = ""; // "" for none
    const char* keys = ""; // the shortcuts as portable text, separated by ";", the displayed one first; "" for none
    int toolBar = 0;       // the place on the tool bar, from 1 on; 0 when it is not there
    std::optional<Menu> subMenu = std::nullopt; // the menu that the item opens
};

std::span<const MenuItem> menuItems();

// The texts of a menu's items in their order, each with a different mnemonic. When texts have the same letter, it goes
// to the first of them; the others, and texts without a mnemonic, get a free letter, at the beginning of a word if
// possible.
std::vector<std::string> menuTexts(const Session& session, Menu menu);

constexpr int kRecentFilesIndex = 17; // the index of the recent files in the File menu

// What the rules need to know about the explorer window in front.
struct MenuState {
    bool HasExplorer = false; // there is such a window, and it is not minimised
    std::string SelectedKey;
    const clsLog* Displayed = nullptr;              // the whole log on display
    LogTab Tab = eTabFullLog;                       // the tab in front
    bool IsOnExposureRow = false;                   // a row of the exposure calculator is the current one
    bool IsTreeActive = false;                      // the tree, not the log view, had the focus last
    bool HasContent = false;                        // the tab shows something that can be copied
    const clsLog* InView = nullptr;                 // the log on display, or the part of it that is zoomed to
    std::string CopiedKey{};                        // the node that would be pasted; empty for none
    bool HasClipboardFiles = false;                 // the clipboard has files, which would be opened instead
    const AssessmentDocument* Assessment = nullptr; // of the window in front, when it is an assessment
    bool HasRange = false;                          // rows are marked on the time chart
};

bool IsMenuEnabled(const Session& session, Command command, const MenuState& state);

// Whether any item of a group is allowed. The group begins at an index of a menu; a popup shows the separator in front
// of a group only then.
bool IsGroupEnabled(const Session& session, Menu menu, int index, const MenuState& state);

} // namespace kestrane
