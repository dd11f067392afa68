#include "cli/AgentPresence.h"

#include "platform/linux/AgentLock.h"
#include "support/UserFolders.h"

#include <chrono>
#include <thread>

namespace cindertop::cli {

namespace {

using namespace std::chrono_literals;

constexpr auto longestEnd = 15s;
constexpr auto betweenLooks = 20ms;

} // namespace

bool doesAgentRun() {
    return linux_platform::AgentLock::isHeld(UserFolders::ofUser().programData());
}

std::string whyNoAgent() {
    return std::string(doesAgentRun() ? unreachableAgent : "no agent runs; start \"cindertop\" first");
}

bool waitForAgentsEnd() {
    const auto end = std::chrono::steady_clock::now() + longestEnd;
    while (doesAgentRun()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(betweenLooks);
    }
    return true;
}

} // namespace cindertop::cli
