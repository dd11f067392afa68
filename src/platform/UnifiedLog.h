#pragma once

#include <string_view>

namespace cindertop {

enum class UnifiedLogLevel { debug, info, warning, error };

/// The system's log. Any thread may write; a line that cannot be written is dropped.
class UnifiedLog {
public:
    virtual ~UnifiedLog() = default;
    /// `subsystem` is the program's reverse-domain identifier; `text` is one line without its end.
    virtual void write(UnifiedLogLevel level, std::string_view subsystem, std::string_view category,
                       std::string_view text) = 0;
};

/// Where nobody reads the log.
class SilentUnifiedLog final : public UnifiedLog {
public:
    void write(UnifiedLogLevel /*level*/, std::string_view /*subsystem*/, std::string_view /*category*/,
               std::string_view /*text*/) override {}
};

/// The subsystem under which this program writes its lines.
inline constexpr std::string_view unifiedLogSubsystem = "app.cindertop.Cindertop";

} // namespace cindertop
