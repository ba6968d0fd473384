#include "desktop/grdDose.h"

#include "dialogs/AskDialogs.h"
#include "dialogs/SignalColours.h"
#include "dialogs/Words.h"
#include "platform/Format.h"
#include "views/CaptionHints.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QStyle>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

constexpr int kBar = 3; // pixels
constexpr int kPadding = 14;
constexpr int kFigure = 6; // characters of a computed figure
constexpr int kTypedColumns = kExposureColumns - 1;

QIcon warningSign() {
    return QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
}

QVariant orNothing(bool isThere, const QVariant& value) {
    return isThere ? value : QVariant();
}

// The editors of the cells, and the bar under a row.
class ExposureDelegate : public QStyledItemDelegate {
public:
    ExposureDelegate(const Session& session, const ExposureModel& model, grdDose& grid) :
        QStyledItemDelegate(&grid), session_(session), model_(model), grid_(grid) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        if (!model_.isRow(index)) return;
        const QHeaderView& header = *grid_.horizontalHeader();
        const double share = model_.Table().Shares[static_cast<std::size_t>(index.row())];
        const int end = static_cast<int>(share * header.length()) - header.sectionPosition(index.column());
        const int width = std::min(end, option.rect.width());
        if (width <= 0) return;
        QColor colour = option.palette.color(QPalette::Highlight);
        if ((option.state & QStyle::State_Selected) != 0) colour = option.palette.color(QPalette::HighlightedText);
        painter->fillRect(option.rect.left(), option.rect.bottom() + 1 - kBar, width, kBar, colour);
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const override {
        const int column = ExposureModel::columnOf(index);
        const QString caption = model_.headerData(index.column(), Qt::Horizontal, Qt::DisplayRole).toString();
        const std::vector<std::string> choices = exposureChoices(session_, column);
        if (!choices.empty()) {
            auto* const list = new QComboBox(parent);
            nameControl(*list, "cboCell", caption);
            for (const std::string& choice : choices)
                list->addItem(shown(choice));
            return list;
        }
        auto* const line = new QLineEdit(parent);
        nameControl(*line, "txtCell", caption);
        line->setMaxLength(exposureMaxLength(column));
        line->setFrame(false);
        line->setAlignment(column == eColumnNote ? Qt::AlignLeft : Qt::AlignCenter);
        if (column == eColumnDate) line->setPlaceholderText(loadText(session_, Text::DateHint));
        return line;
    }

    void setEditorData(QWidget* editor, const QModelIndex& index) const override {
        const QString text = index.data(Qt::EditRole).toString();
        if (auto* const list = qobject_cast<QComboBox*>(editor); list != nullptr) {
            list->setCurrentIndex(list->findText(text));
        } else if (auto* const line = qobject_cast<QLineEdit*>(editor); line != nullptr) {
            line->setText(text);
        }
    }

    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        const auto* const list = qobject_cast<QComboBox*>(editor);
        const auto* const line = qobject_cast<QLineEdit*>(editor);
        model->setData(index, list != nullptr ? list->currentText() : line->text(), Qt::EditRole);
    }

private:
    const Session& session_;
    const ExposureModel& model_;
    const grdDose& grid_;
};

} // namespace

void ExposureModel::SetTable(ExposureTable table) {
    if (table.Rows.size() == table_.Rows.size() && !table_.Totals.empty()) {
        table_ = std::move(table);
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    } else {
        beginResetModel();
        table_ = std::move(table);
        endResetModel();
    }
}

bool ExposureModel::isRow(const QModelIndex& index) const {
    return index.isValid() && static_cast<std::size_t>(index.row()) < table_.Rows.size();
}

int ExposureModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || table_.Totals.empty() ? 0 : static_cast<int>(table_.Rows.size()) + 1;
}

int ExposureModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kTypedColumns;
}

Qt::ItemFlags ExposureModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!isRow(index)) return flags;
    if (columnOf(index) == eColumnIncluded) return flags | Qt::ItemIsUserCheckable;
    return exposureMaxLength(columnOf(index)) > 0 ? flags | Qt::ItemIsEditable : flags;
}

