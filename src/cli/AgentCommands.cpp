#include "cli/AgentCommands.h"

#include "app/LegalTerms.h"
#include "cli/StoredCommands.h"
#include "persistence/AppSettingsStore.h"
#include "persistence/Preferences.h"
#include "report/Json.h"
#include "terminal/DisplayText.h"
#include "terminal/StyledText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>
#include <vector>

namespace cindertop::cli {

namespace {

CommandResult tell(AgentEnvironment& environment, const char* method) {
    return environment.agent ? environment.agent->call(method)
                             : CommandResult(std::unexpected(environment.whyNoAgent()));
}

AgentClient::Result<AgentClient::Settings> currentSettings(AgentEnvironment& environment) {
    if (environment.agent) {
        return environment.agent->settings();
    }
    AgentClient::Settings settings;
    const auto stored = storedSettings(environment.defaults, environment.standard);
    for (const auto& preference : preferences()) {
        settings.emplace_back(preference.name, preference.read(*stored));
    }
    return settings;
}

/// The answer is what the user should know of the change; it may be empty.
std::expected<std::string, std::string> change(AgentEnvironment& environment, const Preference& preference,
                                               std::string_view word) {
    const auto value = preferenceValue(preference, word);
    const auto before = storedSettings(environment.defaults, environment.standard);
    AppSettingsFields fields = *before;
    auto result = preference.write(fields, value);
    if (result && !environment.agent) { // which knows better what it offers now
        result = checkIsOffered(preference, value, fields);
    }
    if (!result) {
        return std::unexpected(std::string(preference.name) + " " + result.error());
    }
    const auto store = [&] {
        AppSettingsStore(environment.defaults, environment.standard).save(AppSettings(fields));
    };
    result = environment.agent ? environment.agent->set(std::string(preference.name), value)
                               : environment.whileAlone(store);
    if (!result) {
        return std::unexpected(result.error());
    }
    return remarkOn(preference, value, *before);
}

Json valueJson(const PreferenceValue& value) {
    return std::visit([](const auto& held) { return Json(held); }, value);
}

/// What the preference does, and what it may be.
std::vector<Line> explanation(const AgentEnvironment& environment, const Preference& preference,
                              const PageFormat& format) {
    constexpr std::string_view indent = "  ";
    const auto values =
        allowedValues(preference) + "; default " + text(preference.read(*environment.standard));
    std::vector<Line> lines;
    for (const auto& sentence : {std::string(preference.description), values}) {
        for (const auto& part : wrapped(sentence, format.columns - columnsOf(indent))) {
            lines.push_back({Span(std::string(indent) + part, Tone::faint)});
        }
    }
    return lines;
}

WriteResult writeList(const AgentEnvironment& environment, const AgentClient::Settings& settings) {
    const auto format = environment.terminal().format;
    int longest = 0;
    for (const auto& [name, value] : settings) {
        longest = std::max(longest, columnsOf(name));
    }
    std::vector<Line> lines;
    for (const auto& [name, value] : settings) {
        lines.push_back({Span(paddedRight(name, longest) + "  "),
                         Span(shown(text(value), format.charset), Tone::strong)});
        if (const auto* const preference = findPreference(name)) {
            append(lines, explanation(environment, *preference, format));
        }
    }
    return environment.output.write(encoded(lines, format));
}

WriteResult writeJson(const AgentEnvironment& environment, const AgentClient::Settings& settings) {
    auto object = Json::object();
    for (const auto& [name, value] : settings) {
        object[name] = valueJson(value);
    }
    const bool isForPeople = environment.terminal().isTerminal;
    return environment.output.write((isForPeople ? indentedText(object) : compactText(object)) + '\n');
}

/// In the order in which preferences are always listed; a bus has its own.
void sortAsListed(AgentClient::Settings& settings) {
    const auto position = [](const auto& entry) {
        const auto* const preference = findPreference(entry.first);
        return preference == nullptr ? preferences().size()
                                     : static_cast<std::size_t>(preference - preferences().data());
    };
    std::ranges::stable_sort(settings, {}, position);
}

} // namespace

CommandResult pauseAgent(AgentEnvironment& environment) {
    return tell(environment, "Pause");
}

CommandResult resumeAgent(AgentEnvironment& environment) {
    return tell(environment, "Resume");
}

CommandResult quitAgent(AgentEnvironment& environment) {
    return environment.agent ? environment.agent->quit()
                             : CommandResult(std::unexpected(environment.whyNoAgent()));
}

PageResult acceptTerms(AgentEnvironment& environment) {
    const bool wereAccepted = areTermsAccepted(environment.defaults);
    if (const auto shown = environment.output.write(legalTermsText); !shown) {
        return std::unexpected("the terms of use cannot be shown, so they are not accepted: " +
                               shown.error().message());
    }
    const auto accepted =
        environment.agent
            ? environment.agent->call("AcceptTerms")
            : environment.whileAlone([&environment] { storeTermsAccepted(environment.defaults); });
    if (!accepted) {
        return std::unexpected(accepted.error());
    }
    return environment.output.write(wereAccepted ? "You accepted these terms of use before.\n"
                                                 : "You have accepted these terms of use.\n");
}

PageResult settings(AgentEnvironment& environment, const Arguments& arguments) {
    const auto& operands = arguments.operands;
    const auto* const preference = operands.empty() ? nullptr : findPreference(operands[0]);
    if (!operands.empty() && preference == nullptr) {
        return std::unexpected("there is no preference \"" + shown(operands[0], Charset::unicode) +
                               "\"; \"cindertopctl settings\" lists them");
    }
    if (operands.size() > 1) {
        // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker): it was found when there are operands
        const auto changed = change(environment, *preference, operands[1]);
        if (!changed) {
            return std::unexpected(changed.error());
        }
        return changed->empty() ? WriteResult() : environment.output.write(*changed + '\n');
    }
    auto list = currentSettings(environment);
    if (!list) {
        return std::unexpected(list.error());
    }
    if (preference != nullptr) {
        std::erase_if(*list, [&](const auto& entry) { return entry.first != preference->name; });
    }
    sortAsListed(*list);
    if (arguments.format == Format::json) {
        return writeJson(environment, *list);
    }
    const bool isOne = preference != nullptr && list->size() == 1;
    return isOne ? environment.output.write(text(list->front().second) + '\n')
                 : writeList(environment, *list);
}

} // namespace cindertop::cli
