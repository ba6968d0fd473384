#include "dialogs/Words.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStringList>

#include <utility>

namespace kestrane {

QString shown(const std::string& text) {
    return QString::fromStdString(text).replace("\r\n", "\n");
}

QString loadText(const Session& session, Text::Id id) {
    return shown(session.LoadText(id));
}

QString loadPlainText(const Session& session, Text::Id id) {
    QString text = shown(PlainCaption(session.LoadText(id)));
    while (text.endsWith(':') || text.endsWith('.'))
        text.chop(1);
    return text.trimmed(); // French has a space in front of a colon
}

void nameControl(QWidget& control, const char* name, const QString& spoken) {
    control.setObjectName(QLatin1String(name));
    control.setAccessibleName(spoken);
}

QLabel* labelOf(const Session& session, Text::Id id, QWidget& control) {
    auto* const label = new QLabel(loadText(session, id));
    label->setBuddy(&control);
    return label;
}

QCheckBox* checkBox(const Session& session, Text::Id id, const char* name, bool isChecked) {
    auto* const box = new QCheckBox(loadText(session, id));
    nameControl(*box, name, loadPlainText(session, id));
    box->setChecked(isChecked);
    return box;
}

QRadioButton* radioButton(const Session& session, Text::Id id, const char* name, bool isChecked) {
    auto* const button = new QRadioButton(loadText(session, id));
    nameControl(*button, name, loadPlainText(session, id));
    button->setChecked(isChecked);
    return button;
}

void onChosen(QButtonGroup& group, std::function<void(int id)> choose) {
    QObject::connect(&group, &QButtonGroup::idToggled, &group, [choose = std::move(choose)](int id, bool isOn) {
        if (isOn) choose(id);
    });
}

QPushButton* pushButton(const Session& session, Text::Id id, const char* name, const QString& spoken) {
    auto* const button = new QPushButton(loadText(session, id));
    nameControl(*button, name, spoken);
    button->setAutoDefault(false);
    return button;
}

QDialogButtonBox* okAndCancel(const Session& session) {
    auto* const box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QPushButton* const ok = box->button(QDialogButtonBox::Ok);
    QPushButton* const cancel = box->button(QDialogButtonBox::Cancel);
    ok->setText(loadText(session, Text::Ok));
    ok->setIcon({});
    ok->setDefault(true);
    cancel->setText(loadText(session, Text::Cancel));
    cancel->setIcon({});
    nameControl(*ok, "cmdOK", ok->text());
    nameControl(*cancel, "cmdCancel", cancel->text());
    return box;
}

QString fileFilter(const std::string& text) {
    const QStringList parts = QString::fromStdString(text).split('|', Qt::SkipEmptyParts);
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts[i + 1].split(';');
        patterns.replaceInStrings("*.*", "*");
        const qsizetype bracket = parts[i].lastIndexOf(" (");
        filters.push_back(parts[i].left(bracket) + " (" + patterns.join(' ') + ')');
    }
    return filters.join(";;");
}

} // namespace kestrane
