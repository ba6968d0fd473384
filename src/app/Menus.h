// The commands of the frame in one table (where each stands, its text, icon and keys), and the rule that says which can
// be given just now. The frame builds its menus, popups and tool bar from the table and asks the rule whenever a menu
// drops or something changes; nothing is kept.
#pragma once

#include "model/Session.h"
#include "resources/TextNames.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kestrane {

enum class Menu { File, Print, Edit, View, Tools, Window, Help, TreePopup, LogPopup };

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
    LogSavePicture,
    LogDelete,
    LogDisplayOptions
};

// A place of a command in a menu. Items of a menu come in the order of their index; a gap in the indices is a
// separator. The same command may stand in several menus.
struct MenuItem {
    Menu menu;
    int index;
    Command command;
    Text::Id text;
    Text::Id toolTip = Text::None;
    const char* icon = "";                      // "": none
    const char* keys = "";                      // portable text of the shortcuts, by ";", the shown first; "": none
    int toolBar = 0;                            // place on the tool bar, from 1; 0: not on it
    std::optional<Menu> subMenu = std::nullopt; // that the item opens
};

std::span<const MenuItem> menuItems();

// The texts of a menu's items in their order, each with a mnemonic of its own. A letter that a text brings along goes
// to the first item that has it; the others, and the texts without one, get a free letter, of the beginning of a word
// where there is one.
std::vector<std::string> menuTexts(const Session& session, Menu menu);

constexpr int kRecentFilesIndex = 12; // of the File menu: where the recent files stand

// What the rule has to know of the explorer window in front.
struct MenuState {
    bool HasExplorer = false; // there is one, and it is not minimised
    std::string SelectedKey;
    const clsLog* Displayed = nullptr; // the log on display, all of it
    int Tab = 0;                       // the tab in front
    bool IsOnExposureRow = false;      // a row of the exposure calculator is current
    bool IsTreeActive = false;         // the tree had the focus last, not the log view
    bool HasContent = false;           // the tab shows something that can be copied
    const clsLog* InView = nullptr;    // the log on display, or the part of it that is zoomed to
    std::string CopiedKey{};           // the node that would be pasted; empty: none
    bool HasClipboardFiles = false;    // files that would be opened in its place
};

bool IsMenuEnabled(const Session& session, Command command, const MenuState& state);

// Any item can be given of the group of a menu that begins at an index: what a separator of a popup stands before.
bool IsGroupEnabled(const Session& session, Menu menu, int index, const MenuState& state);

} // namespace kestrane
