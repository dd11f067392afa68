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

/// The text under a key; null when there is none.
const std::string* textUnder(const json& object, const char* key) {
    const auto found = object.find(key);
    return found == object.end() ? nullptr : found->get_ptr<const std::string*>();
}

std::optional<DiagnosticMetadata> decodeMetadata(const json& object) {
    const auto found = object.find("metadata");
    if (found == object.end() || !found->is_object()) {
        return std::nullopt;
    }
    DiagnosticMetadata metadata;
    for (const auto& [key, value] : found->items()) {
        if (!value.is_string()) {
            return std::nullopt;
        }
        metadata.emplace(key, value.get_ref<const std::string&>());
    }
    return metadata;
}

std::optional<DiagnosticLogEvent> decodeEvent(const json& object) {
    if (!object.is_object()) {
        return std::nullopt;
    }
    const auto read = [&](const char* key, const auto& parse) {
        const std::string* const text = textUnder(object, key);
        return text == nullptr ? decltype(parse(*text)){} : parse(*text);
    };
    const auto id = read("id", Uuid::parse);
    const auto timestamp = read("timestamp", parseUtcText);
    const auto level =
        read("level", [](const std::string& raw) { return fromRawValue<DiagnosticLogLevel>(raw); });
    const auto category =
        read("category", [](const std::string& raw) { return fromRawValue<DiagnosticLogCategory>(raw); });
    const std::string* const message = textUnder(object, "message");
    auto metadata = decodeMetadata(object);
    if (!id || !timestamp || !level || !category || message == nullptr || !metadata) {
        return std::nullopt;
    }
    return DiagnosticLogEvent{*id, *timestamp, *level, *category, *message, *std::move(metadata)};
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
    for (const json& object : array) {
        auto event = decodeEvent(object);
        if (!event) {
            return std::nullopt;
        }
        events.push_back(*std::move(event));
    }
    return events;
}

} // namespace cindertop