const std::string& ExposureModel::cell(const QModelIndex& index) const {
    const auto row = static_cast<std::size_t>(index.row());
    return (row < table_.Rows.size() ? table_.Rows[row] : table_.Totals)[static_cast<std::size_t>(columnOf(index))];
}

bool ExposureModel::isMissing(const QModelIndex& index) const {
    return isRow(index) &&
           table_.Missing[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(columnOf(index))];
}

bool ExposureModel::isIncluded(const QModelIndex& index) const {
    return table_.Rows[static_cast<std::size_t>(index.row())][eColumnIncluded] == session_.labels.YesMark;
}

std::string ExposureModel::levelNote(const QModelIndex& index) const {
    return isRow(index) && columnOf(index) == eColumnLeq ? table_.LevelNotes[static_cast<std::size_t>(index.row())]
                                                         : std::string();
}

QVariant ExposureModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {}; // a view copies the current cell even when there is none
    const bool isOfRow = isRow(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return QString::fromStdString(cell(index));
    case Qt::TextAlignmentRole:
        return static_cast<int>(columnOf(index) == eColumnNote ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
    case Qt::CheckStateRole:
        return orNothing(isOfRow && columnOf(index) == eColumnIncluded,
                         isOfRow && isIncluded(index) ? Qt::Checked : Qt::Unchecked);
    case Qt::BackgroundRole:
        if (!levelNote(index).empty()) return QColor(HighlightColour.red, HighlightColour.green, HighlightColour.blue);
        return orNothing(isMissing(index), faultyGround(QApplication::palette()));
    case Qt::ForegroundRole:
        if (!levelNote(index).empty()) return QColor(Qt::black);
        return orNothing(isOfRow && !isIncluded(index), QApplication::palette().color(QPalette::PlaceholderText));
    case Qt::FontRole: {
        QFont bold;
        bold.setBold(true);
        return orNothing(!isOfRow, bold);
    }
    case Qt::DecorationRole: // the ground alone would say it by its colour only
        return orNothing(!levelNote(index).empty() || isMissing(index), warningSign());
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
        if (!isOfRow) return {};
        if (!levelNote(index).empty()) return shown(levelNote(index));
        if (isMissing(index)) return loadText(session_, Text::NothingThatCounts);
        return shown(ReplaceText(
            session_.LoadText(Text::ShareOfDose), "^",
            formatNumber(table_.Shares[static_cast<std::size_t>(index.row())] * 100, "##0.0", session_.locale) + " %"));
    default:
        return {};
    }
}

QVariant ExposureModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool isHint = role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole;
    if (role != Qt::DisplayRole && (!isHint || orientation != Qt::Horizontal))
        return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Horizontal) {
        const std::string caption = exposureCaptions(session_)[static_cast<std::size_t>(section) + 1];
        return shown(role == Qt::DisplayRole ? caption : captionHint(session_, caption));
    }
    const auto row = static_cast<std::size_t>(section);
    return row < table_.Rows.size() ? shown(table_.Rows[row][eColumnNumber]) : loadText(session_, Text::Total);
}

bool ExposureModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!isRow(index)) return false;
    const LabelTexts& labels = session_.labels;
    const std::string entry = role == Qt::CheckStateRole ? value.toInt() == Qt::Checked ? labels.YesMark : labels.NoMark
                                                         : value.toString().toStdString();
    Enter(static_cast<std::size_t>(index.row()), columnOf(index), entry);
    return true;
}

