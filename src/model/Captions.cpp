#include "model/Captions.h"

namespace kestrane {

std::string withColon(const Session& session, const std::string& caption) {
    return ReplaceText(session.LoadText(Text::WithColon), "^", caption);
}

std::string captioned(const Session& session, const std::string& caption, const std::string& value) {
    return withColon(session, caption) + " " + value;
}

std::string withoutColon(std::string caption) {
    if (!caption.ends_with(':')) return caption;
    caption.pop_back();
    for (const std::string_view space : {" ", "\u00A0", "\u202F"})
        if (caption.ends_with(space)) caption.erase(caption.size() - space.size());
    return caption;
}

} // namespace kestrane
