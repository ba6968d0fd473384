#include "model/clsDoseLogSample.h"

#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

#include <cmath>

namespace kestrane {

namespace {

double log10Of(double x) {
    return std::log(x) / std::log(10.0);
}

// Takes the value, or 0 when it cannot be held.
void assign(clsValue& figure, double value) {
    try {
        figure.Value(checkedSingle(value));
    } catch (const RuntimeError&) {
        figure.Value(0);
    }
}

} // namespace

clsValue clsDoseLogSample::getLex() const {
    clsValue lex;
    const float hours = Duration.getTimeAsHours();
    if (Leq.Value() != 0 && hours != 0) assign(lex, 10 * log10Of(static_cast<double>(hours) / 8) + Leq.Value());
    return lex;
}

clsValue clsDoseLogSample::getDose() const {
    clsValue dose;
    const float hours = Duration.getTimeAsHours();
    const auto q = static_cast<float>(Exchange / log10Of(2));
    if (Leq.Value() == 0 || Criterion == 0 || q == 0 || hours == 0) return dose;
    const auto x = static_cast<float>((static_cast<double>(Leq.Value()) - Criterion) / q);
    assign(dose, hours * 12.5 * std::pow(10.0, static_cast<double>(x)));
    return dose;
}

void clsDoseLogSample::Copy(const clsDoseLogSample& objPrevSample) {
    *this = objPrevSample;
    Dose.Copy(objPrevSample.Leq);
}

} // namespace kestrane
