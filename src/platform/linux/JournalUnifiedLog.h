#pragma once

#include "platform/UnifiedLog.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// The fields of a journal entry, each "NAME=value".
std::vector<std::string> journalFields(UnifiedLogLevel level, std::string_view subsystem,
                                       std::string_view category, std::string_view text);

/// "cindertop: [thermal] text" with a line end. Control characters and invalid bytes are replaced: a text can
/// neither pretend to be a second line nor command the terminal.
std::string terminalLine(std::string_view category, std::string_view text);

/// The systemd journal where it runs, else lines on standard error. Any thread may write.
class JournalUnifiedLog final : public UnifiedLog {
public:
    /// Hands one entry over; false when it did not get there.
    using Sender = std::function<bool(const std::vector<std::string>& fields)>;

    /// `leastOnTerminal`: standard error is where a person works, so lesser lines are dropped there. The
    /// journal takes every level.
    explicit JournalUnifiedLog(UnifiedLogLevel leastOnTerminal = UnifiedLogLevel::warning);

    /// Another journal and another descriptor in place of standard error.
    JournalUnifiedLog(UnifiedLogLevel leastOnTerminal, Sender journal, int terminal);

    void write(UnifiedLogLevel level, std::string_view subsystem, std::string_view category,
               std::string_view text) override;

private:
    UnifiedLogLevel leastOnTerminal_;
    Sender journal_;
    int terminal_;
};

/// Sends an entry to the system's journal; false when no journal runs.
bool sendToJournal(const std::vector<std::string>& fields);

} // namespace cindertop::linux_platform
