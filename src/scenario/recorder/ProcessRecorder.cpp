#include "scenario/recorder/ProcessRecorder.h"

#include "scenario/recorder/ScenarioText.h"

#include <algorithm>
#include <utility>

namespace cindertop {

namespace {

constexpr std::size_t nameRoom = 32; ///< bytes
constexpr std::uint32_t thousandths = 1000;
constexpr std::uint64_t mostMillicores = 1'000'000'000;
constexpr std::int32_t usualParent = 1;

/// At most so many bytes, and no half character.
std::string cutTo(std::size_t room, std::string text) {
    if (text.size() <= room) {
        return text;
    }
    while (room > 0 && (static_cast<unsigned char>(text[room]) & 0xC0U) == 0x80U) {
        --room;
    }
    text.resize(room);
    return text;
}

using ReadingsByIdentifier = std::unordered_map<std::int32_t, const ProcessCPUReading*>;

ReadingsByIdentifier byIdentifier(std::span<const ProcessCPUReading> census) {
    ReadingsByIdentifier readings;
    readings.reserve(census.size());
    for (const ProcessCPUReading& reading : census) {
        readings.emplace(reading.processIdentifier, &reading);
    }
    return readings;
}

/// 0 for a process that is not in the later census, or is another one there.
std::uint64_t usedSince(const ProcessCPUReading& reading, const ReadingsByIdentifier& later) {
    const auto found = later.find(reading.processIdentifier);
    if (found == later.end() || found->second->startedAt != reading.startedAt) {
        return 0;
    }
    const auto then = found->second->cumulativeCPUTimeNanoseconds;
    return then - std::min(then, reading.cumulativeCPUTimeNanoseconds);
}

/// The thousandths of a processor that bring what is written closest to what was used.
std::uint64_t nearestShare(WideUnsigned used, WideUnsigned written, std::uint64_t time) {
    const WideUnsigned rounded = used + time / 2;
    const WideUnsigned owed = rounded - std::min(rounded, written);
    return static_cast<std::uint64_t>(std::min<WideUnsigned>(owed / time, mostMillicores));
}

} // namespace

ProcessRecorder::ProcessRecorder(Instant start, Anonymizer anonymized)
    : start_(start), anonymized_(std::move(anonymized)) {}

std::string ProcessRecorder::between(std::span<const ProcessCPUReading> from,
                                     std::span<const ProcessCPUReading> to,
                                     const std::map<std::int32_t, std::string>& graphics,
                                     std::chrono::nanoseconds elapsed) {
    const auto former = std::exchange(listed_, {});
    if (from.empty()) {
        return "null";
    }
    const auto later = byIdentifier(to);
    const auto time = static_cast<std::uint64_t>(elapsed.count());
    JsonListText list;
    for (const ProcessCPUReading& reading : from) {
        const auto known = former.find(reading.processIdentifier);
        const bool isSame = known != former.end() && known->second.startedAt == reading.startedAt;
        Listed process =
            isSame ? known->second : Listed{.startedAt = reading.startedAt, .used = 0, .written = 0};
        process.used += WideUnsigned{usedSince(reading, later)} * thousandths;
        const auto millicores = nearestShare(process.used, process.written, time);
        process.written += WideUnsigned{millicores} * time;
        const auto drawn = graphics.find(reading.processIdentifier);
        list.add(processText(reading, isSame ? 0 : reading.cumulativeCPUTimeNanoseconds, millicores,
                             drawn == graphics.end() ? std::string_view{} : drawn->second));
        listed_.insert_or_assign(reading.processIdentifier, process);
    }
    return list.text();
}

std::string ProcessRecorder::processText(const ProcessCPUReading& reading, std::uint64_t firstCPUTime,
                                         std::uint64_t millicores, std::string_view graphics) {
    const auto name = cutTo(nameRoom, anonymized_(reading.name));
    JsonObjectText object;
    object.add("pid", std::to_string(reading.processIdentifier));
    if (reading.parentProcessIdentifier != usualParent) {
        object.add("parent", std::to_string(reading.parentProcessIdentifier));
    }
    if (reading.userIdentifier == 0) {
        object.add("user", "0");
    } else if (reading.isSystemProcess) {
        object.add("systemFlag", "true");
    }
    object.add("longName", jsonString(name));
    if (reading.appBundleIdentifier) {
        object.add("path", jsonString(pathWithin(reading, name)));
    }
    if (millicores != 0) {
        object.add("millicores", std::to_string(millicores));
    }
    if (firstCPUTime != 0) {
        object.add("cpuTimeNanoseconds", std::to_string(firstCPUTime));
    }
    if (reading.startedAt) {
        const auto sinceStart = *reading.startedAt - start_;
        object.add("startedAt", secondsText(std::chrono::floor<std::chrono::microseconds>(sinceStart)));
    }
    if (!graphics.empty()) {
        object.add("graphics", graphics);
    }
    return object.text();
}

std::string ProcessRecorder::pathWithin(const ProcessCPUReading& reading, const std::string& name) {
    const Application application{
        .identifier = anonymized_(*reading.appBundleIdentifier),
        .displayName = reading.appDisplayName.transform(anonymized_),
    };
    std::string folder = application.identifier; // one component of a path
    std::ranges::replace(folder, '/', '_');
    folder = "/" + folder + ".app";
    applications_.try_emplace(folder, application);
    return folder + "/" + name;
}

std::string ProcessRecorder::bundles() const {
    JsonObjectText bundles;
    for (const auto& [folder, application] : applications_) {
        JsonObjectText bundle;
        bundle.add("CFBundleIdentifier", jsonString(application.identifier));
        if (application.displayName) {
            bundle.add("CFBundleDisplayName", jsonString(*application.displayName));
        }
        bundles.add(folder, bundle.text());
    }
    return bundles.text();
}

} // namespace cindertop
