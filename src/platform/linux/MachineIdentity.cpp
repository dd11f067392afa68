#include "platform/linux/MachineIdentity.h"

#include "support/Text.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace cindertop::linux_platform {

namespace {

using Row = std::pair<std::string_view, std::string_view>;

constexpr auto boards = std::to_array<Row>({
    {"apple,j313", "MacBookAir10,1"},
    {"apple,j413", "Mac14,2"},
    {"apple,j415", "Mac14,15"},
    {"apple,j613", "Mac15,12"},
    {"apple,j615", "Mac15,13"},
    {"apple,j713", "Mac16,12"},
    {"apple,j715", "Mac16,13"},
    {"apple,j813", "Mac17,3"}, // inferred from the boards before it, like the next
    {"apple,j815", "Mac17,4"},
});

constexpr auto chips = std::to_array<Row>({
    {"apple,t8103", "Apple M1"},
    {"apple,t8112", "Apple M2"},
    {"apple,t8122", "Apple M3"},
    {"apple,t8132", "Apple M4"},
    {"apple,t8142", "Apple M5"},
});

std::optional<std::string> firstMatch(std::span<const Row> rows, const std::vector<std::string>& names) {
    for (const auto& name : names) {
        if (const auto row = std::ranges::find(rows, name, &Row::first); row != rows.end()) {
            return std::string(row->second);
        }
    }
    return std::nullopt;
}

} // namespace

std::vector<std::string> parseCompatible(std::string_view bytes) {
    std::vector<std::string> names;
    while (!bytes.empty()) {
        const auto name = untilZeroByte(bytes);
        bytes.remove_prefix(std::min(name.size() + 1, bytes.size()));
        if (!name.empty()) {
            names.emplace_back(name);
        }
    }
    return names;
}

std::optional<std::string> appleModelIdentifier(const std::vector<std::string>& compatible) {
    return firstMatch(boards, compatible);
}

std::optional<std::string> appleChipBrand(const std::vector<std::string>& compatible) {
    return firstMatch(chips, compatible);
}

std::optional<std::string> parseProcessorModel(std::string_view cpuinfo) {
    while (!cpuinfo.empty()) {
        const auto end = cpuinfo.find('\n');
        if (end == std::string_view::npos) {
            return std::nullopt; // a line that the caller's room cut off
        }
        const auto line = cpuinfo.substr(0, end);
        cpuinfo.remove_prefix(end + 1);
        const auto colon = line.find(':');
        if (colon == std::string_view::npos || trimmingWhitespace(line.substr(0, colon)) != "model name") {
            continue;
        }
        const auto model = trimmingWhitespace(line.substr(colon + 1));
        return model.empty() ? std::nullopt : std::optional<std::string>(repairedUtf8(model));
    }
    return std::nullopt;
}

} // namespace cindertop::linux_platform
