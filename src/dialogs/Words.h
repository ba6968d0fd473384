// Texts and named controls for the widgets of the dialogs.
#pragma once

#include "model/Session.h"
#include "resources/TextNames.h"

#include <QString>

#include <functional>

class QButtonGroup;
class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QWidget;

namespace kestrane {

QString shown(const std::string& text); // with line breaks as a widget needs them
QString loadText(const Session& session, Text::Id id);
QString loadPlainText(const Session& session, Text::Id id); // without mnemonic and final colon

// Sets the name by which code and style sheets know a control, and the name that a screen reader reads out.
void nameControl(QWidget& control, const char* name, const QString& spoken);

QLabel* labelOf(const Session& session, Text::Id id, QWidget& control); // its mnemonic sets the focus to the control
QCheckBox* checkBox(const Session& session, Text::Id id, const char* name, bool isChecked);
QRadioButton* radioButton(const Session& session, Text::Id id, const char* name, bool isChecked);

// Calls choose with the number of the button that is now on, whether it was clicked or an assistive program toggled it,
// and also when code has switched it on. choose is kept as long as the group lives.
void onChosen(QButtonGroup& group, std::function<void(int id)> choose);

// Enter does not press it.
QPushButton* pushButton(const Session& session, Text::Id id, const char* name, const QString& spoken);
QDialogButtonBox* okAndCancel(const Session& session); // cmdOK, the default, and cmdCancel

// A file dialog filter of the text table ("XML (*.xml)|*.xml|Old (*.csv;*.zdf)|*.csv;*.zdf") in the form that Qt needs.
QString fileFilter(const std::string& text);

} // namespace kestrane
