// The decisions of the dialog that chooses logs of an instrument, without its widgets: which rows are selected, what
// "select all" shows, and when there is something to download.
#pragma once

#include "download/DownloadUser.h"
#include "model/Session.h"

#include <cstddef>

namespace kestrane {

class AcquireDialog {
public:
    enum class Rows { None, Some, All };

    explicit AcquireDialog(AcquireList list);

    const AcquireList& List() const { return list_; }

    const AcquireChoice& Choice() const { return choice_; }

    // A row of the list with the length of its log, where that is known.
    std::string RowText(const Session& session, std::size_t row) const;

    void Select(std::size_t row, bool isSelected);
    void SelectAll(bool areSelected);
    void FetchOctaves(bool areFetched); // does nothing when they cannot be fetched

    Rows Selected() const;  // an empty list counts as All
    bool CanAccept() const; // there is something to download, or the list is empty

private:
    AcquireList list_;
    AcquireChoice choice_;
};

} // namespace kestrane
