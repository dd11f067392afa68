#include "agent/Arguments.h"

#include "cli/DisplayText.h"

#include <charconv>
#include <cmath>

namespace cindertop::agent {

namespace {

constexpr double slowestSpeed = 0.001;
constexpr double fastestSpeed = 10'000;

std::string quoted(std::string_view word) {
    return '"' + cli::shown(word, cli::Charset::unicode) + '"';
}

std::expected<double, std::string> speedOf(std::string_view word) {
    double speed = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), speed);
    const bool isNumber = error == std::errc() && end == word.data() + word.size() && std::isfinite(speed);
    if (!isNumber || speed < slowestSpeed || speed > fastestSpeed) {
        return std::unexpected("--speed needs a number from 0.001 to 10000, not " + quoted(word));
    }
    return speed;
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
        return arguments_;
    }

private:
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
        if (word == "--accept-terms") {
            arguments_.acceptsTerms = true;
            return {};
        }
        if (word == "--scenario" || word == "--speed") {
            if (words_.empty()) {
                return std::unexpected(std::string(word) + " needs a value");
            }
            return word == "--scenario" ? takeScenario(next()) : takeSpeed(next());
        }
        return std::unexpected("unknown argument " + quoted(word));
    }

    std::expected<void, std::string> takeScenario(std::string_view file) {
        arguments_.scenario = file;
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

} // namespace

std::expected<Arguments, std::string> parseArguments(std::span<const std::string_view> words) {
    return ArgumentReader(words).read();
}

std::string_view helpText() {
    return R"(cindertop watches how hot this machine runs, keeps a history, and advises.

usage: cindertop [--headless] [--accept-terms]
       cindertop --scenario FILE [--speed N]

It runs until it is told to end (Ctrl-C, SIGTERM). On a terminal it prints a
line for each look at the machine; elsewhere it is quiet. "cindertopctl" talks
to it. One runs for each user: a second start brings the first to the front.

Options:
  --headless       No windows.
  --accept-terms   Accept the terms of use for this run only. To accept them
                   for good, answer the question that is asked on a terminal,
                   or run "cindertopctl accept-terms".
  --scenario FILE  Play a scenario instead of watching the machine. Nothing is
                   kept, and nothing of the machine is touched.
  --speed N        Play it N times as fast.
  -h, --help       Show this help.
  -V, --version    Show the version.

Exit status:
  0  Done, or another one runs already.
  1  The system refused something needed.
  2  The command line or the scenario was not understood.
)";
}

} // namespace cindertop::agent
