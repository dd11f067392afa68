#include "platform/linux/GraphicsClientText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>
#include <system_error>
#include <utility>

namespace cindertop::linux_platform {

namespace {

/// The counters of one engine, as far as the text tells them.
struct EngineCounters {
    std::string_view name{};
    std::optional<std::uint64_t> nanoseconds{};
    std::optional<std::uint64_t> cycles{};
    std::optional<std::uint64_t> totalCycles{};
    std::optional<std::uint32_t> capacity{};
};

std::string_view trimmedBlanks(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view{}
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// A number with nothing behind it but, after blanks, the unit.
template <typename Number>
std::optional<Number> numberOf(std::string_view text, std::string_view unit = {}) {
    Number number{};
    const auto* const begin = text.data();
    const auto* const end = begin + text.size();
    const auto [stop, error] = std::from_chars(begin, end, number);
    const auto rest = trimmedBlanks({stop, end});
    return error == std::errc{} && (rest.empty() || rest == unit) ? std::optional(number) : std::nullopt;
}

/// The first entry of a key counts.
template <typename Number>
void keep(std::optional<Number>& kept, std::optional<Number> number) {
    if (!kept) {
        kept = number;
    }
}

class ClientText {
public:
    void read(std::string_view key, std::string_view value) {
        if (key == "drm-driver") {
            driver_ = driver_.empty() ? value : driver_;
        } else if (key == "drm-pdev") {
            place_ = place_.empty() ? value : place_;
        } else if (key == "drm-client-id") {
            keep(identifier_, numberOf<std::uint64_t>(value));
        } else {
            readEngine(key, value);
        }
    }

    std::optional<GraphicsClient> client() const {
        if (!identifier_) {
            return std::nullopt;
        }
        GraphicsClient client{.device = std::string(place_.empty() ? driver_ : place_),
                              .identifier = *identifier_,
                              .engines = {}};
        client.engines.reserve(engines_.size());
        for (const auto& engine : engines_) {
            if (auto usage = usageOf(engine)) {
                client.engines.push_back(*std::move(usage));
            }
        }
        return client.engines.empty() ? std::nullopt : std::optional(std::move(client));
    }

private:
    /// "drm-engine-capacity-" begins like "drm-engine-", so it comes first.
    void readEngine(std::string_view key, std::string_view value) {
        if (auto* const engine = engineBehind("drm-engine-capacity-", key)) {
            keep(engine->capacity, numberOf<std::uint32_t>(value));
        } else if (auto* const busy = engineBehind("drm-engine-", key)) {
            keep(busy->nanoseconds, numberOf<std::uint64_t>(value, "ns"));
        } else if (auto* const cycles = engineBehind("drm-cycles-", key)) {
            keep(cycles->cycles, numberOf<std::uint64_t>(value));
        } else if (auto* const total = engineBehind("drm-total-cycles-", key)) {
            keep(total->totalCycles, numberOf<std::uint64_t>(value));
        }
    }

    EngineCounters* engineBehind(std::string_view prefix, std::string_view key) {
        if (!key.starts_with(prefix) || key.size() == prefix.size()) {
            return nullptr;
        }
        const auto name = key.substr(prefix.size());
        const auto known = std::ranges::find(engines_, name, &EngineCounters::name);
        return known != engines_.end() ? &*known : &engines_.emplace_back(EngineCounters{.name = name});
    }

    static std::optional<GraphicsEngineUsage> usageOf(const EngineCounters& engine) {
        const bool hasTotal = engine.cycles && engine.totalCycles;
        if (!hasTotal && !engine.nanoseconds) {
            return std::nullopt;
        }
        return GraphicsEngineUsage{.engine = std::string(engine.name),
                                   .busy = hasTotal ? *engine.cycles : *engine.nanoseconds,
                                   .totalCycles = hasTotal ? engine.totalCycles : std::nullopt,
                                   .capacity = std::max(engine.capacity.value_or(1), std::uint32_t{1})};
    }

    std::string_view driver_;
    std::string_view place_;
    std::optional<std::uint64_t> identifier_;
    std::vector<EngineCounters> engines_;
};

} // namespace

std::optional<GraphicsClient> parseGraphicsClient(std::string_view text) {
    ClientText client;
    for (auto end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
        const auto line = text.substr(0, end);
        text.remove_prefix(end + 1);
        const auto colon = line.find(':');
        if (colon != std::string_view::npos && line.starts_with("drm-")) {
            client.read(line.substr(0, colon), trimmedBlanks(line.substr(colon + 1)));
        }
    }
    return client.client();
}

} // namespace cindertop::linux_platform
