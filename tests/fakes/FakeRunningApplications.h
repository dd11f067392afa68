#pragma once

#include "platform/RunningApplications.h"

#include <algorithm>
#include <string>
#include <vector>

namespace cindertop::fakes {

/// Lists what the test says, and notes who was asked to end: "terminate 12".
class FakeRunningApplications final : public RunningApplications {
public:
    std::vector<RunningApplication> running;
    bool accepts = true;
    std::vector<std::string> requests;

    std::optional<RunningApplication> findByBundleIdentifier(const std::string& identifier) const override {
        return find(&RunningApplication::bundleIdentifier, identifier);
    }

    std::optional<RunningApplication> findByBundlePath(const std::string& path) const override {
        return find(&RunningApplication::bundlePath, path);
    }

    bool terminate(const RunningApplication& application) override { return note("terminate", application); }

    bool forceTerminate(const RunningApplication& application) override { return note("force", application); }

private:
    std::optional<RunningApplication> find(std::optional<std::string> RunningApplication::* field,
                                           const std::string& value) const {
        const auto found = std::ranges::find(running, std::optional(value), field);
        return found == running.end() ? std::nullopt : std::optional(*found);
    }

    bool note(const std::string& what, const RunningApplication& application) {
        requests.push_back(what + ' ' + std::to_string(application.processIdentifier));
        return accepts;
    }
};

} // namespace cindertop::fakes
