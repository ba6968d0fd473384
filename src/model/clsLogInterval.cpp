#include "model/clsLogInterval.h"

#include "resources/basSoftwareByFirm.h"

#include <utility>

namespace kestrane {

void clsLogInterval::Initialize(std::shared_ptr<clsLogShared> shared) {
    objLogShared = std::move(shared);
    LeqA.setMode(Mode());
    LminA.setMode(Mode());
    LmaxA.setMode(Mode());
    LnA.setMode(Mode());
}

bool clsLogInterval::IsBrevikMeter() const {
    return kestrane::IsBrevikMeter(InsName);
}

} // namespace kestrane
