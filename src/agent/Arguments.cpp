#include "agent/Arguments.h"

#include "cli/DisplayText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace cindertop::agent {

namespace {

constexpr double slowestSpeed = 0.001;
constexpr double fastestSpeed = 10'000;

std::string quoted(std::string_view word) {
    return '"' + cli::shown(word, cli::Charset::unicode) + '"';
}

std::optional<double> numberOf(std::string_view word) {
    double number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    const bool isNumber = error == std::errc() && end == word.data() + word.size() && std::isfinite(number);
    return isNumber ? std::optional(number) : std::nullopt;
}

std::expected<double, std::string> speedOf(std::string_view word) {
    const auto speed = numberOf(word);
    if (!speed || *speed < slowestSpeed || *speed > fastestSpeed) {
        return std::unexpected("--speed needs a number from 0.001 to 10000, not " + quoted(word));
    }
    return *speed;
}

/// Takes the words one by one.
class ArgumentReader {
public:
    explicit ArgumentReader(std::span<const std::string_view> words) : words_(words) {}

    std::expected<Arguments, std::string> read() {
        while (!words_.empty()) {
            const auto word = next();
            if (const auto action = information(word)) {
                return Arguments{.action = *action};
            }
            if (auto taken = take(word); !taken) {
                return std::unexpected(taken.error());
            }
        }
        if (hasSpeed_ && !arguments_.scenario) {
            return std::unexpected("--speed needs a --scenario");
        }
        if (arguments_.pauseAt && !arguments_.scenario) {
            return std::unexpected("--pause-at needs a --scenario");
        }
        if (arguments_.isBackground && arguments_.opening != Opening::none) {
            return std::unexpected("--background opens no window, and --open does");
        }
        if (arguments_.isHeadless && arguments_.opening != Opening::none) {
            return std::unexpected("--open needs windows, and --headless has none");
        }
        return arguments_;
    }

private:
    struct ValueOption {
        std::string_view name;
        std::expected<void, std::string> (ArgumentReader::*take)(std::string_view);
    };

    static const std::array<ValueOption, 5> valueOptions;

    static std::optional<Action> information(std::string_view word) {
        if (word == "--help" || word == "-h") {
            return Action::help;
        }
        if (word == "--version" || word == "-V") {
            return Action::version;
        }
        return std::nullopt;
    }

    std::string_view next() {
        const auto word = words_.front();
        words_ = words_.subspan(1);
        return word;
    }

    std::expected<void, std::string> take(std::string_view word) {
        if (word == "--headless") {
            arguments_.isHeadless = true;
            return {};
        }
        if (word == "--background") {
            arguments_.isBackground = true;
            return {};
        }
        if (word == "--accept-terms") {
            arguments_.acceptsTerms = true;
            return {};
        }
        const auto* const option = std::ranges::find(valueOptions, word, &ValueOption::name);
        if (option == valueOptions.end()) {
            return std::unexpected("unknown argument " + quoted(word));
        }
        if (words_.empty()) {
            return std::unexpected(std::string(word) + " needs a value");
        }
        return (this->*option->take)(next());
    }

    std::expected<void, std::string> takeScenario(std::string_view file) {
        arguments_.scenario = file;
        return {};
    }

    std::expected<void, std::string> takeOpening(std::string_view word) {
        static constexpr std::array windows{std::pair{"popover", Opening::popover},
                                            std::pair{"settings", Opening::settings},
                                            std::pair{"onboarding", Opening::onboarding}};
        const auto* const window =
            std::ranges::find(windows, word, [](const auto& pair) { return pair.first; });
        if (window == windows.end()) {
            return std::unexpected("--open needs popover, settings or onboarding, not " + quoted(word));
        }
        arguments_.opening = window->second;
        return {};
    }

    std::expected<void, std::string> takeAppearance(std::string_view word) {
        if (word != "dark" && word != "light") {
            return std::unexpected("--appearance needs dark or light, not " + quoted(word));
        }
        arguments_.isDark = word == "dark";
        return {};
    }

    std::expected<void, std::string> takePause(std::string_view word) {
        const auto seconds = numberOf(word);
        if (!seconds || *seconds < 0) {
            return std::unexpected("--pause-at needs seconds, not " + quoted(word));
        }
        arguments_.pauseAt = seconds;
        return {};
    }

    std::expected<void, std::string> takeSpeed(std::string_view word) {
        const auto speed = speedOf(word);
        if (!speed) {
            return std::unexpected(speed.error());
        }
        arguments_.speed = *speed;
        hasSpeed_ = true;
        return {};
    }

    std::span<const std::string_view> words_;
    Arguments arguments_;
    bool hasSpeed_ = false;
};

constexpr std::array<ArgumentReader::ValueOption, 5> ArgumentReader::valueOptions{
    ValueOption{"--appearance", &ArgumentReader::takeAppearance},
    ValueOption{"--open", &ArgumentReader::takeOpening},
    ValueOption{"--pause-at", &ArgumentReader::takePause},
    ValueOption{"--scenario", &ArgumentReader::takeScenario},
    ValueOption{"--speed", &ArgumentReader::takeSpeed},
};

} // namespace

std::expected<Arguments, std::string> parseArguments(std::span<const std::string_view> words) {
    return ArgumentReader(words).read();
}

std::string_view helpText() {
    return R"(cindertop watches how hot this machine runs, keeps a history, and advises.

usage: cindertop [--open WINDOW] [--appearance dark|light] [--accept-terms]
       cindertop --headless [--accept-terms]
       cindertop --scenario FILE [--speed N] [--pause-at S] [--headless] ...

It runs until it is told to end (Ctrl-C, SIGTERM). On a terminal it prints a
line for each look at the machine; elsewhere it is quiet. "cindertopctl" talks
to it. One runs for each user: a second start brings the first to the front.

Options:
  --headless       No windows; so it is by itself where there is no display.
  --background     Open no window by itself; so it starts at login.
  --open WINDOW    Open popover, settings or onboarding at once.
  --appearance A   Look dark or light, whatever the desktop prefers.
  --accept-terms   Accept the terms of use for this run only. To accept them
                   for good, answer the question that is asked on a terminal,
                   or run "cindertopctl accept-terms".
  --scenario FILE  Play a scenario instead of watching the machine. Nothing is
                   kept, and nothing of the machine is touched.
  --speed N        Play it N times as fast.
  --pause-at S     Let its time stand still after S seconds of it.
  -h, --help       Show this help.
  -V, --version    Show the version.

Exit status:
  0  Done, or another one runs already.
  1  The system refused something needed.
  2  The command line or the scenario was not understood.
)";
}

} // namespace cindertop::agent
