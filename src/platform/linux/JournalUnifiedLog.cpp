#include "platform/linux/JournalUnifiedLog.h"

#include "support/Text.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <syslog.h>

// The journal would store the place in this file as every line's origin.
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <systemd/sd-journal.h>

#include <poll.h>
#include <sys/uio.h>
#include <unistd.h>

namespace cindertop::linux_platform {

namespace {

int priorityOf(UnifiedLogLevel level) {
    switch (level) {
    case UnifiedLogLevel::debug:
        return LOG_DEBUG;
    case UnifiedLogLevel::info:
        return LOG_INFO;
    case UnifiedLogLevel::warning:
        return LOG_WARNING;
    case UnifiedLogLevel::error:
        return LOG_ERR;
    }
    return LOG_INFO;
}

/// Valid UTF-8 without control characters, C0, DEL and C1 alike.
std::string oneLine(std::string_view text) {
    const std::string valid = repairedUtf8(text);
    std::string line;
    line.reserve(valid.size());
    for (std::size_t index = 0; index < valid.size(); ++index) {
        const auto byte = static_cast<unsigned char>(valid[index]);
        const bool isC1 = byte == 0xC2 && static_cast<unsigned char>(valid[index + 1]) < 0xA0;
        if (isC1) {
            ++index;
        }
        line += isC1 || byte < 0x20 || byte == 0x7F ? ' ' : valid[index];
    }
    return line;
}

/// A terminal that was stopped, or a pipe that nobody reads, must not stop the program, too.
bool hasRoom(int descriptor) {
    pollfd place{.fd = descriptor, .events = POLLOUT, .revents = 0};
    return ::poll(&place, 1, 0) > 0;
}

void writeWhole(int descriptor, std::string_view bytes) {
    while (!bytes.empty() && hasRoom(descriptor)) {
        const auto count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

} // namespace

std::vector<std::string> journalFields(UnifiedLogLevel level, std::string_view subsystem,
                                       std::string_view category, std::string_view text) {
    return {
        "MESSAGE=" + oneLine(text),      "PRIORITY=" + std::to_string(priorityOf(level)),
        "SYSLOG_IDENTIFIER=cindertop",   "SUBSYSTEM=" + oneLine(subsystem),
        "CATEGORY=" + oneLine(category),
    };
}

std::string terminalLine(std::string_view category, std::string_view text) {
    return "cindertop: [" + oneLine(category) + "] " + oneLine(text) + "\n";
}

bool sendToJournal(const std::vector<std::string>& fields) {
    // Without a journal the library takes an entry, drops it and reports success.
    if (::access("/run/systemd/journal/socket", F_OK) != 0) {
        return false;
    }
    std::vector<iovec> pieces(fields.size());
    std::ranges::transform(fields, pieces.begin(), [](const std::string& field) {
        return iovec{.iov_base = const_cast<char*>(field.data()),
                     .iov_len = field.size()}; // never written to
    });
    return sd_journal_sendv(pieces.data(), static_cast<int>(pieces.size())) >= 0;
}

JournalUnifiedLog::JournalUnifiedLog(UnifiedLogLevel leastOnTerminal)
    : JournalUnifiedLog(leastOnTerminal, sendToJournal, STDERR_FILENO) {}

JournalUnifiedLog::JournalUnifiedLog(UnifiedLogLevel leastOnTerminal, Sender journal, int terminal)
    : leastOnTerminal_(leastOnTerminal), journal_(std::move(journal)), terminal_(terminal) {}

void JournalUnifiedLog::write(UnifiedLogLevel level, std::string_view subsystem, std::string_view category,
                              std::string_view text) {
    if (journal_(journalFields(level, subsystem, category, text)) || level < leastOnTerminal_) {
        return;
    }
    writeWhole(terminal_, terminalLine(category, text));
}

} // namespace cindertop::linux_platform
