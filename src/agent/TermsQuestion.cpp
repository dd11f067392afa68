#include "agent/TermsQuestion.h"

#include "app/LegalTerms.h"

#include <array>
#include <cerrno>
#include <string>
#include <string_view>

#include <poll.h>
#include <unistd.h>

namespace cindertop::agent {

namespace {

constexpr std::string_view question = "Do you accept these terms of use? [y/N] ";

/// The next bytes of the input; none at its end and when there was an interruption.
std::optional<std::string> nextBytes(int input, int interruption) {
    std::array<pollfd, 2> waiting{pollfd{.fd = interruption, .events = POLLIN, .revents = 0},
                                  pollfd{.fd = input, .events = POLLIN, .revents = 0}};
    while (::poll(waiting.data(), waiting.size(), -1) < 0) {
        if (errno != EINTR) {
            return std::nullopt;
        }
    }
    if (waiting[0].revents != 0) {
        return std::nullopt;
    }
    std::array<char, 256> buffer{};
    const auto count = ::read(input, buffer.data(), buffer.size());
    return count > 0 ? std::optional(std::string(buffer.data(), static_cast<std::size_t>(count)))
                     : std::nullopt;
}

} // namespace

std::optional<bool> askForTerms(const cli::Output& output, int input, int interruption) {
    [[maybe_unused]] const auto ignored = output.write(std::string(legalTermsText) + std::string(question));
    std::string answer;
    while (!answer.contains('\n')) {
        const auto more = nextBytes(input, interruption);
        if (!more) {
            return std::nullopt;
        }
        answer += *more;
    }
    answer.resize(answer.find('\n'));
    return answer == "y" || answer == "Y" || answer == "yes" || answer == "Yes" || answer == "YES";
}

std::optional<PropertyValue> TermsAcceptedForRun::value(std::string_view key) const {
    return key == legalTermsAcceptedKey ? PropertyValue(true) : stored_.value(key);
}

void TermsAcceptedForRun::registerDefaults(const Registration& defaults) {
    stored_.registerDefaults(defaults);
}

void TermsAcceptedForRun::apply(std::span<const UserDefaultsChange> changes) {
    stored_.apply(changes);
}

} // namespace cindertop::agent
