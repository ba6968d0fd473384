#include "desktop/assessment/FieldsForm.h"

#include "dialogs/Words.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace kestrane {

namespace {

constexpr int kColumns = 2; // of fields, a caption and a control each

} // namespace

FieldsForm::FieldsForm(const Session& session, const char* name, const QString& spoken) : session_(session) {
    nameControl(*this, name, spoken);
    grid_ = new QGridLayout(this);
    grid_->setContentsMargins(0, 0, 0, 0);
    for (int column = 0; column < kColumns; ++column)
        grid_->setColumnStretch(2 * column + 1, 1);
}

void FieldsForm::makeControl(const AssessmentField& field) {
    const int number = static_cast<int>(controls_.size());
    const std::string name = objectName().toStdString() + std::to_string(number + 1);
    QWidget* control = nullptr;
    if (field.Choices.empty()) {
        auto* const line = new QLineEdit;
        connect(line, &QLineEdit::editingFinished, this, [this, line, number] {
            if (line->isModified()) emit Entered(number, line->text());
        });
        control = line;
    } else {
        auto* const list = new QComboBox;
        list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        list->setMinimumContentsLength(1);
        connect(list, &QComboBox::activated, this, [this, list, number] { emit Entered(number, list->currentText()); });
        control = list;
    }
    nameControl(*control, name.c_str(), loadPlainText(session_, field.Caption));
    grid_->addWidget(labelOf(session_, field.Caption, *control), number / kColumns, number % kColumns * 2);
    grid_->addWidget(control, number / kColumns, number % kColumns * 2 + 1);
    controls_.push_back(control);
}

void FieldsForm::Show(const std::vector<AssessmentField>& fields) {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i == controls_.size()) makeControl(fields[i]);
        const QString value = shown(fields[i].Value);
        if (auto* const line = qobject_cast<QLineEdit*>(controls_[i]); line != nullptr) {
            if (line->text() != value) line->setText(value);
            line->setModified(false);
            continue;
        }
        auto& list = *qobject_cast<QComboBox*>(controls_[i]);
        list.clear();
        for (const std::string& choice : fields[i].Choices)
            list.addItem(shown(choice));
        list.setCurrentIndex(list.findText(value));
        list.setToolTip(value);
    }
}

} // namespace kestrane
