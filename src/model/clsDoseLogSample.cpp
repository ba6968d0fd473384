#include "model/clsDoseLogSample.h"

#include "model/Acoustics.h"
#include "platform/Numbers.h"
#include "platform/RuntimeError.h"

namespace kestrane {

namespace {

// Sets the figure to what the formula gives, or to 0 when the result does not fit a single.
template <class Formula>
void assign(clsValue& figure, Formula formula) {
    try {
        figure.Value(checkedSingle(formula()));
    } catch (const RuntimeError&) {
        figure.Value(0);
    }
}

} // namespace

clsValue clsDoseLogSample::getLex() const {
    clsValue lex;
    const float hours = Duration.getTimeAsHours();
    if (Leq.Value() != 0 && hours != 0) assign(lex, [&] { return normalisedTo8Hours(Leq.Value(), hours); });
    return lex;
}

clsValue clsDoseLogSample::getDose() const {
    clsValue dose;
    const float hours = Duration.getTimeAsHours();
    if (Leq.Value() == 0 || Criterion == 0 || Exchange == 0 || hours == 0) return dose;
    assign(dose, [&] {
        return doseOf(Leq.Value(), {static_cast<double>(Criterion), static_cast<double>(Exchange)}, hours);
    });
    return dose;
}

void clsDoseLogSample::Copy(const clsDoseLogSample& objPrevSample) {
    *this = objPrevSample;
    Dose.Copy(objPrevSample.Leq); // this is meant: the stored dose of a copied row is never shown
}

} // namespace kestrane
