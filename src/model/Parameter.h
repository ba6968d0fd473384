// The numbers of the parameters that a log can show, and of the channels and kinds by which code asks for them. What is
// known of each parameter is in Parameters.h.
#pragma once

#include <array>
#include <cstddef>

namespace kestrane {

enum Parameter : int {
    kNoParameter,
    eLeq,
    eLmin,
    eLmax,
    ePeak,
    eLepdET,
    eLepdMT,
    eDoseET,
    eDoseMT,
    eDoseHour,
    eLtm3,
    eLtm5,
    eLe_Sel,
    ePa2Hr,
    eOverload,
    eLn1,
    eLn10 = eLn1 + 9,
    eLAvg,
    eTWA
};

constexpr int ParameterCount = 26;

inline constexpr auto kParameters = [] {
    std::array<Parameter, static_cast<std::size_t>(ParameterCount)> all{};
    int number = 0;
    for (Parameter& parameter : all)
        parameter = static_cast<Parameter>(++number);
    return all;
}();

// The parameter of percentile ln (1..10); and the percentile of a parameter, 0 for a parameter that is no percentile.
constexpr Parameter eLn(int ln) {
    return static_cast<Parameter>(eLn1 + ln - 1);
}

constexpr int lnOf(Parameter parameter) {
    return parameter >= eLn1 && parameter <= eLn10 ? parameter - eLn1 + 1 : 0;
}

enum LogChannel : int { kNoChannel = -1, kChannelA = 1, kChannelB = 2 };

inline constexpr std::array kChannels = {kChannelA, kChannelB};

// Of the log as a whole, or of each row.
enum FigureKind : int { kCumulative = 1, kInterval = 2 };

inline constexpr std::array kFigureKinds = {kCumulative, kInterval};

} // namespace kestrane
