#pragma once

#include "platform/ProcessTable.h"
#include "platform/SourceStatus.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/ProcessFolders.h"
#include "platform/linux/ProcessStat.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace cindertop::linux_platform {

/// What stays the same about a process from one census to the next.
struct KnownProcess {
    /// One of which only the identifier is known.
    static KnownProcess unread(std::int32_t processIdentifier) {
        KnownProcess process;
        process.processIdentifier = processIdentifier;
        return process;
    }

    std::int32_t processIdentifier{};
    std::int32_t session{};
    /// All about the process but its CPU time; a stamp of 0: nothing was read yet.
    ProcessAccounting accounting;
    std::uint64_t startTicks{};
    std::uint64_t startStack{};
    std::chrono::nanoseconds cpuTime{};
    /// Since the machine's start. While a process is younger, its unit and with it its application may still
    /// change without a trace in its `stat`; set until the first census behind it has read it once more.
    std::optional<std::chrono::nanoseconds> settlesAt;
    bool mustBeReadAgain{};

    bool isRead() const { return accounting.identityStamp != 0; }

    bool isKernelThread() const { return (accounting.flags & ProcessAccounting::systemFlag) != 0; }
};

/// The processes of a Linux machine. A process that used no CPU time since it was read costs one read of its
/// CPU clock and opens no file: whatever a process does to itself, an exec too, takes CPU time, and so does
/// an identifier's way to another process. What others do to it shows in them: when the parent of a process
/// is gone or is another program now, the process is read again, and once more when it is 5 s old: by then
/// its desktop has moved it into its unit.
class LinuxProcessTable final : public ProcessTable {
public:
    explicit LinuxProcessTable(const Roots& roots = {},
                               std::unique_ptr<ProcessClocks> clocks = kernelClocks());

    int countProcesses() override;
    /// Hands out the listing that `countProcesses` made; without one since the last call it makes its own.
    int listProcesses(std::span<std::int32_t> buffer) override;
    /// The CPU time is all in `totalUserTime`, in nanoseconds.
    std::optional<ProcessAccounting> accounting(std::int32_t processIdentifier) override;
    std::optional<std::string> executablePath(std::int32_t processIdentifier) override;
    ClockUnit clockUnit() const override;

    /// What was last read about a process, however long ago; it is read now when it was not yet. Null when it
    /// is gone. Valid until the next call of any operation.
    const KnownProcess* known(std::int32_t processIdentifier);

    /// The same without reading anything: null as well when the process was not read yet.
    const KnownProcess* find(std::int32_t processIdentifier) const;

    /// The processes of the last census, ascending by identifier; of some, only the identifier is known.
    /// Valid until the next call of any other operation.
    std::span<const KnownProcess> processes() const { return processes_; }

    /// Calls `look` at the start of each census, in place of what was set before; it may call `readAgain`.
    void beforeEachCensus(std::function<void()> look) { beforeEachCensus_ = std::move(look); }

    /// The process gets a new stamp at the next census: something about it changed without its doing.
    void readAgain(std::int32_t processIdentifier);

    /// Processes that the last census found.
    std::size_t knownCount() const { return processes_.size(); }

    /// "processes", as the latest census found them; only without one /proc is listed for it.
    SourceStatus status();

private:
    using Listing = std::expected<std::span<const std::int32_t>, FileError>;

    struct ExecutablePath {
        std::uint64_t identityStamp{};
        std::optional<std::string> path;
    };

    Listing list();
    bool isConfined() const;
    bool seesOwnUserOnly() const;
    void adopt(std::span<const std::int32_t> listed);
    void markSettled();
    void markChildrenOfUnsettled();
    KnownProcess& entry(std::int32_t processIdentifier);
    /// False when the process is gone or may not be looked at.
    bool read(KnownProcess& process, std::chrono::nanoseconds cpuTime);
    KnownProcess described(const KnownProcess& former, const ProcessStat& stat, std::uint32_t owner);
    void readNames(KnownProcess& process, const ProcessStat& stat);
    void computeStart(KnownProcess& process);

    ProcessFolders folders_;
    std::unique_ptr<ProcessClocks> clocks_;
    std::vector<KnownProcess> processes_; ///< ascending by identifier
    std::size_t next_ = 0;                ///< where the process behind the last one asked for stands
    std::vector<std::int32_t>
        unsettled_;                   ///< gone, dead or another program: their children are to be read again
    std::vector<std::int32_t> young_; ///< those with a `settlesAt`, and some that ended since
    std::function<void()> beforeEachCensus_;
    std::uint64_t lastStamp_ = 0;
    ExecutablePath lastExecutable_; ///< the catalog asks for the same path right behind the provider
    bool isListed_ = false;
    std::optional<std::expected<std::size_t, FileError>> latestCount_; ///< of the latest listing
};

} // namespace cindertop::linux_platform
