#include "cpu/GraphicsMeter.h"

#include <algorithm>
#include <utility>

namespace cindertop {

namespace {

constexpr double whole = 100;

/// The place of a value, which is added at the end where it is missing.
template <typename Value>
std::size_t placeOf(std::vector<Value>& values, const Value& value) {
    const auto found = std::ranges::find(values, value);
    const auto place = static_cast<std::size_t>(found - values.begin());
    if (found == values.end()) {
        values.push_back(value);
    }
    return place;
}

} // namespace

std::optional<double> busiestEngine(std::span<const GraphicsShare> shares) {
    std::map<std::uint32_t, double> sums;
    for (const GraphicsShare& share : shares) {
        sums[share.engine] += share.percent;
    }
    std::optional<double> highest;
    for (const auto& [engine, sum] : sums) {
        highest = std::max(highest.value_or(0), std::min(sum, whole));
    }
    return highest;
}

std::vector<GraphicsShare> GraphicsMeter::sharesOf(std::span<const GraphicsClient> clients, Seconds elapsed) {
    std::map<ClientKey, Counters> current;
    std::vector<GraphicsShare> shares;
    for (const GraphicsClient& client : clients) {
        const auto [place, isFirst] = current.try_emplace({client.device, client.identifier});
        if (!isFirst) {
            continue;
        }
        auto& [key, counters] = *place;
        const auto former = counters_.find(key);
        for (const GraphicsEngineUsage& usage : client.engines) {
            auto& counter = counters[usage.engine];
            counter = {.busy = usage.busy, .totalCycles = usage.totalCycles};
            const auto* const before =
                former == counters_.end() ? nullptr : comparable(former->second, usage);
            if (before == nullptr) {
                continue;
            }
            // A driver may take a counter back: the higher value stands until it is passed again.
            counter.busy = std::max(counter.busy, before->busy);
            if (const auto percent = percentSince(*before, usage, elapsed)) {
                shares.push_back({.processIdentifier = client.processIdentifier,
                                  .engine = numberOf(client.device, usage.engine),
                                  .percent = *percent});
            }
        }
    }
    counters_ = std::move(current);
    return shares;
}

const GraphicsMeter::Counter* GraphicsMeter::comparable(const Counters& former,
                                                        const GraphicsEngineUsage& usage) {
    const auto found = former.find(usage.engine);
    const bool isComparable =
        found != former.end() && found->second.totalCycles.has_value() == usage.totalCycles.has_value();
    return isComparable ? &found->second : nullptr;
}

std::optional<double> GraphicsMeter::percentSince(const Counter& former, const GraphicsEngineUsage& usage,
                                                  Seconds elapsed) {
    const auto used = static_cast<double>(usage.busy - std::min(usage.busy, former.busy));
    const double passed =
        usage.totalCycles ? static_cast<double>(*usage.totalCycles -
                                                std::min(*usage.totalCycles, former.totalCycles.value_or(0)))
                          : elapsed.count() * 1'000'000'000.0;
    if (elapsed <= Seconds::zero()) {
        return std::nullopt;
    }
    if (passed <= 0) {
        return 0; // the engine's own clock stood still: it was switched off
    }
    return std::min(used / passed * whole / usage.capacity, whole);
}

std::uint32_t GraphicsMeter::numberOf(const std::string& device, const std::string& engine) {
    return static_cast<std::uint32_t>(
        placeOf(engines_, Engine{.device = placeOf(devices_, device), .name = engine}));
}

std::string GraphicsMeter::engineName(std::uint32_t engine) const {
    const auto& [device, name] = engines_.at(engine);
    return device == 0 ? name : name + "@" + std::to_string(device + 1);
}

} // namespace cindertop
