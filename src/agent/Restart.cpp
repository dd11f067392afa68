#include "agent/Restart.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace cindertop::agent {

namespace {

constexpr auto runningProgram = "/proc/self/exe";

/// Tells the program that starts for which library it does.
constexpr auto triedVariable = "CINDERTOP_RESTARTED_FOR";

/// Programs that this one starts need not know.
std::string takeVariable() {
    const char* const value =
        std::getenv(triedVariable); // NOLINT(concurrency-mt-unsafe): no other thread yet
    std::string taken = value != nullptr ? value : "";
    ::unsetenv(triedVariable); // NOLINT(concurrency-mt-unsafe): as above
    return taken;
}

} // namespace

std::vector<std::string> wordsToOpen(Opening opening, std::span<const std::string> words) {
    std::vector<std::string> result;
    bool isValue = false;
    for (const auto& word : words) {
        const bool isOpen = word == "--open";
        if (!std::exchange(isValue, isOpen) && !isOpen && word != "--background") {
            result.push_back(word);
        }
    }
    result.emplace_back("--open");
    result.emplace_back(rawValue(opening));
    return result;
}

bool Restart::isOfUse(const Facts& facts) {
    return facts.isProgramReplaced && facts.libraryBuild != facts.triedFor;
}

Restart::Restart(std::vector<std::string> words) : words_(std::move(words)), triedFor_(takeVariable()) {
    std::error_code ignored;
    program_ = std::filesystem::read_symlink(runningProgram, ignored);
}

bool Restart::prepare(Opening opening, const std::string& libraryBuild) {
    if (!isOfUse({.libraryBuild = libraryBuild,
                  .isProgramReplaced = isProgramReplaced(),
                  .triedFor = triedFor_})) {
        return false;
    }
    opening_ = opening;
    libraryBuild_ = libraryBuild;
    return true;
}

bool Restart::isProgramReplaced() const {
    struct stat running{};
    struct stat installed{};
    return ::stat(runningProgram, &running) == 0 && ::stat(program_.c_str(), &installed) == 0 &&
           ::access(program_.c_str(), X_OK) == 0 &&
           (running.st_dev != installed.st_dev || running.st_ino != installed.st_ino);
}

std::string Restart::carryOut() const {
    std::vector<std::string> words{program_.string()};
    const auto further = wordsToOpen(opening_.value_or(Opening::none), words_);
    words.insert(words.end(), further.begin(), further.end());
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (auto& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    // NOLINTNEXTLINE(concurrency-mt-unsafe): there is no other thread any more
    ::setenv(triedVariable, libraryBuild_.c_str(), 1);
    ::execv(program_.c_str(), arguments.data());
    return "cannot start anew: " + std::error_code(errno, std::generic_category()).message();
}

} // namespace cindertop::agent
