#pragma once

#include "platform/ApplicationCatalog.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace cindertop::fakes {

/// Bundles by their folder and applications by process, as a test fills them in.
class FakeApplicationCatalog final : public ApplicationCatalog {
public:
    struct Bundle {
        std::optional<std::string> identifier;
        std::map<std::string, std::string, std::less<>> texts; ///< the information dictionary's texts
    };

    std::map<std::string, Bundle> bundles;
    std::map<std::int32_t, ProcessApplication> applications;

    std::unique_ptr<ApplicationBundle> openBundle(const std::string& folder) override {
        const auto found = bundles.find(folder);
        return found != bundles.end() ? std::make_unique<OpenBundle>(found->second) : nullptr;
    }

    std::optional<ProcessApplication> applicationOfProcess(std::int32_t processIdentifier) override {
        const auto found = applications.find(processIdentifier);
        return found != applications.end() ? std::optional(found->second) : std::nullopt;
    }

private:
    class OpenBundle final : public ApplicationBundle {
    public:
        explicit OpenBundle(Bundle bundle) : bundle_(std::move(bundle)) {}

        std::optional<std::string> bundleIdentifier() const override { return bundle_.identifier; }

        std::optional<std::string> informationText(std::string_view key) const override {
            const auto found = bundle_.texts.find(key);
            return found != bundle_.texts.end() ? std::optional(found->second) : std::nullopt;
        }

    private:
        Bundle bundle_;
    };
};

} // namespace cindertop::fakes
