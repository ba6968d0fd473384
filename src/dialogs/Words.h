// Words between the core and the widgets of the dialogs.
#pragma once

#include "model/Session.h"
#include "resources/TextNames.h"

#include <QString>

class QCheckBox;
class QDialogButtonBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QWidget;

namespace kestrane {

QString shown(const std::string& text); // with the line breaks of a widget
QString loadText(const Session& session, Text::Id id);
QString loadPlainText(const Session& session, Text::Id id); // without mnemonic and closing colon

// The name that code and style sheets know a control by, and the one that is read out.
void nameControl(QWidget& control, const char* name, const QString& spoken);

QLabel* labelOf(const Session& session, Text::Id id, QWidget& control); // takes over its mnemonic
QCheckBox* checkBox(const Session& session, Text::Id id, const char* name, bool isChecked);
QRadioButton* radioButton(const Session& session, Text::Id id, const char* name, bool isChecked);
QPushButton* pushButton(const Session& session, Text::Id id, const char* name, const QString& spoken); // not for Enter
QDialogButtonBox* okAndCancel(const Session& session); // cmdOK, the default, and cmdCancel

// A file dialog filter of the text table ("XML (*.xml)|*.xml|Old (*.csv;*.zdf)|*.csv;*.zdf") as Qt wants it.
QString fileFilter(const std::string& text);

} // namespace kestrane
