#include "platform/simulated/SimulatedApplicationCatalog.h"

namespace cindertop::simulated {

namespace {

class SimulatedBundle final : public ApplicationBundle {
public:
    explicit SimulatedBundle(ScenarioBundle bundle) : bundle_(std::move(bundle)) {}

    std::optional<std::string> bundleIdentifier() const override { return bundle_.identifier; }

    std::optional<std::string> informationText(std::string_view key) const override {
        if (key == "CFBundleIdentifier") {
            return bundle_.identifier;
        }
        if (key == "CFBundleDisplayName") {
            return bundle_.displayName;
        }
        return key == "CFBundleName" ? bundle_.name : std::nullopt;
    }

private:
    ScenarioBundle bundle_;
};

} // namespace

std::unique_ptr<ApplicationBundle> SimulatedApplicationCatalog::openBundle(const std::string& folder) {
    const auto found = scenario_->bundles.find(folder);
    return found != scenario_->bundles.end() ? std::make_unique<SimulatedBundle>(found->second) : nullptr;
}

} // namespace cindertop::simulated
