#include "charts/BlockExtents.h"

#include <algorithm>

namespace kestrane {

namespace {

constexpr std::size_t kBlock = 64;

Extent scan(std::span<const float> values) {
    Extent extent;
    for (const float value : values)
        extent.include(value);
    return extent;
}

} // namespace

BlockExtents::BlockExtents(std::span<const float> values) : values_(values) {
    blocks_.reserve(values.size() / kBlock);
    for (std::size_t begin = 0; begin + kBlock <= values.size(); begin += kBlock)
        blocks_.push_back(scan(values.subspan(begin, kBlock)));
}

Extent BlockExtents::of(std::size_t begin, std::size_t end) const {
    end = std::min(end, values_.size());
    if (begin >= end) return {};
    const std::size_t firstBlock = (begin + kBlock - 1) / kBlock;
    const std::size_t lastBlock = end / kBlock;
    if (firstBlock >= lastBlock) return scan(values_.subspan(begin, end - begin));
    Extent extent = scan(values_.subspan(begin, firstBlock * kBlock - begin));
    for (std::size_t block = firstBlock; block < lastBlock; ++block)
        extent.include(blocks_[block]);
    extent.include(scan(values_.subspan(lastBlock * kBlock, end - lastBlock * kBlock)));
    return extent;
}

} // namespace kestrane
