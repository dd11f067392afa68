#include "cpu/SystemProcessCPUProvider.h"

#include "support/Text.h"
#include "support/WideInteger.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <string>
#include <utility>

namespace cindertop {

namespace {

bool isApplicationName(std::string_view component) {
    return lowerCased(component).ends_with(".app");
}

bool isDropped(std::string_view component) {
    return component.empty() || component == "." || component == "..";
}

/// The last component without its extension; a name that only starts with a dot has none.
std::string nameOfFolder(std::string_view folder) {
    const std::size_t slash = folder.rfind('/');
    const std::string_view name = slash == std::string_view::npos ? folder : folder.substr(slash + 1);
    const std::size_t dot = name.rfind('.');
    return std::string(dot == 0 ? name : name.substr(0, dot));
}

std::string displayName(const ApplicationBundle& bundle, std::string_view folder) {
    if (auto name = bundle.informationText("CFBundleDisplayName")) {
        return *std::move(name);
    }
    if (auto name = bundle.informationText("CFBundleName")) {
        return *std::move(name);
    }
    return nameOfFolder(folder);
}

} // namespace

std::optional<std::string> outermostApplicationFolder(std::string_view executablePath) {
    std::string folder = executablePath.starts_with('/') ? "/" : "";
    for (std::string_view rest = executablePath; !rest.empty();) {
        const std::string_view component = rest.substr(0, rest.find('/'));
        rest.remove_prefix(std::min(component.size() + 1, rest.size()));
        if (isDropped(component)) {
            continue;
        }
        if (!folder.empty() && !folder.ends_with('/')) {
            folder += '/';
        }
        folder += component;
        if (isApplicationName(component)) {
            return folder;
        }
    }
    return std::nullopt;
}

std::optional<EnclosingApplication> enclosingApplication(std::string_view executablePath,
                                                         ApplicationCatalog& catalog) {
    auto folder = outermostApplicationFolder(executablePath);
    if (!folder) {
        return std::nullopt;
    }
    const std::unique_ptr<ApplicationBundle> bundle = catalog.openBundle(*folder);
    if (!bundle) {
        return std::nullopt;
    }
    std::string name = displayName(*bundle, *folder);
    return EnclosingApplication{*std::move(folder), bundle->bundleIdentifier(), std::move(name)};
}

namespace {

template <std::size_t Room>
std::string decodedName(const std::array<char, Room>& bytes) {
    return trimmingControlCharacters(repairedUtf8(untilZeroByte({bytes.data(), bytes.size()})));
}

std::string nameOf(const ProcessAccounting& accounting) {
    if (std::string name = decodedName(accounting.longName); !name.empty()) {
        return name;
    }
    return decodedName(accounting.shortName);
}

/// None when the start is not known or lies beyond what an instant holds.
std::optional<Instant> startOf(const ProcessAccounting& accounting) {
    if (accounting.startSeconds == 0) {
        return std::nullopt;
    }
    constexpr WideUnsigned latest = std::numeric_limits<std::int64_t>::max();
    const WideUnsigned nanoseconds = WideUnsigned{accounting.startSeconds} * 1'000'000'000 +
                                     WideUnsigned{accounting.startMicroseconds} * 1'000;
    if (nanoseconds > latest) {
        return std::nullopt;
    }
    return Instant{std::chrono::nanoseconds{static_cast<std::int64_t>(nanoseconds)}};
}

} // namespace

SystemProcessCPUProvider::SystemProcessCPUProvider(ProcessTable& processes, ApplicationCatalog& applications)
    : processes_(&processes), applications_(&applications) {}

std::vector<ProcessCPUReading> SystemProcessCPUProvider::readings(Instant at) {
    const std::scoped_lock turn(calls_);
    ++census_;
    foundInCensus_ = 0;
    const std::span<const std::int32_t> listed = listProcesses();
    std::vector<ProcessCPUReading> census;
    census.reserve(listed.size());
    for (const std::int32_t processIdentifier : listed) {
        if (processIdentifier <= 0) {
            continue;
        }
        if (ProcessCPUReading* const reading = read(processIdentifier)) {
            reading->measuredAt = at;
            census.push_back(*reading);
        }
    }
    forgetVanished();
    return census;
}

std::span<const std::int32_t> SystemProcessCPUProvider::listProcesses() {
    // The size of the buffer in bytes has to fit a signed 32-bit argument where the system wants it so.
    constexpr int mostProcesses = std::numeric_limits<std::int32_t>::max() / int{sizeof(std::int32_t)};
    const int room = std::min(processes_->countProcesses(), mostProcesses);
    if (room < 1) {
        return {};
    }
    identifiers_.assign(static_cast<std::size_t>(room), 0);
    const int written = std::min(processes_->listProcesses(identifiers_), room);
    if (written < 1) {
        return {};
    }
    return std::span(identifiers_).first(static_cast<std::size_t>(written));
}

ProcessCPUReading* SystemProcessCPUProvider::read(std::int32_t processIdentifier) {
    const std::optional<ProcessAccounting> accounting = processes_->accounting(processIdentifier);
    if (!accounting) {
        return nullptr;
    }
    KeptReading& kept = kept_[processIdentifier];
    if (accounting->identityStamp == 0 || kept.identityStamp != accounting->identityStamp) {
        auto identified = identify(processIdentifier, *accounting);
        if (!identified) {
            kept.identityStamp = 0;
            return nullptr;
        }
        kept.identityStamp = accounting->identityStamp;
        kept.reading = *std::move(identified);
    }
    foundInCensus_ += std::exchange(kept.census, census_) == census_ ? 0U : 1U;
    kept.reading.cumulativeCPUTimeNanoseconds = cpuTimeNanoseconds(*accounting);
    return &kept.reading;
}

std::optional<ProcessCPUReading> SystemProcessCPUProvider::identify(std::int32_t processIdentifier,
                                                                    const ProcessAccounting& accounting) {
    ProcessCPUReading reading{
        .processIdentifier = processIdentifier,
        .parentProcessIdentifier = accounting.parentProcessIdentifier,
        .userIdentifier = accounting.realUserIdentifier,
        .name = nameOf(accounting),
        .isSystemProcess =
            (accounting.flags & ProcessAccounting::systemFlag) != 0 || accounting.realUserIdentifier == 0,
        .startedAt = startOf(accounting),
    };
    if (reading.name.empty()) {
        return std::nullopt;
    }
    if (const auto path = processes_->executablePath(processIdentifier)) {
        reading.executablePath = repairedUtf8(untilZeroByte(*path));
    }
    attachApplication(reading);
    return reading;
}

/// The bundle around the executable comes first; systems that keep applications elsewhere are asked after it.
void SystemProcessCPUProvider::attachApplication(ProcessCPUReading& reading) {
    if (reading.executablePath) {
        if (auto application = enclosingApplication(*reading.executablePath, *applications_)) {
            reading.appBundlePath = std::move(application->bundlePath);
            reading.appBundleIdentifier = std::move(application->bundleIdentifier);
            reading.appDisplayName = std::move(application->displayName);
            return;
        }
    }
    // Names of units and files are bytes.
    if (const auto application = applications_->applicationOfProcess(reading.processIdentifier)) {
        reading.appBundlePath = repairedUtf8(application->bundlePath);
        reading.appBundleIdentifier = repairedUtf8(application->bundleIdentifier);
        reading.appDisplayName = repairedUtf8(application->displayName);
    }
}

/// A time beyond 64 bits becomes the largest that they hold.
std::uint64_t SystemProcessCPUProvider::cpuTimeNanoseconds(const ProcessAccounting& accounting) {
    if (!clockUnit_) {
        clockUnit_ = processes_->clockUnit();
    }
    constexpr WideUnsigned largest = std::numeric_limits<std::uint64_t>::max();
    WideUnsigned time = WideUnsigned{accounting.totalUserTime} + accounting.totalSystemTime;
    if (clockUnit_->denominator != 0) {
        time = time * clockUnit_->numerator / clockUnit_->denominator;
    }
    return static_cast<std::uint64_t>(std::min(time, largest));
}

void SystemProcessCPUProvider::forgetVanished() {
    if (kept_.size() != foundInCensus_) {
        std::erase_if(kept_, [this](const auto& entry) { return entry.second.census != census_; });
    }
}

} // namespace cindertop
