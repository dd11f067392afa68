#include "platform/linux/ProcessStat.h"

#include "support/Text.h"

#include <array>
#include <charconv>
#include <system_error>

#include <time.h> // NOLINT(modernize-deprecated-headers): clock_gettime and clockid_t are POSIX

namespace cindertop::linux_platform {

namespace {

/// Field numbers as the manual page of /proc counts them, from 1; the name is field 2.
enum Field : std::size_t { state = 3, parent = 4, session = 6, flags = 9, startTicks = 22, startStack = 28 };

/// The words behind the name, which are the fields from `state` on.
class Words {
public:
    explicit Words(std::string_view text) {
        for (auto& word : words_) {
            const auto end = text.find(' ');
            word = text.substr(0, end);
            text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
        }
    }

    std::string_view at(Field field) const { return words_[field - Field::state]; }

    template <typename Number>
    std::optional<Number> number(Field field) const {
        const auto word = at(field);
        Number value{};
        const auto [stop, error] = std::from_chars(word.data(), word.data() + word.size(), value);
        return error == std::errc{} && stop == word.data() + word.size() ? std::optional(value)
                                                                         : std::nullopt;
    }

private:
    std::array<std::string_view, Field::startStack - Field::state + 1> words_;
};

/// Where " -option" stands in a title.
std::size_t firstOption(std::string_view title) {
    auto place = title.find(" -");
    while (place != std::string_view::npos && title.substr(place + 2).starts_with(' ')) {
        place = title.find(" -", place + 2);
    }
    return place;
}

} // namespace

std::optional<ProcessStat> parseProcessStat(std::string_view line) {
    const auto open = line.find('(');
    const auto close = line.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open ||
        close + 2 > line.size()) {
        return std::nullopt;
    }
    const Words words(line.substr(close + 2));
    const auto parent = words.number<std::int32_t>(Field::parent);
    const auto session = words.number<std::int32_t>(Field::session);
    const auto flags = words.number<std::uint32_t>(Field::flags);
    const auto startTicks = words.number<std::uint64_t>(Field::startTicks);
    const auto startStack = words.number<std::uint64_t>(Field::startStack);
    if (words.at(Field::state).size() != 1 || !parent || !session || !flags || !startTicks || !startStack) {
        return std::nullopt;
    }
    return ProcessStat{.name = std::string(line.substr(open + 1, close - open - 1)),
                       .state = words.at(Field::state).front(),
                       .parent = *parent,
                       .session = *session,
                       .flags = *flags,
                       .startTicks = *startTicks,
                       .startStack = *startStack};
}

std::string_view steadyName(std::string_view kernelThreadName) {
    constexpr std::string_view worker = "kworker/";
    constexpr std::string_view rescuer = "kworker/R-"; // here the dash belongs to the name
    if (!kernelThreadName.starts_with(worker) || kernelThreadName.starts_with(rescuer)) {
        return kernelThreadName;
    }
    return kernelThreadName.substr(0, kernelThreadName.find_first_of("-+"));
}

std::string_view uncutName(std::string_view shortName, std::string_view commandLine) {
    if (shortName.size() != shortNameLimit) {
        return shortName;
    }
    const auto title = untilZeroByte(commandLine);
    // A program's own name may hold blanks, so the first one ends it only if nothing else does.
    for (const auto end : {firstOption(title), title.find(' ')}) {
        const auto program = title.substr(0, end);
        const auto name = program.substr(program.rfind('/') + 1); // no "/": npos + 1 is 0
        if (name.starts_with(shortName)) {
            return name;
        }
    }
    return shortName;
}

namespace {

/// What clock_getcpuclockid gives, without the system call by which it looks whether the process exists: the
/// complement of the identifier in the upper bits, "scheduler's account" in the lower three.
///
/// An identifier above the kernel's limit would lose its upper bits, and 0 stands for the caller itself.
clockid_t cpuClockOf(std::int32_t processIdentifier) {
    constexpr std::uint32_t schedulerAccount = 2;
    return static_cast<clockid_t>((~static_cast<std::uint32_t>(processIdentifier) << 3U) | schedulerAccount);
}

std::optional<std::chrono::nanoseconds> read(clockid_t clock) {
    constexpr auto longest =
        std::chrono::floor<std::chrono::seconds>(std::chrono::nanoseconds::max()).count();
    timespec time{};
    if (::clock_gettime(clock, &time) != 0 || time.tv_sec < 0 || time.tv_sec >= longest) {
        return std::nullopt;
    }
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

class KernelClocks final : public ProcessClocks {
public:
    std::optional<std::chrono::nanoseconds> cpuTime(std::int32_t processIdentifier) override {
        constexpr std::int32_t largestIdentifier = 1 << 22;
        if (processIdentifier < 1 || processIdentifier > largestIdentifier) {
            return std::nullopt;
        }
        return read(cpuClockOf(processIdentifier));
    }

    std::chrono::nanoseconds sinceBoot() override {
        return read(CLOCK_BOOTTIME).value_or(std::chrono::nanoseconds::zero());
    }

    Instant now() override { return Instant(std::chrono::system_clock::now().time_since_epoch()); }
};

} // namespace

std::unique_ptr<ProcessClocks> kernelClocks() {
    return std::make_unique<KernelClocks>();
}

} // namespace cindertop::linux_platform
