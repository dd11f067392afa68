#pragma once

#include "support/LocalizedComparison.h"

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop {

/// Something with a share of the CPU and a name to show.
template <typename Item>
concept Sharing = std::movable<Item> && requires(const Item& item) {
    { item.cpuPercent } -> std::convertible_to<double>;
    { item.name() } -> std::convertible_to<std::string_view>;
};

/// The order in which people see shares: the highest first, equal ones by name, equal names as they came.
/// Names are costly to compare, so the order is made in two steps, and the second goes only as far as
/// somebody looks.
///
/// First step: by share alone, equal shares as they came.
template <Sharing Item>
void sortByShare(std::span<Item> items) {
    std::ranges::stable_sort(items, std::greater{}, &Item::cpuPercent);
}

/// For runs longer than this, a sort key of each name is cheaper than comparing names again and again.
inline constexpr std::size_t longRun = 16;

/// Orders items of one share by their names.
template <Sharing Item>
void sortByName(std::span<Item> run, const LocalizedComparison& comparison) {
    if (run.size() <= longRun) {
        std::ranges::stable_sort(run, [&comparison](const Item& left, const Item& right) {
            return comparison.compare(left.name(), right.name()) < 0;
        });
        return;
    }
    std::vector<std::string_view> names;
    names.reserve(run.size());
    for (const Item& item : run) {
        names.push_back(item.name());
    }
    const std::vector<std::string> keys = comparison.sortKeys(names);
    std::vector<std::size_t> order(run.size());
    std::ranges::generate(order, [index = std::size_t{0}]() mutable { return index++; });
    std::ranges::stable_sort(order, {},
                             [&keys](std::size_t index) -> const std::string& { return keys[index]; });

    std::vector<Item> sorted;
    sorted.reserve(run.size());
    for (const std::size_t index : order) {
        sorted.push_back(std::move(run[index]));
    }
    std::ranges::move(sorted, run.begin());
}

/// Second step, on items that `sortByShare` has sorted: the first `wanted` of them come into their final
/// order. The others keep their share's place, in no particular order among equals.
template <Sharing Item>
void orderEqualShares(std::span<Item> items, std::size_t wanted, const LocalizedComparison& comparison) {
    for (std::size_t first = 0; first < std::min(wanted, items.size());) {
        std::size_t end = first + 1;
        while (end < items.size() && items[end].cpuPercent == items[first].cpuPercent) {
            ++end;
        }
        if (end - first > 1) {
            sortByName(items.subspan(first, end - first), comparison);
        }
        first = end;
    }
}

} // namespace cindertop
