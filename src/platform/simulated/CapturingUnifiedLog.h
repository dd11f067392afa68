#pragma once

#include "platform/UnifiedLog.h"

#include <functional>
#include <mutex>
#include <string>
#include <utility>

namespace cindertop::simulated {

struct UnifiedLogLine {
    UnifiedLogLevel level;
    std::string subsystem;
    std::string category;
    std::string text;

    bool operator==(const UnifiedLogLine&) const = default;
};

/// Hands every line on, one at a time, on the thread that writes it. The receiver must write none itself.
class CapturingUnifiedLog final : public UnifiedLog {
public:
    explicit CapturingUnifiedLog(std::function<void(const UnifiedLogLine&)> onLine)
        : onLine_(std::move(onLine)) {}

    void write(UnifiedLogLevel level, std::string_view subsystem, std::string_view category,
               std::string_view text) override {
        const std::scoped_lock lock(lock_);
        onLine_({.level = level,
                 .subsystem = std::string(subsystem),
                 .category = std::string(category),
                 .text = std::string(text)});
    }

private:
    std::mutex lock_;
    std::function<void(const UnifiedLogLine&)> onLine_;
};

} // namespace cindertop::simulated
