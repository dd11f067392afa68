#pragma once

#include "platform/ThermalPressureNotifications.h"

#include <cstddef>
#include <string>
#include <vector>

namespace cindertop::fakes {

/// Plays a list of raw states, one a query; the last one stays.
class FakeThermalPressureNotifications final : public ThermalPressureNotifications {
public:
    static constexpr std::int32_t givenToken = 42;

    std::uint32_t registrationStatus = 0;
    std::vector<State> states{{.status = 0, .raw = 0}};
    std::vector<std::string> registeredNames;
    std::vector<std::int32_t> cancelledTokens;

    void play(const std::vector<std::uint64_t>& rawStates) {
        states.clear();
        for (const auto raw : rawStates) {
            states.push_back({.status = 0, .raw = raw});
        }
        next_ = 0;
    }

    Registration registerCheck(std::string_view name) override {
        registeredNames.emplace_back(name);
        return {.status = registrationStatus, .token = givenToken};
    }

    State state(std::int32_t token) override {
        if (token != givenToken) {
            return {.status = 1, .raw = 0};
        }
        const auto answer = states.at(next_);
        if (next_ + 1 < states.size()) {
            ++next_;
        }
        return answer;
    }

    void cancel(std::int32_t token) override { cancelledTokens.push_back(token); }

private:
    std::size_t next_ = 0;
};

} // namespace cindertop::fakes
