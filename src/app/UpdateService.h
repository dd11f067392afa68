#pragma once

namespace cindertop {

/// Looks for new releases. Main thread.
class UpdateService {
public:
    virtual ~UpdateService() = default;
    /// Whether this copy of the program knows where releases are announced and whose signature to trust.
    virtual bool isConfigured() const = 0;
    /// Looks now and tells the user the result.
    virtual void checkForUpdates() = 0;
};

} // namespace cindertop
