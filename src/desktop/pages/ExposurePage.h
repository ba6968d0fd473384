// The "Exp Calc" tab: the rows of the exposure calculator, which are those of the opened log even while a part of it is
// shown, and in the bar above them the buttons to insert and delete rows and the box that saves them with the log.
#pragma once

#include "desktop/pages/LogPage.h"

class QCheckBox;
class QPushButton;

namespace kestrane {

class grdDose;

class ExposurePage : public LogPage {
    Q_OBJECT

public:
    ExposurePage(Session& session, ExplorerState& state);

    QWidget* Bar() override { return bar_; }

    void Follow(const clsLog* inView) override;
    void Draw(clsLog& inView) override;

    bool HasContent() const override { return true; }

    ClipboardForms Copy(const clsLog& inView, bool valuesOnly) const override;
    std::unique_ptr<PagedDocument> Pages(const PrintedView& printed) const override;

    bool IsOnRow() const;
    void InsertRows();
    void DeleteRows();

private:
    void makeBar();

    grdDose* exposures_;
    QWidget* bar_;
    QCheckBox* chkSave_;
    QPushButton* cmdDeleteRows_;
};

} // namespace kestrane
