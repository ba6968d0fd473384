// A dialog to edit one text of several lines.
#pragma once

#include "model/Session.h"

#include <optional>
#include <string>

class QWidget;

namespace kestrane {

class frmSimpleEdit {
public:
    // Edits the note of a chart. Lines in the result are separated by "\n"; nothing when the user cancels.
    static std::optional<std::string> EditNote(const Session& session, const std::string& note, QWidget* parent);
};

} // namespace kestrane
