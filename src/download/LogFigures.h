// Functions that give access to the overall figures of a log, for tables of fields.
#pragma once

#include "model/clsLog.h"

namespace kestrane {

using LogFigure = clsValue& (*)(clsLog& log);

template <clsValue LogData::*Member>
clsValue& single(clsLog& log) {
    return log.*Member;
}

template <BandValues LogData::*Member>
clsValue& overall(clsLog& log) {
    return (log.*Member)(0);
}

template <int Ln>
clsValue& ln(clsLog& log) {
    return log.LnCumA(Ln, 0);
}

} // namespace kestrane
