#include "agent/DisplayLoss.h"

#include "app/AppState.h"

#include <cstdlib>
#include <thread>

#include <unistd.h>

namespace cindertop::agent {

namespace {

AppState* stateToFinish = nullptr;

/// On a thread of its own, because exit() has already destroyed what was local to the main thread.
void finishState() {
    if (stateToFinish != nullptr) {
        std::thread([] { stateToFinish->finish(); }).join();
        // main() has not returned: its objects still use what exit() would destroy next.
        ::_exit(EXIT_FAILURE);
    }
}

} // namespace

DisplayLoss::DisplayLoss(AppState& state) {
    static const bool isRegistered = std::atexit(finishState) == 0;
    stateToFinish = isRegistered ? &state : nullptr;
}

DisplayLoss::~DisplayLoss() {
    stateToFinish = nullptr;
}

} // namespace cindertop::agent
