#include "persistence/DiagnosticEventCodec.h"

#include "support/DateText.h"

#include <nlohmann/json.hpp>

namespace cindertop {
namespace {

using nlohmann::json;

constexpr int indentation = 2;
constexpr std::string_view outerIndentation = "  ";

/// Goes through a text without building anything, only to refuse brackets too deep for a tree.
bool isShallow(std::string_view text) {
    constexpr int deepest = 16;
    int depth = 0;
    bool isInText = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (isInText) {
            at += c == '\\' ? 1U : 0U;
            isInText = c != '"';
        } else if (c == '"') {
            isInText = true;
        } else if (c == '[' || c == '{') {
            if (++depth > deepest) {
                return false;
            }
        } else if (c == ']' || c == '}') {
            --depth;
        }
    }
    return true;
}

DiagnosticLogEvent eventOf(const json& object) {
    const auto text = [&](const char* key) { return object.at(key).get<std::string>(); };
    return {.id = Uuid::parse(text("id")).value(),
            .timestamp = parseUtcText(text("timestamp")).value(),
            .level = fromRawValue<DiagnosticLogLevel>(text("level")).value(),
            .category = fromRawValue<DiagnosticLogCategory>(text("category")).value(),
            .message = text("message"),
            .metadata = object.at("metadata").get<DiagnosticMetadata>()};
}

} // namespace

json diagnosticEventJson(const DiagnosticLogEvent& event) {
    return {
        {"id", event.id.text()},          {"timestamp", utcText(event.timestamp)},
        {"level", rawValue(event.level)}, {"category", rawValue(event.category)},
        {"message", event.message},       {"metadata", event.metadata},
    };
}

std::string encodeDiagnosticEvent(const DiagnosticLogEvent& event) {
    std::string text(outerIndentation);
    // Within texts a line end is escaped: every one found here ends a line.
    for (const char c : diagnosticEventJson(event).dump(indentation)) {
        text += c;
        if (c == '\n') {
            text += outerIndentation;
        }
    }
    return text;
}

std::optional<std::deque<DiagnosticLogEvent>> decodeDiagnosticEvents(std::string_view text) {
    if (!isShallow(text)) {
        return std::nullopt;
    }
    const json array = json::parse(text, nullptr, /*allow_exceptions=*/false);
    if (!array.is_array()) {
        return std::nullopt;
    }
    std::deque<DiagnosticLogEvent> events;
    try {
        for (const json& object : array) {
            events.push_back(eventOf(object));
        }
    } catch (const json::exception&) { // a key that is missing or has another type
        return std::nullopt;
    } catch (const std::bad_optional_access&) { // a text that means nothing
        return std::nullopt;
    }
    return events;
}

} // namespace cindertop
