#include "platform/linux/LinuxProcessTable.h"

#include "platform/linux/FileReading.h"
#include "support/Text.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include <unistd.h>

namespace cindertop::linux_platform {

namespace {

constexpr std::chrono::seconds settlingTime{
    5}; ///< desktops move a new application into its unit within this time

std::chrono::nanoseconds tickLength() {
    constexpr std::chrono::nanoseconds second = std::chrono::seconds(1);
    static const auto length = second / ::sysconf(_SC_CLK_TCK);
    return length;
}

/// From the machine's start; none when it fits no 64-bit number of nanoseconds.
std::optional<std::chrono::nanoseconds> startSinceBoot(std::uint64_t ticks) {
    const auto longest = std::chrono::nanoseconds::max() - settlingTime; // which is added to it
    const auto most = static_cast<std::uint64_t>(longest / tickLength());
    if (ticks > most) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(ticks) * tickLength();
}

/// The text, filled up with zero bytes; a longer one is cut between two characters, if it is UTF-8.
template <std::size_t room>
std::array<char, room> filled(std::string_view text) {
    constexpr std::size_t longestCharacter = 4;
    auto length = std::min(text.size(), room);
    const auto isInsideCharacter = [&](std::size_t place) {
        return place < text.size() && (static_cast<unsigned char>(text[place]) & 0xC0U) == 0x80U;
    };
    for (std::size_t back = 0; back < longestCharacter && back < length; ++back) {
        if (!isInsideCharacter(length - back)) {
            length -= back;
            break;
        }
    }
    std::array<char, room> bytes{};
    text.copy(bytes.data(), length);
    return bytes;
}

std::array<char, 16> shortNameOf(const ProcessStat& stat) {
    const auto name = stat.isKernelThread() ? steadyName(stat.name) : std::string_view(stat.name);
    std::array<char, 16> bytes{};
    name.copy(bytes.data(), shortNameLimit);
    return bytes;
}

/// Whether all but the times and the stamp is alike.
bool describesSame(const ProcessAccounting& left, const ProcessAccounting& right) {
    const auto identity = [](const ProcessAccounting& accounting) {
        return std::tie(accounting.flags, accounting.parentProcessIdentifier, accounting.realUserIdentifier,
                        accounting.shortName, accounting.longName, accounting.startSeconds,
                        accounting.startMicroseconds);
    };
    return identity(left) == identity(right);
}

} // namespace

LinuxProcessTable::LinuxProcessTable(const Roots& roots, std::unique_ptr<ProcessClocks> clocks)
    : folders_(roots.proc), clocks_(std::move(clocks)) {}

int LinuxProcessTable::countProcesses() {
    const auto listed = list();
    isListed_ = listed.has_value();
    if (!listed) {
        return 0;
    }
    if (beforeEachCensus_) {
        beforeEachCensus_();
    }
    adopt(*listed);
    return static_cast<int>(processes_.size());
}

LinuxProcessTable::Listing LinuxProcessTable::list() {
    const auto listed = folders_.list();
    if (listed) {
        latestCount_ = listed->size();
    } else {
        latestCount_ = std::unexpected(listed.error());
    }
    return listed;
}

int LinuxProcessTable::listProcesses(std::span<std::int32_t> buffer) {
    if (!isListed_ && countProcesses() < 1) {
        return 0;
    }
    isListed_ = false;
    const auto count = std::min(buffer.size(), processes_.size());
    std::ranges::transform(processes_.begin(), processes_.begin() + static_cast<std::ptrdiff_t>(count),
                           buffer.begin(), &KnownProcess::processIdentifier);
    return static_cast<int>(count);
}

void LinuxProcessTable::adopt(std::span<const std::int32_t> listed) {
    next_ = 0;
    if (!std::ranges::equal(listed, processes_, {}, {}, &KnownProcess::processIdentifier)) {
        std::vector<KnownProcess> adopted;
        adopted.reserve(listed.size());
        auto former = processes_.begin();
        const auto leaveBehind = [&] { unsettled_.push_back(former++->processIdentifier); };
        for (const auto identifier : listed) {
            while (former != processes_.end() && former->processIdentifier < identifier) {
                leaveBehind();
            }
            const bool isKnown = former != processes_.end() && former->processIdentifier == identifier;
            adopted.push_back(isKnown ? *former++ : KnownProcess::unread(identifier));
        }
        while (former != processes_.end()) {
            leaveBehind();
        }
        processes_ = std::move(adopted);
    }
    markSettled();
    markChildrenOfUnsettled();
}

void LinuxProcessTable::markSettled() {
    if (young_.empty()) {
        return;
    }
    const auto now = clocks_->sinceBoot();
    std::erase_if(young_, [&](std::int32_t identifier) {
        const auto* const process = find(identifier);
        if (process == nullptr || !process->settlesAt) {
            return true;
        }
        if (now < *process->settlesAt) {
            return false;
        }
        readAgain(identifier);
        return true;
    });
}

void LinuxProcessTable::readAgain(std::int32_t processIdentifier) {
    const auto place =
        std::ranges::lower_bound(processes_, processIdentifier, {}, &KnownProcess::processIdentifier);
    if (place != processes_.end() && place->processIdentifier == processIdentifier) {
        place->mustBeReadAgain = true;
    }
}

void LinuxProcessTable::markChildrenOfUnsettled() {
    if (unsettled_.empty()) {
        return;
    }
    std::ranges::sort(unsettled_);
    for (auto& process : processes_) {
        if (std::ranges::binary_search(unsettled_, process.accounting.parentProcessIdentifier)) {
            process.mustBeReadAgain = true;
        }
    }
    unsettled_.clear();
}

KnownProcess& LinuxProcessTable::entry(std::int32_t processIdentifier) {
    if (next_ < processes_.size() && processes_[next_].processIdentifier == processIdentifier) {
        return processes_[next_++];
    }
    auto place =
        std::ranges::lower_bound(processes_, processIdentifier, {}, &KnownProcess::processIdentifier);
    if (place == processes_.end() || place->processIdentifier != processIdentifier) {
        place = processes_.insert(place, KnownProcess::unread(processIdentifier));
    }
    next_ = static_cast<std::size_t>(place - processes_.begin()) + 1;
    return *place;
}

std::optional<ProcessAccounting> LinuxProcessTable::accounting(std::int32_t processIdentifier) {
    auto& process = entry(processIdentifier);
    const auto cpuTime = clocks_->cpuTime(processIdentifier);
    if (!cpuTime) {
        unsettled_.push_back(processIdentifier);
        process = KnownProcess::unread(processIdentifier);
        return std::nullopt;
    }
    const bool isUnchanged = process.isRead() && !process.mustBeReadAgain && process.cpuTime == *cpuTime;
    if (!isUnchanged && !read(process, *cpuTime)) {
        return std::nullopt;
    }
    return process.accounting;
}

const KnownProcess* LinuxProcessTable::known(std::int32_t processIdentifier) {
    const auto& process = entry(processIdentifier);
    const bool isUpToDate = process.isRead() && !process.mustBeReadAgain;
    return isUpToDate || accounting(processIdentifier) ? &entry(processIdentifier) : nullptr;
}

const KnownProcess* LinuxProcessTable::find(std::int32_t processIdentifier) const {
    const auto place =
        std::ranges::lower_bound(processes_, processIdentifier, {}, &KnownProcess::processIdentifier);
    const bool isFound =
        place != processes_.end() && place->processIdentifier == processIdentifier && place->isRead();
    return isFound ? &*place : nullptr;
}

bool LinuxProcessTable::read(KnownProcess& process, std::chrono::nanoseconds cpuTime) {
    // The CPU time was read first: whatever changes between the reads moves it once more.
    const auto line = folders_.text(process.processIdentifier, "stat");
    const auto stat = line ? parseProcessStat(*line) : std::nullopt;
    const auto owner = stat ? folders_.owner(process.processIdentifier) : std::nullopt;
    if (!owner) {
        if (process.isRead()) {
            unsettled_.push_back(process.processIdentifier);
        }
        process = KnownProcess::unread(process.processIdentifier);
        return false;
    }
    auto current = described(process, *stat, *owner);
    current.cpuTime = cpuTime;
    current.accounting.totalUserTime = static_cast<std::uint64_t>(cpuTime.count());
    const bool hasChanged =
        process.mustBeReadAgain || !describesSame(process.accounting, current.accounting) ||
        process.startTicks != current.startTicks || process.startStack != current.startStack ||
        process.session != current.session || process.settlesAt.has_value() != current.settlesAt.has_value();
    if (stat->isZombie() || (process.isRead() && hasChanged)) {
        unsettled_.push_back(process.processIdentifier);
    }
    current.accounting.identityStamp =
        hasChanged || !process.isRead() ? ++lastStamp_ : process.accounting.identityStamp;
    process = current;
    return true;
}

KnownProcess LinuxProcessTable::described(const KnownProcess& former, const ProcessStat& stat,
                                          std::uint32_t owner) {
    const bool isSameProcess = former.isRead() && former.startTicks == stat.startTicks;
    auto process = isSameProcess ? former : KnownProcess::unread(former.processIdentifier);
    process.mustBeReadAgain = false;
    process.session = stat.session;
    process.startTicks = stat.startTicks;
    process.accounting.flags = stat.isKernelThread() ? ProcessAccounting::systemFlag : 0;
    process.accounting.parentProcessIdentifier = stat.parent;
    process.accounting.realUserIdentifier = owner;
    if (!isSameProcess) {
        computeStart(process);
    } else if (process.settlesAt && clocks_->sinceBoot() >= *process.settlesAt) {
        process.settlesAt.reset();
    }
    if (isSameProcess && stat.isZombie()) {
        return process; // its memory is gone, and with it what its files said
    }
    const bool isSameProgram = isSameProcess && process.startStack == stat.startStack &&
                               process.accounting.shortName == shortNameOf(stat);
    process.startStack = stat.startStack;
    if (!isSameProgram) {
        readNames(process, stat);
    }
    return process;
}

void LinuxProcessTable::readNames(KnownProcess& process, const ProcessStat& stat) {
    process.accounting.shortName = shortNameOf(stat);
    if (stat.isKernelThread()) {
        process.accounting.longName = filled<32>(steadyName(stat.name));
        return;
    }
    const bool mayBeCut = stat.name.size() == shortNameLimit;
    const auto commandLine = mayBeCut ? folders_.text(process.processIdentifier, "cmdline") : std::nullopt;
    process.accounting.longName = filled<32>(uncutName(stat.name, commandLine.value_or(std::string_view{})));
}

void LinuxProcessTable::computeStart(KnownProcess& process) {
    const auto sinceBoot = startSinceBoot(process.startTicks);
    if (!sinceBoot) {
        return;
    }
    const auto upTime = clocks_->sinceBoot();
    if (upTime < *sinceBoot + settlingTime) {
        process.settlesAt = *sinceBoot + settlingTime;
        young_.push_back(process.processIdentifier);
    }
    const auto bootedAt = clocks_->now().time_since_epoch() - upTime;
    if (bootedAt < std::chrono::nanoseconds::zero() ||
        *sinceBoot > std::chrono::nanoseconds::max() - bootedAt) {
        return; // no clock was set when the machine started
    }
    const auto started = std::chrono::floor<std::chrono::microseconds>(bootedAt + *sinceBoot);
    const auto seconds = std::chrono::floor<std::chrono::seconds>(started);
    process.accounting.startSeconds = static_cast<std::uint64_t>(seconds.count());
    process.accounting.startMicroseconds = static_cast<std::uint64_t>((started - seconds).count());
}

std::optional<std::string> LinuxProcessTable::executablePath(std::int32_t processIdentifier) {
    const auto* const process = known(processIdentifier);
    if (process == nullptr || process->isKernelThread()) {
        return std::nullopt;
    }
    if (lastExecutable_.identityStamp != process->accounting.identityStamp) {
        lastExecutable_ = {.identityStamp = process->accounting.identityStamp,
                           .path = folders_.executable(processIdentifier)};
    }
    return lastExecutable_.path;
}

ClockUnit LinuxProcessTable::clockUnit() const {
    return {.numerator = 1, .denominator = 1};
}

/// The first process that a sandbox sees is the one that built it.
bool LinuxProcessTable::isConfined() const {
    const auto* const first = find(1);
    return first != nullptr &&
           untilZeroByte({first->accounting.shortName.data(), first->accounting.shortName.size()}) == "bwrap";
}

/// The first process of all is root's: it is missing where /proc hides other users' processes.
bool LinuxProcessTable::seesOwnUserOnly() const {
    return std::ranges::any_of(processes_, &KnownProcess::isRead) && find(1) == nullptr;
}

SourceStatus LinuxProcessTable::status() {
    if (!latestCount_) {
        std::ignore = list();
    }
    const auto& count = *latestCount_;
    const auto folder = folders_.path().string();
    if (!count || *count == 0) {
        const auto why = count ? std::string_view("lists no process") : describe(count.error());
        return {.name = "processes", .isAvailable = false, .reason = folder + ": " + std::string(why)};
    }
    if (isConfined()) {
        return {.name = "processes", .isAvailable = true, .reason = folder + ", this sandbox only"};
    }
    if (seesOwnUserOnly()) {
        return {.name = "processes", .isAvailable = true, .reason = folder + ", other users' hidden"};
    }
    return {.name = "processes", .isAvailable = true, .reason = folder};
}

} // namespace cindertop::linux_platform
