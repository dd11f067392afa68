#include "persistence/DiagnosticLogEvent.h"

#include "support/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace cindertop {

namespace {

constexpr std::size_t longestMessage = 420;
constexpr std::size_t longestValue = 160;
constexpr std::array<std::string_view, 5> sensitiveWords{"device", "token", "secret", "password", "key"};

bool isSensitive(std::string_view key) {
    const std::string lower = lowerCased(key);
    return std::ranges::any_of(sensitiveWords, [&](std::string_view word) { return lower.contains(word); });
}

void appendQuoted(std::string& text, std::string_view value) {
    text += '"';
    for (const char c : value) {
        switch (c) {
        case '"':
            text += "\\\"";
            break;
        case '\\':
            text += "\\\\";
            break;
        case '\n':
            text += "\\n";
            break;
        case '\r':
            text += "\\r";
            break;
        default:
            text += c;
        }
    }
    text += '"';
}

} // namespace

std::string truncatedMessage(std::string_view message) {
    return truncated(repairedUtf8(message), longestMessage);
}

DiagnosticMetadata sanitizedMetadata(const DiagnosticMetadata& metadata) {
    DiagnosticMetadata kept;
    for (const auto& [key, value] : metadata) {
        if (!isSensitive(key)) {
            kept.insert_or_assign(repairedUtf8(key), truncated(repairedUtf8(value), longestValue));
        }
    }
    return kept;
}

std::string metadataText(const DiagnosticMetadata& metadata) {
    std::string text = "[";
    for (const auto& [key, value] : metadata) {
        text += text.size() > 1 ? ", " : "";
        appendQuoted(text, key);
        text += ": ";
        appendQuoted(text, value);
    }
    return text + ']';
}

} // namespace cindertop
