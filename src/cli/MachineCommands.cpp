#include "cli/MachineCommands.h"

#include "cli/Commands.h"
#include "cli/MachineSource.h"
#include "cli/StoredCommands.h"
#include "platform/linux/LinuxMachine.h"
#include "platform/linux/OperatingSystemVersion.h"
#include "platform/linux/PropertyListUserDefaults.h"
#include "scenario/recorder/ScenarioRecorder.h"
#include "support/AtomicFile.h"
#include "support/FileSystem.h"
#include "terminal/SignalDescriptor.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include <poll.h>
#include <pwd.h>
#include <signal.h> // NOLINT(modernize-deprecated-headers): SIGHUP is POSIX
#include <unistd.h>

namespace cindertop::cli {

namespace {

using linux_platform::PropertyListUserDefaults;

/// Long enough to show a course, short enough to wait for.
constexpr Seconds usualRecording{60};

/// The list of offenders without the limits of a page.
ProcessOffenderConfiguration everyOffender(const ProcessInformation& process) {
    auto configuration = ProcessOffenderConfiguration::defaultConfiguration(process);
    configuration.minimumVisibleCPUPercent = 0;
    configuration.maximumOffenderCount = ProcessOffenderConfiguration::noMaximum;
    configuration.maximumChildCount = ProcessOffenderConfiguration::noMaximum;
    return configuration;
}

ProcessOffenderConfiguration configurationFor(Measuring measuring, const ProcessInformation& process) {
    return measuring.listsEverything ? everyOffender(process)
                                     : ProcessOffenderConfiguration::defaultConfiguration(process);
}

/// A screen is filled as far as it goes. Who chooses how often to look wants new shares each time.
Measuring measuringFor(const Arguments& arguments, const TerminalTraits& terminal) {
    const bool isScreen = arguments.command == Command::watch && isShownOnScreen(arguments.format, terminal);
    return {.listsEverything = arguments.command == Command::offenders || isScreen,
            .census = arguments.interval ? SampledMachine::Census::each : SampledMachine::Census::whenDue};
}

/// The live machine, with everything that measuring it needs.
class LiveMachine final : public MachineSource {
public:
    explicit LiveMachine(Measuring measuring)
        : services_(machine_.services()),
          sampler_(services_,
                   // What a single look finds is shown, not logged.
                   DarwinThermalPressureReader::sharedOnFirstUse(services_.pressure,
                                                                 std::make_shared<SilentUnifiedLog>()),
                   configurationFor(measuring, services_.process)),
          source_(
              sampler_, [](Seconds duration) { std::this_thread::sleep_for(duration); }, measuring.census) {}

    MachineReport look() override { return source_.look(); }

    MachineReport next() override { return source_.next(); }

private:
    linux_platform::LinuxMachine machine_;
    Machine services_;
    MachineSampler sampler_;
    SampledMachine source_;
};

AppSettings userSettings() {
    PosixFileSystem files;
    const PropertyListUserDefaults defaults(PropertyListUserDefaults::defaultFile(), files);
    return storedSettings(defaults, defaultSettings(linux_platform::operatingSystem));
}

/// The part of the account's comment field that is a person's name.
std::string fullName(const passwd& account) {
    const std::string_view comment = account.pw_gecos == nullptr ? "" : account.pw_gecos;
    return std::string(comment.substr(0, comment.find(',')));
}

/// Names that must not appear in a recording, even where a process is named after its user. Root's name is
/// not private.
std::vector<std::string> privateWords() {
    std::vector<std::string> words;
    std::array<char, 256> host{};
    if (::gethostname(host.data(), host.size() - 1) == 0) {
        words.emplace_back(host.data());
    }
    const auto* const account = ::getuid() == 0 ? nullptr : ::getpwuid(::getuid());
    if (account != nullptr) {
        words.emplace_back(account->pw_name);
        words.push_back(fullName(*account));
    }
    std::erase(words, "");
    return words;
}

/// False: a signal came first.
bool waitFor(std::chrono::nanoseconds duration, const SignalDescriptor& signals) {
    pollfd descriptor{.fd = signals.descriptor(), .events = POLLIN, .revents = 0};
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(duration).count();
    return ::poll(&descriptor, 1, static_cast<int>(milliseconds)) == 0;
}

/// Records until the time is over or the user ends it.
void recordFor(Seconds length, ScenarioRecorder& recorder) {
    using Clock = std::chrono::steady_clock;
    const SignalDescriptor signals{SIGINT, SIGTERM, SIGHUP};
    const auto end = Clock::now() + std::chrono::round<std::chrono::nanoseconds>(length);
    for (;;) {
        const auto pause = std::chrono::round<std::chrono::nanoseconds>(recorder.sample());
        const auto left = end - Clock::now();
        if (left <= Clock::duration::zero()) {
            return;
        }
        if (!waitFor(std::min<std::chrono::nanoseconds>(pause, left), signals)) {
            while (signals.next()) {
            }
            recorder.sample();
            return;
        }
    }
}

} // namespace

std::unique_ptr<MachineSource> measuredMachine(Measuring measuring) {
    return std::make_unique<LiveMachine>(measuring);
}

std::unique_ptr<MachineSource> machineSource(Measuring measuring, std::optional<AgentClient>& agent) {
    if (!agent) {
        return measuredMachine(measuring);
    }
    return std::make_unique<AgentMachine>(*agent, [measuring] { return measuredMachine(measuring); });
}

ExitStatus showMachine(const Arguments& arguments, Output& output, std::optional<AgentClient>& agent) {
    const auto settings = userSettings();
    const auto terminal = [&output] { return traitsOf(readTerminalFacts(output.descriptor())); };
    const auto source = machineSource(measuringFor(arguments, terminal()), agent);
    CommandEnvironment environment{.machine = *source,
                                   .output = output,
                                   .terminal = terminal,
                                   .temperatures =
                                       TemperatureFormatter::ofUser().in(settings->temperatureUnit),
                                   .system = linux_platform::operatingSystem,
                                   .verbosity = settings->recommendationVerbosity};
    switch (arguments.command) {
    case Command::status:
        return exitStatus(showStatus(environment, arguments.format));
    case Command::offenders:
        return exitStatus(showOffenders(environment, arguments.format));
    default:
        return exitStatus(watch(environment, {.format = arguments.format,
                                              .interval = arguments.interval.transform(
                                                  [](double seconds) { return Seconds{seconds}; }),
                                              .order = arguments.order}));
    }
}

ExitStatus recordMachine(const Arguments& arguments) {
    linux_platform::LinuxMachine machine;
    ScenarioRecorder recorder(machine.services(), privateWords());
    recordFor(arguments.seconds ? Seconds{*arguments.seconds} : usualRecording, recorder);
    const auto scenario = recorder.scenario();
    if (!scenario) {
        reportError("nothing was recorded: it ended too soon");
        return failure;
    }
    PosixFileSystem files;
    const auto& file = arguments.operands.front();
    if (const auto written = replaceFile(files, file, *scenario, Durability::synced); !written) {
        reportError("cannot write " + file + ": " + std::make_error_code(written.error()).message());
        return failure;
    }
    return success;
}

} // namespace cindertop::cli
