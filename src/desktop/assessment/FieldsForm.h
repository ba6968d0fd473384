// A form of fields described by the core: each has a caption, and a line to type in or a list to choose from.
#pragma once

#include "assessment/AssessmentEdits.h"
#include "model/Session.h"

#include <QWidget>

#include <vector>

class QGridLayout;

namespace kestrane {

class FieldsForm : public QWidget {
    Q_OBJECT

public:
    FieldsForm(const Session& session, const char* name, const QString& spoken);

    // Shows the values. The controls are made for the first fields; later ones must be the same.
    void Show(const std::vector<AssessmentField>& fields);

signals:
    void Entered(int field, const QString& text); // by the user

private:
    void makeControl(const AssessmentField& field);

    const Session& session_;
    QGridLayout* grid_;
    std::vector<QWidget*> controls_; // by field
};

} // namespace kestrane
