#include "dialogs/IntervalListModel.h"

#include <QComboBox>
#include <QListView>

namespace kestrane {

namespace {

constexpr int kListLength = 20;
constexpr int kTextLength = 13; // wide letters, enough for "hh:mm:ss (dd/mm)"

} // namespace

QComboBox* intervalBox(IntervalListModel& intervals) {
    auto* const box = new QComboBox;
    auto* const list = new QListView;
    list->setUniformItemSizes(true);
    box->setView(list);
    box->setModel(&intervals);
    box->setMaxVisibleItems(kListLength);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(kTextLength);
    return box;
}

} // namespace kestrane
