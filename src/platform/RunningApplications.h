#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace cindertop {

/// An application as it runs now.
struct RunningApplication {
    std::int32_t processIdentifier{}; ///< of its main process
    std::optional<std::string> bundleIdentifier;
    std::optional<std::string> bundlePath; ///< of the folder or file that makes it an application

    bool operator==(const RunningApplication&) const = default;
};

/// The user's running applications and how to end them. Main thread; answers come within a moment.
class RunningApplications {
public:
    virtual ~RunningApplications() = default;

    virtual std::optional<RunningApplication> findByBundleIdentifier(const std::string& identifier) const = 0;
    virtual std::optional<RunningApplication> findByBundlePath(const std::string& path) const = 0;

    /// Asks the application to end; it may still save or refuse. False: it was not asked, because it is gone,
    /// another user's, part of the system or of the session, or this program.
    virtual bool terminate(const RunningApplication& application) = 0;
    /// Ends every process of the application at once. False as above.
    virtual bool forceTerminate(const RunningApplication& application) = 0;
};

} // namespace cindertop
