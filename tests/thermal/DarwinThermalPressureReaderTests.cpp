#include "fakes/FakeThermalPressureNotifications.h"
#include "fakes/FakeUnifiedLog.h"
#include "thermal/ThermalProviders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <thread>
#include <vector>

// NOLINTBEGIN(modernize-use-designated-initializers): the struct of a table's rows names its columns
namespace cindertop {

namespace {

using Level = ThermalPressureLevel;
using fakes::FakeThermalPressureNotifications;

struct Services {
    std::shared_ptr<FakeThermalPressureNotifications> notifications =
        std::make_shared<FakeThermalPressureNotifications>();
    std::shared_ptr<fakes::FakeUnifiedLog> log = std::make_shared<fakes::FakeUnifiedLog>();
};

fakes::FakeUnifiedLog::Line line(UnifiedLogLevel level, const std::string& text) {
    return {level, std::string(unifiedLogSubsystem), "thermal", text};
}

TEST(DarwinThermalPressureReader, LogsEachChangeOfTheRawStateOnce) {
    const Services services;
    services.notifications->play({0, 0, 2, 2, 0, 7, 7, 3, 4, std::numeric_limits<std::uint64_t>::max(), 1});
    DarwinThermalPressureReader reader(services.notifications, services.log);
    for (const auto level :
         {Level::nominal, Level::nominal, Level::heavy, Level::heavy, Level::nominal, Level::unavailable,
          Level::unavailable, Level::critical, Level::critical, Level::unavailable, Level::moderate}) {
        EXPECT_EQ(reader.currentLevel(), level);
    }
    const auto info = [](const std::string& text) {
        return line(UnifiedLogLevel::info, "Darwin thermal pressure raw state: " + text);
    };
    const auto error = [](const std::string& text) {
        return line(UnifiedLogLevel::error, "Unknown Darwin thermal pressure raw state: " + text);
    };
    EXPECT_EQ(services.log->lines,
              (std::vector{info("0 -> nominal"), info("2 -> heavy"), info("0 -> nominal"), error("7"),
                           info("3 -> critical"), info("4 -> critical"), error("18446744073709551615"),
                           info("1 -> moderate")}));
}

TEST(DarwinThermalPressureReader, AFailedRegistrationIsFinalAndSilent) {
    const Services services;
    services.notifications->registrationStatus = 1;
    {
        DarwinThermalPressureReader reader(services.notifications, services.log);
        services.notifications->registrationStatus = 0;
        EXPECT_EQ(reader.currentLevel(), std::nullopt);
        EXPECT_EQ(reader.currentLevel(), std::nullopt);
    }
    EXPECT_EQ(services.notifications->registeredNames.size(), 1);
    EXPECT_TRUE(services.notifications->cancelledTokens.empty());
    EXPECT_TRUE(services.log->lines.empty());
}

TEST(DarwinThermalPressureReader, AFailedQueryForgetsNothing) {
    const Services services;
    services.notifications->states = {{0, 2}, {5, 3}, {0, 2}};
    DarwinThermalPressureReader reader(services.notifications, services.log);
    EXPECT_EQ(reader.currentLevel(), Level::heavy);
    EXPECT_EQ(reader.currentLevel(), std::nullopt);
    EXPECT_EQ(reader.currentLevel(), Level::heavy);
    EXPECT_EQ(services.log->lines.size(), 1);
}

TEST(DarwinThermalPressureReader, CancelsItsRegistrationAtItsEnd) {
    const Services services;
    {
        const DarwinThermalPressureReader reader(services.notifications, services.log);
        EXPECT_TRUE(services.notifications->cancelledTokens.empty());
    }
    EXPECT_EQ(services.notifications->cancelledTokens,
              std::vector{FakeThermalPressureNotifications::givenToken});
}

TEST(DarwinThermalPressureReader, OneReaderServesTheProcess) {
    static const Services first; // as long as the reader, which a repeated run finds made
    static const bool wasMade = !first.notifications->registeredNames.empty();
    const Services second;
    const auto source = DarwinThermalPressureReader::sharedOnFirstUse(first.notifications, first.log);
    EXPECT_FALSE(wasMade);
    auto& reader = source();
    EXPECT_EQ(&DarwinThermalPressureReader::shared(second.notifications, second.log), &reader);
    EXPECT_EQ(first.notifications->registeredNames.size(), 1);
    EXPECT_TRUE(second.notifications->registeredNames.empty());
}

TEST(DarwinThermalPressureReader, ConcurrentCallersMakeOneReaderAndLogEachChangeOnce) {
    constexpr std::size_t callers = 4;
    constexpr std::size_t readsEach = 100;
    const Services services;
    std::vector<std::uint64_t> states(callers * readsEach, 1);
    std::ranges::fill_n(states.begin(), static_cast<std::ptrdiff_t>(states.size()) / 2, 2);
    services.notifications->play(states);
    const auto source = DarwinThermalPressureReader::ownOnFirstUse(services.notifications, services.log);
    {
        std::vector<std::jthread> threads;
        threads.reserve(callers);
        for (std::size_t caller = 0; caller < callers; ++caller) {
            threads.emplace_back([source] {
                for (std::size_t read = 0; read < readsEach; ++read) {
                    source().currentLevel();
                }
            });
        }
    }
    EXPECT_EQ(services.notifications->registeredNames.size(), 1);
    EXPECT_EQ(services.log->lines,
              (std::vector{line(UnifiedLogLevel::info, "Darwin thermal pressure raw state: 2 -> heavy"),
                           line(UnifiedLogLevel::info, "Darwin thermal pressure raw state: 1 -> moderate")}));
}

} // namespace

} // namespace cindertop

// NOLINTEND(modernize-use-designated-initializers)
