#pragma once

#include "persistence/ThermalHistorySample.h"

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <vector>

namespace cindertop {

/// A list of samples whose copies share them: a copy costs the same however long the list is, and a copy
/// never changes with the list it was made of. Lists that share are changed by one thread at a time, while
/// any thread reads copies of its own.
class SharedHistorySamples {
public:
    SharedHistorySamples() = default;
    SharedHistorySamples(std::vector<ThermalHistorySample> samples); // NOLINT(google-explicit-constructor)
    SharedHistorySamples(std::initializer_list<ThermalHistorySample> samples);

    /// Moves no sample, but now and then all of them, and those of a list that a copy has outgrown.
    void append(ThermalHistorySample sample);
    void removeFirst(std::size_t count);

    /// Each sample is as late as the one before it, or later.
    bool areInOrder() const { return areInOrder_; }

    const ThermalHistorySample* begin() const { return first_; }

    const ThermalHistorySample* end() const { return first_ + count_; }

    std::size_t size() const { return count_; }

    bool empty() const { return count_ == 0; }

    const ThermalHistorySample& operator[](std::size_t index) const { return first_[index]; }

    const ThermalHistorySample& front() const { return first_[0]; }

    const ThermalHistorySample& back() const { return first_[count_ - 1]; }

    bool operator==(const SharedHistorySamples& other) const;

private:
    bool hasRoomBehind() const;

    /// Never has more samples than it had room for when it was made, so that none of them moves. It may hold
    /// more than this list: in front what was removed, behind what a copy has appended.
    std::shared_ptr<std::vector<ThermalHistorySample>> storage_;
    const ThermalHistorySample* first_ = nullptr;
    std::size_t count_ = 0;
    bool areInOrder_ = true;
};

} // namespace cindertop
