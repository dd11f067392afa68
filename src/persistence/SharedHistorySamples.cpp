#include "persistence/SharedHistorySamples.h"

#include <algorithm>
#include <utility>

namespace cindertop {

SharedHistorySamples::SharedHistorySamples(std::vector<ThermalHistorySample> samples)
    : storage_(std::make_shared<std::vector<ThermalHistorySample>>(std::move(samples))),
      first_(storage_->data()),
      count_(storage_->size()),
      areInOrder_(std::ranges::is_sorted(*storage_, {}, &ThermalHistorySample::measuredAt)) {}

SharedHistorySamples::SharedHistorySamples(std::initializer_list<ThermalHistorySample> samples)
    : SharedHistorySamples(std::vector(samples)) {}

bool SharedHistorySamples::hasRoomBehind() const {
    return storage_ && storage_->data() + storage_->size() == end() &&
           storage_->size() < storage_->capacity();
}

void SharedHistorySamples::append(ThermalHistorySample sample) {
    constexpr std::size_t leastRoom = 64;
    if (!hasRoomBehind()) {
        auto roomier = std::make_shared<std::vector<ThermalHistorySample>>();
        roomier->reserve(count_ + std::max(count_ / 2, leastRoom));
        roomier->assign(begin(), end());
        first_ = roomier->data();
        storage_ = std::move(roomier);
    }
    areInOrder_ = areInOrder_ && (empty() || back().measuredAt <= sample.measuredAt);
    storage_->push_back(std::move(sample));
    ++count_;
}

void SharedHistorySamples::removeFirst(std::size_t count) {
    first_ += count;
    count_ -= count;
}

bool SharedHistorySamples::operator==(const SharedHistorySamples& other) const {
    return count_ == other.count_ && (first_ == other.first_ || std::equal(begin(), end(), other.begin()));
}

} // namespace cindertop
