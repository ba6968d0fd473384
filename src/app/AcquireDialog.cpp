#include "app/AcquireDialog.h"

#include "views/RangeTable.h"

#include <algorithm>
#include <utility>

namespace kestrane {

AcquireDialog::AcquireDialog(AcquireList list) : list_(std::move(list)) {
    choice_.Selected.assign(list_.Rows.size(), true);
    FetchOctaves(true);
}

std::string AcquireDialog::RowText(const Session& session, std::size_t row) const {
    const std::string& text = list_.Rows.at(row);
    if (row >= list_.Seconds.size() || !list_.Seconds[row]) return text;
    return text + "\t" +
           ReplaceText(session.LoadText(Text::LengthOfLog), "^",
                       durationText(static_cast<double>(*list_.Seconds[row])));
}

void AcquireDialog::Select(std::size_t row, bool isSelected) {
    choice_.Selected.at(row) = isSelected;
}

void AcquireDialog::SelectAll(bool areSelected) {
    choice_.Selected.assign(list_.Rows.size(), areSelected);
}

void AcquireDialog::FetchOctaves(bool areFetched) {
    choice_.FetchOctaves = areFetched && list_.HasOctaveChoice && list_.CanFetchOctaves;
}

AcquireDialog::Rows AcquireDialog::Selected() const {
    const auto& selected = choice_.Selected;
    const auto count = std::count(selected.begin(), selected.end(), true);
    if (count == static_cast<std::ptrdiff_t>(selected.size())) return Rows::All;
    return count == 0 ? Rows::None : Rows::Some;
}

bool AcquireDialog::CanAccept() const {
    return Selected() != Rows::None || choice_.FetchOctaves;
}

} // namespace kestrane
