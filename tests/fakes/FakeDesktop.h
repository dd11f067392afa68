#pragma once

#include "platform/Desktop.h"

#include <utility>
#include <vector>

namespace cindertop::fakes {

/// A desktop whose save panels stay open until the test answers them.
class FakeDesktop final : public Desktop {
public:
    std::vector<ActivationPolicy> policies;
    std::vector<SavePanel> panels;
    std::vector<std::string> pages;
    std::vector<std::string> sentences; ///< that the user was told
    int activations = 0;

    void setActivationPolicy(ActivationPolicy policy) override { policies.push_back(policy); }

    void activate() override { ++activations; }

    void chooseSaveLocation(const SavePanel& panel, SaveCompletion completion) override {
        panels.push_back(panel);
        completion_ = std::move(completion);
    }

    void tell(const std::string& /*title*/, const std::string& sentence) override {
        sentences.push_back(sentence);
    }

    void openPage(const std::string& address) override { pages.push_back(address); }

    /// What the user chose in the latest panel.
    void answer(const std::optional<std::filesystem::path>& destination) {
        answerWith({.place = destination});
    }

    void answerWith(const SaveChoice& choice) { std::exchange(completion_, nullptr)(choice); }

private:
    SaveCompletion completion_;
};

} // namespace cindertop::fakes
