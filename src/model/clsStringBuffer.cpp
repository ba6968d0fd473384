#include "model/clsStringBuffer.h"

#include <algorithm>
#include <utility>

namespace kestrane {

namespace {

constexpr std::size_t kStep = 15000;
constexpr std::size_t kDrainAt = std::size_t{1} << 20;

} // namespace

clsStringBuffer::clsStringBuffer(std::function<void(std::string_view)> drain) : drain_(std::move(drain)) {}

void clsStringBuffer::initialise() {
    buffer_.clear();
    length_ = 0;
}

void clsStringBuffer::flush() {
    if (drain_ && length_ > 0) drain_(std::string_view(buffer_).substr(0, length_));
    length_ = 0;
}

// Grows in steps, or by half of the present size when that is more, so that the cost stays linear for long texts.
void clsStringBuffer::makeRoom(std::size_t size) {
    if (drain_ && length_ >= kDrainAt) flush();
    if (length_ + size <= buffer_.size()) return;
    buffer_.resize(buffer_.size() + std::max((size / kStep + 1) * kStep, buffer_.size() / 2));
}

} // namespace kestrane
