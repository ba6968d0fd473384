// The figures of one quantity by band, from 0 to the mode's last band; and the same for each of the ten Lns. Owned by a
// log or a row. Memory is taken when a figure is first asked for by non-const access. An index out of range raises 9.
#pragma once

#include "model/clsLogShared.h"
#include "model/clsValue.h"
#include "platform/RuntimeError.h"

#include <array>
#include <vector>

namespace kestrane {

class BandValues {
public:
    void setMode(LogMode mode) { // any values held are lost
        mode_ = mode;
        last_ = lastBand(mode);
        values_.clear();
    }

    int last() const { return last_; }

    clsValue& operator()(int band) {
        const std::size_t at = checked(band);
        if (values_.empty()) values_ = std::vector<clsValue>(static_cast<std::size_t>(last()) + 1);
        return values_[at];
    }

    const clsValue& operator()(int band) const {
        static constexpr clsValue kAbsent;
        const std::size_t at = checked(band);
        return values_.empty() ? kAbsent : values_[at];
    }

    clsValue& operator()(std::string_view bandText) { return (*this)(e(mode_, bandText)); }

    const clsValue& operator()(std::string_view bandText) const { return (*this)(e(mode_, bandText)); }

    // Calls visit(value) for each band; for none when no figure has ever been asked for by non-const access.
    template <class Visit>
    void forEach(Visit visit) {
        for (clsValue& value : values_)
            visit(value);
    }

    std::size_t bytes() const { return values_.capacity() * sizeof(clsValue); } // beside the object itself

private:
    std::size_t checked(int band) const {
        if (band < 0 || band > last_) raiseIndexOutOfRange();
        return static_cast<std::size_t>(band);
    }

    LogMode mode_ = modeBroadband;
    int last_ = 0;
    std::vector<clsValue> values_; // empty until non-const access asks for one of them
};

class LnValues {
public:
    void setMode(LogMode mode) {
        mode_ = mode;
        lns_.clear();
    }

    clsValue& operator()(int ln, int band) { return of(ln)(band); }

    const clsValue& operator()(int ln, int band) const { return of(ln)(band); }

    BandValues& of(int ln) { // 1..NumberOfLns
        const std::size_t at = checked(ln);
        if (lns_.empty()) {
            lns_ = std::vector<BandValues>(NumberOfLns);
            for (BandValues& values : lns_)
                values.setMode(mode_);
        }
        return lns_[at];
    }

    const BandValues& of(int ln) const {
        const std::size_t at = checked(ln);
        return lns_.empty() ? absent() : lns_[at];
    }

    template <class Visit>
    void forEach(Visit visit) {
        for (BandValues& values : lns_)
            values.forEach(visit);
    }

    std::size_t bytes() const {
        std::size_t total = lns_.capacity() * sizeof(BandValues);
        for (const BandValues& values : lns_)
            total += values.bytes();
        return total;
    }

private:
    static std::size_t checked(int ln) {
        if (ln < 1 || ln > NumberOfLns) raiseIndexOutOfRange();
        return static_cast<std::size_t>(ln) - 1;
    }

    // The values of an Ln that has none: every figure reads as 0.
    const BandValues& absent() const {
        static const std::array<BandValues, 3> kAbsent = [] {
            std::array<BandValues, 3> values;
            for (const LogMode mode : kLogModes)
                values[static_cast<std::size_t>(mode)].setMode(mode);
            return values;
        }();
        return kAbsent[static_cast<std::size_t>(mode_)];
    }

    LogMode mode_ = modeBroadband;
    std::vector<BandValues> lns_; // empty until non-const access asks for one of them
};

} // namespace kestrane
