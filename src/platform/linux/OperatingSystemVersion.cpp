#include "platform/linux/OperatingSystemVersion.h"

#include "platform/linux/FileReading.h"
#include "support/Text.h"

namespace cindertop::linux_platform {

namespace {

constexpr std::size_t osReleaseLimit = 16UZ * 1024;

/// The word of a shell assignment as a shell would take it.
std::string unquoted(std::string_view word) {
    std::string text;
    char quote = '\0';
    for (std::size_t at = 0; at < word.size(); ++at) {
        const char c = word[at];
        if (c == quote) {
            quote = '\0';
        } else if (quote == '\0' && (c == '"' || c == '\'')) {
            quote = c;
        } else if (c == '\\' && quote != '\'' && at + 1 < word.size()) {
            text += word[++at];
        } else {
            text += c;
        }
    }
    return text;
}

} // namespace

std::optional<std::string> osReleaseValue(std::string_view text, std::string_view key) {
    while (!text.empty()) {
        const auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(line.size() < text.size() ? line.size() + 1 : line.size());
        const auto assignment = trimmingWhitespace(line);
        const auto equals = assignment.find('=');
        if (equals == std::string_view::npos || assignment.substr(0, equals) != key) {
            continue;
        }
        auto value = repairedUtf8(unquoted(assignment.substr(equals + 1)));
        return value.empty() ? std::nullopt : std::optional(std::move(value));
    }
    return std::nullopt;
}

std::string operatingSystemVersion(const Roots& roots, const std::filesystem::path& osRelease,
                                   const std::filesystem::path& fallback) {
    auto release = readTextFile(osRelease, osReleaseLimit);
    if (!release) {
        release = readTextFile(fallback, osReleaseLimit);
    }
    const auto kernel = readAttribute(roots.proc / "sys/kernel/osrelease");
    const auto linuxText = kernel ? "Linux " + repairedUtf8(*kernel) : std::string("Linux");
    const auto distribution = release ? osReleaseValue(*release, "PRETTY_NAME") : std::nullopt;
    return distribution ? *distribution + ", " + linuxText : linuxText;
}

} // namespace cindertop::linux_platform
