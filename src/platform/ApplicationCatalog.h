#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop {

/// A folder that holds an application.
class ApplicationBundle {
public:
    virtual ~ApplicationBundle() = default;
    virtual std::optional<std::string> bundleIdentifier() const = 0;
    /// The value of a key of the information dictionary, when it is text.
    virtual std::optional<std::string> informationText(std::string_view key) const = 0;
};

/// The application that a process belongs to, where the system keeps that beside the executable's path.
struct ProcessApplication {
    std::string bundlePath;
    std::string bundleIdentifier;
    std::string displayName;

    bool operator==(const ProcessApplication&) const = default;
};

/// The installed applications. Called from one thread at a time.
class ApplicationCatalog {
public:
    virtual ~ApplicationCatalog() = default;
    /// None when there is no bundle at that folder.
    virtual std::unique_ptr<ApplicationBundle> openBundle(const std::string& folder) = 0;
    /// None when the process belongs to no application, or the system knows bundles only.
    virtual std::optional<ProcessApplication> applicationOfProcess(std::int32_t processIdentifier) = 0;
};

} // namespace cindertop
