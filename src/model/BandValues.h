// The figures of one quantity by band, 0 to the mode's last; and the same for the ten Lns. Owned by a log or a row. An
// index outside raises 9.
#pragma once

#include "model/clsLogShared.h"
#include "model/clsValue.h"
#include "platform/RuntimeError.h"

#include <vector>

namespace kestrane {

class BandValues {
public:
    void setMode(int mode) { // any values held are lost
        mode_ = mode;
        values_.assign(static_cast<std::size_t>(lastBand(mode)) + 1, clsValue());
    }

    int last() const { return static_cast<int>(values_.size()) - 1; }

    clsValue& operator()(int band) { return values_[checked(band)]; }

    const clsValue& operator()(int band) const { return values_[checked(band)]; }

    clsValue& operator()(std::string_view bandText) { return values_[checked(e(mode_, bandText))]; }

    const clsValue& operator()(std::string_view bandText) const { return values_[checked(e(mode_, bandText))]; }

private:
    std::size_t checked(int band) const {
        if (band < 0 || band > last()) raiseIndexOutOfRange();
        return static_cast<std::size_t>(band);
    }

    int mode_ = modeBroadband;
    std::vector<clsValue> values_ = std::vector<clsValue>(1);
};

class LnValues {
public:
    void setMode(int mode) {
        for (BandValues& values : lns_)
            values.setMode(mode);
    }

    clsValue& operator()(int ln, int band) { return of(ln)(band); }

    const clsValue& operator()(int ln, int band) const { return of(ln)(band); }

    BandValues& of(int ln) { return lns_[checked(ln)]; } // 1..NumberOfLns

    const BandValues& of(int ln) const { return lns_[checked(ln)]; }

private:
    static std::size_t checked(int ln) {
        if (ln < 1 || ln > NumberOfLns) raiseIndexOutOfRange();
        return static_cast<std::size_t>(ln) - 1;
    }

    std::vector<BandValues> lns_ = std::vector<BandValues>(NumberOfLns);
};

} // namespace kestrane
