#include "model/clsDoseLogSample.h"

namespace kestrane {

void clsDoseLogSample::Copy(const clsDoseLogSample& objPrevSample) {
    *this = objPrevSample;
    Dose.Copy(objPrevSample.Leq);
}

} // namespace kestrane