grdDose::grdDose(Session& session, std::function<clsLog*()> log, QWidget* parent) :
    QTableView(parent), session_(session), log_(std::move(log)), model_(session) {
    nameControl(*this, "grdDose", loadText(session, Text::TabExposureCalculator));
    model_.Enter = [this](std::size_t row, int column, const std::string& entry) {
        clsLog* target = log_();
        if (target == nullptr) return;
        const bool isRow = row < target->DoseLogIntervals.size();
        const bool isRefused = isRow && EnterCell(*target, row, column, entry) == CellEntry::Refused;
        model_.SetTable(exposureTable(*target));
        tell(isRefused ? exposureRefusal(session_, column, entry) : std::string());
    };
    setModel(&model_);
    setItemDelegate(new ExposureDelegate(session, model_, *this));
    setAlternatingRowColors(true);
    setWordWrap(false);
    setEditTriggers(DoubleClicked | SelectedClicked | EditKeyPressed | AnyKeyPressed);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kPadding);
    verticalHeader()->setDefaultAlignment(Qt::AlignCenter);
    horizontalHeader()->setHighlightSections(false);
    sizeColumns();
}

void grdDose::sizeColumns() {
    const QFontMetrics metrics = fontMetrics();
    for (int column = 0; column < kTypedColumns; ++column) {
        const int caption = horizontalHeader()->sectionSizeHint(column);
        const int characters = std::max(exposureMaxLength(column + 1), kFigure);
        const int entry = metrics.horizontalAdvance('0') * characters + kPadding;
        if (column + 1 == eColumnNote) {
            horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
        } else {
            setColumnWidth(column, std::max(entry, caption));
        }
    }
}

void grdDose::tell(const std::string& text) {
    session_.frame->ClearPanel(Frame::Panel::Status, told_);
    if (!text.empty()) session_.frame->SetPanel(Frame::Panel::Status, text);
    told_ = text;
    toldOf_ = log_();
}

void grdDose::ForgetOtherLog() {
    if (!told_.empty() && log_() != toldOf_) tell({});
}

void grdDose::ShowRows() {
    const QModelIndex current = currentIndex();
    showRowsFrom(std::max(current.row(), 0), std::max(current.column(), 0));
}

// Shows the rows again and makes the cell, or the nearest one that exists, the current one.
void grdDose::showRowsFrom(int row, int column) {
    const clsLog* log = log_();
    if (log == nullptr) return;
    const bool wasOnRow = IsOnRow();
    model_.SetTable(exposureTable(*log));
    goTo(model_.index(std::min(row, model_.rowCount() - 1), column));
    if (IsOnRow() != wasOnRow) emit CurrentRowChanged(); // a table that is filled anew has no cell to compare with
}

// Selects the cell alone. The toolkit's own way asks which keys are held: those of the command that led here.
void grdDose::goTo(const QModelIndex& cell) {
    selectionModel()->setCurrentIndex(cell, QItemSelectionModel::ClearAndSelect);
}

bool grdDose::IsOnRow() const {
    return model_.isRow(currentIndex());
}

std::size_t grdDose::currentRow() const {
    return static_cast<std::size_t>(std::max(currentIndex().row(), 0));
}

void grdDose::InsertRows() {
    clsLog* log = log_();
    const int row = static_cast<int>(currentRow());
    const int column = std::max(currentIndex().column(), 0);
    if (log != nullptr && kestrane::InsertRows(*log, currentRow(), textDialog(session_, this)))
        showRowsFrom(row, column);
}

void grdDose::DeleteRows() {
    clsLog* log = log_();
    const int row = static_cast<int>(currentRow());
    const int column = std::max(currentIndex().column(), 0);
    if (log != nullptr && kestrane::DeleteRows(*log, currentRow(), textDialog(session_, this)))
        showRowsFrom(row, column);
}

bool grdDose::HasSelection() const {
    return selectionModel()->selectedIndexes().size() > 1;
}

std::string grdDose::SelectionText() const {
    const QItemSelection selection = selectionModel()->selection();
    int left = kTypedColumns;
    int right = 0;
    int top = model_.rowCount();
    int bottom = 0;
    for (const QItemSelectionRange& range : selection) {
        left = std::min(left, range.left());
        right = std::max(right, range.right());
        top = std::min(top, range.top());
        bottom = std::max(bottom, range.bottom());
    }
    QString text;
    for (int row = top; row <= bottom; ++row) {
        for (int column = left; column <= right; ++column) {
            const QModelIndex cell = model_.index(row, column);
            if (column > left) text += '\t';
            if (selection.contains(cell)) text += cell.data().toString();
        }
        text += "\r\n";
    }
    return text.toStdString();
}

