// The keys of the commands: those that the desktop is used to beside our own, and the list of all.
#include "desktop/frmKeys.h"
#include "desktop/mdiMain.h"
#include "dialogs/Words.h"

#include <QAbstractButton>
#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMenuBar>

#include <algorithm>
#include <set>

namespace kestrane {

namespace {

constexpr std::pair<Menu, Text::Id> kPlaces[] = {
    {Menu::File, Text::MenuFile},         {Menu::Print, Text::MenuFile}, {Menu::Edit, Text::MenuEdit},
    {Menu::View, Text::MenuView},         {Menu::Range, Text::MenuView}, {Menu::Tools, Text::MenuTools},
    {Menu::Window, Text::MenuWindow},     {Menu::Help, Text::MenuHelp},  {Menu::TreePopup, Text::KeysMenuOfTree},
    {Menu::LogPopup, Text::KeysMenuOfLog}};

// What desktops have a key for. It may be another than ours, and is then taken in addition.
constexpr std::pair<Command, QKeySequence::StandardKey> kStandardKeys[] = {
    {Command::FileOpen, QKeySequence::Open},
    {Command::FileClose, QKeySequence::Close},
    {Command::FileSave, QKeySequence::Save},
    {Command::FileSaveAs, QKeySequence::SaveAs},
    {Command::PrintDefault, QKeySequence::Print},
    {Command::FileExit, QKeySequence::Quit},
    {Command::EditUndo, QKeySequence::Undo},
    {Command::EditRedo, QKeySequence::Redo},
    {Command::EditCut, QKeySequence::Cut},
    {Command::EditCopy, QKeySequence::Copy},
    {Command::EditPaste, QKeySequence::Paste},
    {Command::EditDelete, QKeySequence::Delete},
    {Command::EditFind, QKeySequence::Find},
    {Command::EditFindNext, QKeySequence::FindNext},
    {Command::ToolsSettings, QKeySequence::Preferences},
    {Command::WindowNew, QKeySequence::New},
    {Command::HelpHelp, QKeySequence::HelpContents}};

// The menus that lead to the items of a menu.
std::string placeOf(const Session& session, Menu menu) {
    const auto plain = [&session](Text::Id text) { return loadPlainText(session, text).toStdString(); };
    const auto* const place = std::ranges::find(kPlaces, menu, &std::pair<Menu, Text::Id>::first);
    std::string path = plain(place->second);
    for (const MenuItem& item : menuItems())
        if (item.subMenu == menu && item.menu != Menu::LogPopup) path += " > " + plain(item.text);
    return path;
}

// Takes the letter from the text of a control when it is one of those given.
template <class Control>
void dropLetter(Control& control, const QList<QKeySequence>& letters) {
    if (letters.contains(QKeySequence::mnemonic(control.text()))) control.setText(control.text().remove('&'));
}

std::string textOf(const QList<QKeySequence>& keys) {
    QStringList texts;
    for (const QKeySequence& sequence : keys)
        texts.push_back(sequence.toString(QKeySequence::NativeText));
    return texts.join(", ").toStdString();
}

} // namespace

// Text fields take Ctrl+E, with or without Shift, as a key to the end of the line, where the End key goes, too. Here it
// is a command, whatever has the focus; in a dialog, where it is none, the field gets it all the same.
bool mdiMain::isKeptFromText(const QEvent& event) {
    if (event.type() != QEvent::ShortcutOverride) return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_E && (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == Qt::ControlModifier;
}

void mdiMain::addStandardKeys() {
    std::set<QKeySequence> taken;
    for (const auto& [command, action] : actions_)
        for (const QKeySequence& keys : action->shortcuts())
            taken.insert(keys);
    for (const auto& [command, standard] : kStandardKeys) {
        QList<QKeySequence> all = actions_.at(command)->shortcuts();
        for (const QKeySequence& keys : QKeySequence::keyBindings(standard))
            if (taken.insert(keys).second) all.push_back(keys);
        actions_.at(command)->setShortcuts(all);
    }
}

// A command stands where the menus have it first.
void mdiMain::showKeys() {
    std::vector<KeyRow> rows;
    std::set<Command> listed;
    for (const MenuItem& item : menuItems()) {
        if (item.subMenu || !listed.insert(item.command).second) continue;
        rows.push_back({placeOf(session_, item.menu), loadPlainText(session_, item.text).toStdString(),
                        textOf(actions_.at(item.command)->shortcuts())});
    }
    ShowKeys(session_, std::move(rows), this);
}

// With Alt, a letter of the menu bar opens its menu, whatever the window below it shows.
void mdiMain::leaveLettersToMenus(QObject* watched) const {
    const auto* const widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || !area_->isAncestorOf(widget)) return;
    QList<QKeySequence> letters;
    for (const QAction* menu : menuBar()->actions())
        letters.append(QKeySequence::mnemonic(menu->text()));
    letters.removeAll(QKeySequence());
    if (auto* const button = qobject_cast<QAbstractButton*>(watched); button != nullptr) dropLetter(*button, letters);
    auto* const label = qobject_cast<QLabel*>(watched);
    if (label != nullptr && label->buddy() != nullptr) dropLetter(*label, letters);
}

} // namespace kestrane
