// The numbers of the parameters that a log can show, and of the channels and kinds by which code asks for them. What is
// known of each parameter is in Parameters.h.
#pragma once

namespace kestrane {

enum Parameter : int {
    eLeq = 1,
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

// The parameter of percentile ln (1..10); and the percentile of a parameter, 0 for a parameter that is no percentile.
constexpr Parameter eLn(int ln) {
    return static_cast<Parameter>(eLn1 + ln - 1);
}

constexpr int lnOf(int parameter) {
    return parameter >= eLn1 && parameter <= eLn10 ? parameter - eLn1 + 1 : 0;
}

constexpr int kChannelA = 1;
constexpr int kChannelB = 2;
constexpr int kCumulative = 1;
constexpr int kInterval = 2;

} // namespace kestrane