void grdDose::Paste() {
    clsLog* log = log_();
    const QModelIndex at = currentIndex();
    if (log == nullptr || !at.isValid()) return;
    const std::string text = QApplication::clipboard()->text().toStdString();
    const PasteOutcome outcome = pasteExposureRows(*log, currentRow(), ExposureModel::columnOf(at), text);
    showRowsFrom(at.row(), at.column());
    const std::string refused = std::to_string(outcome.Refused);
    tell(outcome.Refused == 0 ? std::string() : ReplaceText(session_.LoadText(Text::EntriesNotTaken), "^", refused));
}

void grdDose::CommitCell() {
    QWidget* const editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
    if (editor == nullptr) return;
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
}

// While the grid has the focus, it handles the keys for the clipboard and for editing itself.
bool grdDose::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* const key = static_cast<QKeyEvent*>(event);
        const bool isOwn = key->matches(QKeySequence::Copy) || key->matches(QKeySequence::Paste);
        if (isOwn || key->key() == Qt::Key_F2) {
            event->accept();
            return true;
        }
    }
    return QTableView::event(event);
}

void grdDose::keyPressEvent(QKeyEvent* event) {
    const bool isBack = event->key() == Qt::Key_Backtab || (event->modifiers() & Qt::ShiftModifier) != 0;
    // The editor has passed the key on; closing it moves to the next cell.
    if (state() == EditingState) return QTableView::keyPressEvent(event);
    if (event->matches(QKeySequence::Copy)) {
        const std::string text = SelectionText(); // even of a single cell
        if (!text.empty()) QApplication::clipboard()->setText(QString::fromStdString(text));
    } else if (event->matches(QKeySequence::Paste)) {
        Paste();
    } else if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) {
        event->setAccepted(stepSideways(isBack ? -1 : 1)); // otherwise the focus moves on
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        stepDown(isBack ? -1 : 1);
    } else {
        QTableView::keyPressEvent(event);
    }
}

void grdDose::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    QTableView::closeEditor(editor,
                            hint == QAbstractItemDelegate::RevertModelCache ? hint : QAbstractItemDelegate::NoHint);
    if (hint == QAbstractItemDelegate::EditNextItem) stepSideways(1);
    if (hint == QAbstractItemDelegate::EditPreviousItem) stepSideways(-1);
    if (hint == QAbstractItemDelegate::SubmitModelCache) stepDown(1);
}

bool grdDose::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    const bool isEdited = QTableView::edit(index, trigger, event);
    const bool isByMouse = trigger == DoubleClicked || trigger == SelectedClicked;
    auto* const list = isEdited && isByMouse ? qobject_cast<QComboBox*>(indexWidget(index)) : nullptr;
    if (list != nullptr) list->showPopup();
    return isEdited;
}

void grdDose::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (!isStepping_) tabbedFrom_ = -1;
    if (model_.isRow(current) != model_.isRow(previous)) emit CurrentRowChanged();
}

bool grdDose::stepSideways(int by) {
    const int from = tabbedFrom_ >= 0 ? tabbedFrom_ : currentIndex().column();
    const int cells = static_cast<int>(model_.Table().Rows.size()) * kTypedColumns;
    const int at = currentIndex().row() * kTypedColumns + currentIndex().column();
    for (int next = at + by; next >= 0 && next < cells; next += by) {
        const QModelIndex cell = model_.index(next / kTypedColumns, next % kTypedColumns);
        if ((cell.flags() & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)) == 0) continue;
        isStepping_ = true;
        goTo(cell);
        isStepping_ = false;
        tabbedFrom_ = from;
        return true;
    }
    return false;
}

void grdDose::stepDown(int by) {
    const int last = std::max(0, static_cast<int>(model_.Table().Rows.size()) - 1);
    const int column = tabbedFrom_ >= 0 ? tabbedFrom_ : currentIndex().column();
    goTo(model_.index(std::clamp(currentIndex().row() + by, 0, last), column));
}

} // namespace kestrane
