#pragma once

#include "agent/Arguments.h"

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::agent {

/// The arguments with which the program restarts: the former ones, and the window that it opens.
std::vector<std::string> wordsToOpen(Opening opening, std::span<const std::string> words);

/// Restarts the program in place after an upgrade whose windows do not fit the running build. Main thread.
class Restart {
public:
    /// What is known when the library of the windows turns out to be of another build.
    struct Facts {
        std::string libraryBuild;
        bool isProgramReplaced = false; ///< the program's file is not the one that runs any more
        std::string triedFor;           ///< the library for which this process was restarted; may be empty
    };

    /// Whether the file that would start may fit the library: without an upgrade of the program it cannot,
    /// and what did not help once will not help again.
    static bool isOfUse(const Facts& facts);

    /// `words`: those after the program's name. To be made before the program's file can have been replaced.
    explicit Restart(std::vector<std::string> words);

    /// True: the program is to end, and then `carryOut` be called.
    bool prepare(Opening opening, const std::string& libraryBuild);

    bool isPrepared() const { return opening_.has_value(); }

    /// Returns only when the program cannot be started; the error is one sentence.
    std::string carryOut() const;

private:
    bool isProgramReplaced() const;

    std::filesystem::path program_; ///< empty where it is not known
    std::vector<std::string> words_;
    std::string triedFor_;
    std::string libraryBuild_;
    std::optional<Opening> opening_;
};

} // namespace cindertop::agent
