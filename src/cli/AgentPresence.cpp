#include "cli/AgentPresence.h"

#include "platform/linux/AgentLock.h"
#include "support/UserFolders.h"

namespace cindertop::cli {

bool doesAgentRun() {
    return linux_platform::AgentLock::isHeld(UserFolders::ofUser().programData());
}

std::string whyNoAgent() {
    return std::string(doesAgentRun() ? unreachableAgent : "no agent runs; start \"cindertop\" first");
}

} // namespace cindertop::cli
