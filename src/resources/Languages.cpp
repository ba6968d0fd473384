#include "resources/Languages.h"

#include <algorithm>

namespace kestrane {

const Language& LanguageOf(std::string_view code) {
    const auto all = Languages();
    const auto found = std::ranges::find(all, code, &Language::Code);
    return found == all.end() ? all.front() : *found;
}

} // namespace kestrane
