#pragma once

#include "platform/DisplayList.h"
#include "platform/HardwareMeters.h"
#include "platform/ProcessorClocks.h"
#include "platform/PropertyValue.h"
#include "platform/UserNotificationCenter.h"
#include "support/Instant.h"
#include "support/Wording.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace cindertop::simulated {

/// How busy a process keeps one graphics engine.
struct ScenarioGraphics {
    std::string engine;
    std::uint32_t thousandths{}; ///< at most 1000
};

struct ScenarioProcess {
    std::int32_t processIdentifier{};
    std::int32_t parent{1};
    std::uint32_t user{501};
    std::string longName;  ///< at most 32 bytes
    std::string shortName; ///< at most 16 bytes
    std::optional<std::string> path;
    bool isSystemProcess{};
    std::uint32_t millicores{};             ///< CPU use in thousandths of one processor
    std::uint64_t cpuTimeNanoseconds{};     ///< at the moment when the process is first listed
    std::optional<Instant> startedAt;       ///< to the microsecond
    std::vector<ScenarioGraphics> graphics; ///< no engine twice; empty: it tells nothing of graphics
};

/// Processes in the order in which the system lists them.
class ScenarioProcessList {
public:
    ScenarioProcessList() = default;
    explicit ScenarioProcessList(std::vector<ScenarioProcess> processes);

    const std::vector<ScenarioProcess>& processes() const { return processes_; }

    /// The index of the process; none when it is not listed.
    std::optional<std::size_t> find(std::int32_t processIdentifier) const;
    /// The index of the first process whose identifier an earlier one has. A list of a scenario has none.
    std::optional<std::size_t> firstRepetition() const;

private:
    std::vector<ScenarioProcess> processes_;
    std::vector<std::uint32_t> byIdentifier_; ///< indices, ascending by identifier, then by themselves
};

struct ScenarioMachine {
    std::string modelIdentifier{"Mac14,2"};
    std::optional<std::string> cpuBrand{"Apple M2"};
    std::string architecture{"arm64"}; ///< of the played program; sensors are read on "arm64" only
    int processorCount{8};             ///< at least 1
};

/// What a request for permission yields.
enum class NotificationAnswer { granted, refused, error };

/// What becomes of a notification.
enum class NotificationDelivery { accepted, error };

struct ScenarioNotifications {
    NotificationAuthorizationStatus authorization{NotificationAuthorizationStatus::authorized};
    NotificationAnswer answer{NotificationAnswer::granted};
    NotificationDelivery delivery{NotificationDelivery::accepted};
};

/// The information dictionary of an application bundle.
struct ScenarioBundle {
    std::optional<std::string> identifier;
    std::optional<std::string> displayName;
    std::optional<std::string> name;
};

struct ScenarioSensor {
    std::optional<std::string> product;
    std::optional<double> celsius; ///< absent: the sensor reports nothing
};

struct ScenarioDisplay {
    DisplayIdentifier identifier;
    bool isBuiltIn;
};

using ScenarioPowerEntry = std::map<std::string, PropertyValue, std::less<>>;

struct ScenarioPower {
    std::optional<std::string> providing{"AC Power"};
    bool isLowPowerModeEnabled{};
    std::optional<std::vector<ScenarioPowerEntry>> entries{std::in_place}; ///< absent: the lookup fails
};

/// Thousandths of the whole machine, together at most 1000; the rest is idle.
struct ScenarioLoad {
    static constexpr std::uint32_t wholeMachine = 1000; ///< all of its processors busy

    std::uint32_t user{};
    std::uint32_t system{};
    std::uint32_t nice{};
};

/// What is true from `at` on until the next frame. Each frame is complete: what its text leaves out, it
/// shares with the one before. A null list means that the system cannot give it.
struct ScenarioFrame {
    std::chrono::nanoseconds at{}; ///< since the start
    int thermalState{};
    std::optional<std::uint64_t> pressure{0};
    std::shared_ptr<const std::vector<ScenarioSensor>> sensors;
    std::shared_ptr<const std::vector<ScenarioDisplay>> displays;
    std::shared_ptr<const ScenarioPower> power; ///< never null
    std::optional<ScenarioLoad> load{std::in_place};
    std::shared_ptr<const ScenarioProcessList> processes;
    std::shared_ptr<const MeterReadings> meters{}; ///< null: nothing tells
    std::optional<ProcessorClockReading> clocks{};
};

/// A preference by its field name. Whether there is one of that name that takes the value is for its reader
/// to say.
struct ScenarioSetting {
    std::string name;
    PreferenceValue value;
    std::string path; ///< where the value stands, for errors: "settings.showDockIcon", "commands[3].value"
};

struct PauseCommand {};

struct ResumeCommand {};

struct AcceptTermsCommand {};

struct SetCommand {
    ScenarioSetting setting;
};

struct ResetSettingsCommand {};

struct RefreshOffendersCommand {
    std::optional<std::string> pinned;
};

struct ScenarioCommand {
    using Action = std::variant<PauseCommand, ResumeCommand, AcceptTermsCommand, SetCommand,
                                ResetSettingsCommand, RefreshOffendersCommand>;

    std::chrono::nanoseconds at{}; ///< since the start
    Action action;
};

/// A machine's heat episode: what its system answers over a stretch of time, and what its user does.
struct Scenario {
    std::string name;
    std::string description;
    Instant start;
    OperatingSystem operatingSystem{OperatingSystem::mac};
    std::string timeZone{"UTC"};
    std::string locale{"en_GB"};
    std::chrono::nanoseconds duration{};
    ScenarioMachine machine;
    std::int32_t ownProcessIdentifier{99'999};
    std::optional<std::string> ownBundleIdentifier;
    bool termsAccepted{true};
    std::vector<ScenarioSetting> settings; ///< in the order of the file
    ScenarioNotifications notifications;
    std::map<std::string, ScenarioBundle, std::less<>> bundles; ///< by their folder
    std::vector<ScenarioFrame> frames;                          ///< the first at 0, ascending
    std::vector<ScenarioCommand> commands;                      ///< ascending, those of one instant in order
};

} // namespace cindertop::simulated
