#pragma once

#include <cstdlib>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace cindertop {

/// Sets the given variables (absent: removes them) and puts the former values back at its end.
class EnvironmentVariables {
public:
    using Values = std::map<std::string, std::optional<std::string>>;

    explicit EnvironmentVariables(const Values& values) {
        for (const auto& [name, value] : values) {
            former_[name] = exchange(name, value);
        }
    }

    ~EnvironmentVariables() {
        for (const auto& [name, value] : former_) {
            exchange(name, value);
        }
    }

    EnvironmentVariables(const EnvironmentVariables&) = delete;
    EnvironmentVariables& operator=(const EnvironmentVariables&) = delete;

private:
    static std::optional<std::string> exchange(const std::string& name,
                                               const std::optional<std::string>& value) {
        const char* const present = std::getenv(name.c_str());
        auto former = present != nullptr ? std::optional<std::string>(present) : std::nullopt;
        if (value) {
            ::setenv(name.c_str(), value->c_str(), 1);
        } else {
            ::unsetenv(name.c_str());
        }
        return former;
    }

    Values former_;
};

} // namespace cindertop
