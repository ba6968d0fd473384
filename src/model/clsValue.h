// One level or quantity: what the instrument reported and what the program computed. Owned by a log, an interval row
// object or an exposure row. 0 means absent.
#pragma once

#include "platform/Locale.h"

#include <string>
#include <string_view>

namespace kestrane {

enum class Zeros : bool { Shown, Blank };         // a figure of 0: as "0.0", or as empty text
enum class Reading : bool { Computed, Reported }; // CalcValue, or Value

class clsValue {
public:
    float Value() const { return value_; } // as reported by the instrument or read from a file

    float CalcValue() const { return calcValue_; } // as recalculated; what tables show and files store

    void Value(float value) { value_ = calcValue_ = value; }

    void CalcValue(float value) { calcValue_ = value; }

    void Copy(const clsValue& objValue) { *this = objValue; }

    // The figure as text. An empty format stands for FormatString when CalcValue is at most 1000, and for "####" above.
    // With a "%" in the format the figure is taken as a percentage: 12.5 is shown as "12.5 %".
    std::string Format(Zeros zeros, Reading reading, std::string_view strFormat, const Locale& locale) const;

    static constexpr std::string_view FormatString = "##0.0"; // the format of all values: nothing asks for another

    bool operator==(const clsValue&) const = default;

private:
    float value_ = 0;
    float calcValue_ = 0;
};

} // namespace kestrane
