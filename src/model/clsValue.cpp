#include "model/clsValue.h"

#include "platform/Format.h"

namespace kestrane {

std::string clsValue::Format(Zeros zeros, Reading reading, std::string_view strFormat, const Locale& locale) const {
    const double figure = reading == Reading::Reported ? value_ : calcValue_;
    if (strFormat.empty()) strFormat = calcValue_ > 1000 ? std::string_view("####") : FormatString;
    if (zeros == Zeros::Blank && figure == 0) return {};
    const bool isPercent = strFormat.find('%') != std::string_view::npos;
    return formatNumber(isPercent ? figure / 100 : figure, strFormat, locale);
}

} // namespace kestrane
