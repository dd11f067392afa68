#pragma once

#include "platform/UnifiedLog.h"

#include <mutex>
#include <string>
#include <vector>

namespace cindertop::fakes {

/// Keeps every line. Any thread may write; the lines are read when all have.
class FakeUnifiedLog final : public UnifiedLog {
public:
    struct Line {
        UnifiedLogLevel level;
        std::string subsystem;
        std::string category;
        std::string text;

        bool operator==(const Line&) const = default;
    };

    std::vector<Line> lines;

    void write(UnifiedLogLevel level, std::string_view subsystem, std::string_view category,
               std::string_view text) override {
        const std::scoped_lock lock(lock_);
        lines.push_back({.level = level,
                         .subsystem = std::string(subsystem),
                         .category = std::string(category),
                         .text = std::string(text)});
    }

private:
    std::mutex lock_;
};

} // namespace cindertop::fakes
