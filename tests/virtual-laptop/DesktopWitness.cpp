// Stands in for the parts of a desktop to which the agent speaks: the notification server of the session bus,
// and the journal. Prints a line for each message: "notification TITLE: BODY" or "journal PRIORITY MESSAGE".
// usage: desktop-witness JOURNAL_SOCKET

#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <span>
#include <string>
#include <string_view>

#include <sys/socket.h>
#include <sys/un.h>

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* objectPath = "/org/freedesktop/Notifications";
constexpr std::size_t longestEntry = 65'536;

void say(std::string_view kind, std::string_view first, std::string_view separator, std::string_view second) {
    std::cout << kind << ' ' << first << separator << second << '\n' << std::flush;
}

int takeNotification(sd_bus_message* call) {
    static std::uint32_t number = 0;
    const char* application = nullptr;
    const char* icon = nullptr;
    const char* title = nullptr;
    const char* body = nullptr;
    std::uint32_t replaced = 0;
    if (const int code = sd_bus_message_read(call, "susss", &application, &replaced, &icon, &title, &body);
        code < 0) {
        return code;
    }
    say("notification", title, ": ", body);
    return sd_bus_reply_method_return(call, "u", replaced != 0 ? replaced : ++number);
}

int takeCall(sd_bus_message* call, void* /*unused*/, sd_bus_error* /*unused*/) {
    if (sd_bus_message_is_method_call(call, service, "Notify") > 0) {
        return takeNotification(call);
    }
    if (sd_bus_message_is_method_call(call, service, "GetCapabilities") > 0) {
        return sd_bus_reply_method_return(call, "as", 1, "body");
    }
    return 0;
}

std::string_view fieldOf(std::string_view entry, std::string_view name) {
    while (!entry.empty()) {
        const auto line = entry.substr(0, entry.find('\n'));
        if (line.starts_with(name)) {
            return line.substr(name.size());
        }
        entry.remove_prefix(std::min(line.size() + 1, entry.size()));
    }
    return {};
}

int takeEntry(sd_event_source* /*unused*/, int socket, std::uint32_t /*unused*/, void* /*unused*/) {
    std::array<char, longestEntry> buffer{};
    const auto size = ::recv(socket, buffer.data(), buffer.size(), 0);
    if (size > 0) {
        const std::string_view entry(buffer.data(), static_cast<std::size_t>(size));
        say("journal", fieldOf(entry, "PRIORITY="), " ", fieldOf(entry, "MESSAGE="));
    }
    return 0;
}

/// Negative when it cannot be had.
int listenAsJournal(std::string_view path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return -1;
    }
    std::ranges::copy(path, address.sun_path);
    const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    return ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ? socket : -1;
}

/// Runs until the bus ends.
int witness(std::string_view journalPath) {
    const int journal = listenAsJournal(journalPath);
    sd_event* loop = nullptr;
    sd_bus* bus = nullptr;
    const bool isReady = journal >= 0 && sd_event_default(&loop) >= 0 &&
                         sd_event_add_io(loop, nullptr, journal, EPOLLIN, takeEntry, nullptr) >= 0 &&
                         sd_bus_open_user(&bus) >= 0 && sd_bus_attach_event(bus, loop, 0) >= 0 &&
                         sd_bus_add_object(bus, nullptr, objectPath, takeCall, nullptr) >= 0 &&
                         sd_bus_request_name(bus, service, 0) >= 0;
    if (!isReady) {
        std::cerr << "desktop-witness: the journal's socket or the notification service cannot be had\n";
        return 1;
    }
    return sd_event_loop(loop) < 0 ? 1 : 0;
}

} // namespace

int main(int count, char** words) {
    const std::span arguments(words, static_cast<std::size_t>(count));
    if (arguments.size() != 2) {
        std::cerr << "usage: desktop-witness JOURNAL_SOCKET\n";
        return 2;
    }
    return witness(arguments[1]);
}
