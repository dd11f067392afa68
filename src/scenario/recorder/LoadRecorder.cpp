#include "scenario/recorder/LoadRecorder.h"

#include "scenario/recorder/ScenarioText.h"

#include <algorithm>
#include <cstdint>

namespace cindertop {

namespace {

constexpr std::uint64_t wholeMachine = 1000; ///< thousandths

WideUnsigned totalOf(const HostCpuLoad& load) {
    return WideUnsigned{load.user} + load.system + load.idle + load.nice;
}

bool hasAdvanced(const HostCpuLoad& from, const HostCpuLoad& to) {
    return to.user >= from.user && to.system >= from.system && to.idle >= from.idle && to.nice >= from.nice &&
           totalOf(to) > totalOf(from);
}

} // namespace

std::string LoadRecorder::between(const std::optional<HostCpuLoad>& from,
                                  const std::optional<HostCpuLoad>& to) {
    if (!from) {
        return "null";
    }
    const bool isKnown = to && hasAdvanced(*from, *to);
    const WideUnsigned total = isKnown ? totalOf(*to) - totalOf(*from) : 1;
    std::uint64_t left = isKnown ? wholeMachine : 0;
    const auto share = [&](WideUnsigned& owed, std::uint64_t HostCpuLoad::* counter) {
        if (isKnown) {
            owed += WideUnsigned{(*to).*counter - (*from).*counter} * wholeMachine;
        }
        const auto thousandths = std::min<WideUnsigned>(owed / total, left);
        owed -= thousandths * total;
        left -= static_cast<std::uint64_t>(thousandths);
        return std::to_string(static_cast<std::uint64_t>(thousandths));
    };
    JsonObjectText load;
    load.add("user", share(owed_.user, &HostCpuLoad::user));
    load.add("system", share(owed_.system, &HostCpuLoad::system));
    load.add("nice", share(owed_.nice, &HostCpuLoad::nice));
    return load.text();
}

} // namespace cindertop
