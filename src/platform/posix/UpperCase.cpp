#include "platform/Utf8.h"

#include <locale.h>
#include <wctype.h>

namespace kestrane {

std::string upperCase(std::string_view utf8) {
    static const locale_t kLetters = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    std::string upper;
    upper.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const auto letter = static_cast<wint_t>(nextCodePoint(utf8, at));
        appendUtf8(upper, static_cast<char32_t>(kLetters != nullptr ? towupper_l(letter, kLetters) : towupper(letter)));
    }
    return upper;
}

} // namespace kestrane
