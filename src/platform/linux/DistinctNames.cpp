#include "platform/linux/DistinctNames.h"

#include "platform/linux/SensorPatterns.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>

namespace cindertop::linux_platform {

namespace {

using Group = std::vector<SensorProduct*>;

/// What can follow a name, the best first. A chip's name is its driver's and tells sensors of one driver
/// apart from those of another only; the last of these differs for any two sensors.
constexpr std::array<std::string (*)(const SensorSource&), 5> distinctions{
    [](const SensorSource& source) {
        return source.origin == SensorOrigin::chip ? std::string()
                                                   : std::string(lastNumber(withoutThermal(source.chip)));
    },
    [](const SensorSource& source) { return repairedUtf8(withoutThermal(source.chip)); },
    [](const SensorSource& source) { return std::string(trailingDigits(source.group)); },
    [](const SensorSource& source) { return source.group; },
    [](const SensorSource& source) { return source.group + "." + std::to_string(source.channel); },
};

bool areDistinct(const std::vector<std::string>& texts) {
    const std::set<std::string> different(texts.begin(), texts.end());
    return different.size() == texts.size() && !different.contains("");
}

void distinguish(const Group& group, std::span<const SensorSource> sources) {
    for (const auto distinction : distinctions) {
        std::vector<std::string> texts;
        for (const auto* const product : group) {
            texts.push_back(distinction(sources[product->source]));
        }
        if (!areDistinct(texts)) {
            continue;
        }
        for (std::size_t index = 0; index < group.size(); ++index) {
            group[index]->name += " " + texts[index];
        }
        return;
    }
}

bool distinguishOnce(std::vector<SensorProduct>& products, std::span<const SensorSource> sources) {
    std::map<std::string, Group> groups;
    for (auto& product : products) {
        groups[product.name].push_back(&product);
    }
    bool hasChanged = false;
    for (const auto& [name, group] : groups) {
        if (group.size() > 1) {
            distinguish(group, sources);
            hasChanged = true;
        }
    }
    return hasChanged;
}

} // namespace

void makeNamesDistinct(std::vector<SensorProduct>& products, std::span<const SensorSource> sources) {
    constexpr int enough = 4; // a longer name can meet another one, but not again and again
    for (int round = 0; round < enough && distinguishOnce(products, sources); ++round) {
    }
}

} // namespace cindertop::linux_platform
