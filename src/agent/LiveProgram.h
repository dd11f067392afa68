#pragma once

#include "agent/SystemSleep.h"
#include "app/AppStateEnvironment.h"
#include "app/EngineThread.h"
#include "app/EventLoopTimers.h"
#include "platform/linux/JournalUnifiedLog.h"
#include "platform/linux/LinuxLoginItem.h"
#include "platform/linux/LinuxMachine.h"
#include "platform/linux/LinuxRunningApplications.h"
#include "platform/linux/PropertyListUserDefaults.h"
#include "support/FileSystem.h"
#include "support/UserFolders.h"

#include <memory>

namespace cindertop::agent {

/// Everything that the program runs on when it watches the machine that it runs on. Needs the event loop.
class LiveProgram {
public:
    /// `roots` are where the machine's files stand: elsewhere for another machine's.
    LiveProgram(const UserFolders& folders, UserDefaults& defaults,
                UserNotificationCenter& notificationCenter, const linux_platform::Roots& roots = {});
    LiveProgram(const LiveProgram&) = delete;
    LiveProgram& operator=(const LiveProgram&) = delete;

    /// What an AppState is made from; everything in it outlives the AppState only if this does.
    AppStateEnvironment environment();

private:
    UserFolders folders_;
    UserDefaults& defaults_;
    UserNotificationCenter& notificationCenter_;
    PosixFileSystem files_;
    std::shared_ptr<linux_platform::JournalUnifiedLog> log_;
    linux_platform::LinuxMachine machine_;
    linux_platform::LinuxSystemValues systemValues_; ///< the main thread's own
    linux_platform::LinuxLoginItem loginItem_;
    linux_platform::LinuxRunningApplications runningApplications_;
    EventLoopTimers timers_;
    SystemSleep sleep_{timers_};
    EngineThread engineThread_; ///< last: it ends before what its work uses
};

} // namespace cindertop::agent
