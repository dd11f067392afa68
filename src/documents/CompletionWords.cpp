#include "documents/CompletionWords.h"

namespace cindertop::documents {

std::string summaryOf(std::string_view text) {
    auto end = text.find(". ");
    if (end == std::string_view::npos && text.ends_with('.')) {
        end = text.size() - 1;
    }
    return std::string(text.substr(0, end));
}

std::string inSingleQuotes(std::string_view text) {
    std::string quoted = "'";
    for (const char character : text) {
        quoted += character == '\'' ? R"('\'')" : std::string(1, character);
    }
    return quoted + '\'';
}

std::vector<std::string_view> preferenceNames() {
    std::vector<std::string_view> names;
    names.reserve(preferences().size());
    for (const auto& preference : preferences()) {
        names.push_back(preference.name);
    }
    return names;
}

std::vector<std::string_view> valuesOf(const Preference& preference) {
    if (allowedValues(preference) == "true or false") {
        return {"true", "false"};
    }
    return preference.choices();
}

} // namespace cindertop::documents
