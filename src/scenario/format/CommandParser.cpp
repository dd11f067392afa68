#include "scenario/format/ScenarioParser.h"
#include "scenario/format/ScenarioValues.h"

#include <algorithm>
#include <array>
#include <utility>

namespace cindertop::simulated {

namespace {

struct CommandKind {
    std::string_view name;
    ScenarioCommand::Action (*parse)(const ScenarioNode& node);
};

/// A command that is nothing but its name.
template <typename Action>
ScenarioCommand::Action parsePlain(const ScenarioNode& node) {
    const ScenarioObject object(node, {"at", "command"});
    return Action{};
}

ScenarioCommand::Action parseSet(const ScenarioNode& node) {
    const ScenarioObject object(node, {"at", "command", "setting", "value"});
    const auto value = object.at("value");
    return SetCommand{
        {.name = object.at("setting").text(), .value = value.preferenceValue(), .path = value.path()}};
}

ScenarioCommand::Action parseRefresh(const ScenarioNode& node) {
    const ScenarioObject object(node, {"at", "command", "pinned"});
    RefreshOffendersCommand command;
    object.readInto(command.pinned, "pinned", &ScenarioNode::textOrNull);
    return command;
}

constexpr std::array commandKinds{
    CommandKind{"pause", parsePlain<PauseCommand>},
    CommandKind{"resume", parsePlain<ResumeCommand>},
    CommandKind{"acceptTerms", parsePlain<AcceptTermsCommand>},
    CommandKind{"set", parseSet},
    CommandKind{"resetSettings", parsePlain<ResetSettingsCommand>},
    CommandKind{"refreshOffenders", parseRefresh},
};

ScenarioCommand parseCommand(const ScenarioNode& node, Instant start) {
    const auto name = node.member("command");
    const auto* const kind = std::ranges::find(commandKinds, name.text(), &CommandKind::name);
    if (kind == commandKinds.end()) {
        name.fail("is not a known command");
    }
    auto action = kind->parse(node);
    const auto at = node.member("at");
    ScenarioCommand command{.at = at.secondsFromZero(), .action = std::move(action)};
    if (!isInRange(start, command.at)) {
        at.fail("is beyond the year 2261");
    }
    return command;
}

} // namespace

std::vector<ScenarioCommand> parseCommands(const ScenarioNode& commands, Instant start) {
    std::vector<ScenarioCommand> parsed;
    parsed.reserve(commands.elements().size());
    for (std::size_t index = 0; index < commands.elements().size(); ++index) {
        const ScenarioNode node(commands.elements()[index], commands, index);
        auto command = parseCommand(node, start);
        if (!parsed.empty() && command.at < parsed.back().at) {
            node.fail("must not be earlier than the command before");
        }
        parsed.push_back(std::move(command));
    }
    return parsed;
}

} // namespace cindertop::simulated
