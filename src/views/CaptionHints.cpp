#include "views/CaptionHints.h"

#include "views/LogTabs.h"

namespace kestrane {

std::string captionHint(const Session& session, std::string_view caption) {
    if (caption.find(session.labels.Lepd) != std::string_view::npos) return session.LoadText(Text::HintLepd);
    if (caption == session.LoadText(tabRow(eTabCompareHPD).Caption)) return session.LoadText(Text::HintHPD);
    return {};
}

} // namespace kestrane
