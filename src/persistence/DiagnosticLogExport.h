#pragma once

#include "persistence/AppSettings.h"
#include "persistence/DiagnosticBuffer.h"
#include "support/FileSystem.h"
#include "support/Instant.h"
#include "support/Wording.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

namespace cindertop {

/// What the application tells about itself in an export; every text as it is shown or stored.
struct DiagnosticExportContext {
    std::string appVersion{};
    std::string appBuild{};
    OperatingSystem operatingSystem{};
    std::string operatingSystemVersion{}; ///< its name and version
    std::string architecture{};
    std::string model{};
    std::string launchAtLoginStatus{};
    AppSettingsFields settings{}; ///< as they are in force, which need not be as they would be stored
};

/// The document that a user may attach to a request for support.
struct DiagnosticLogExport {
    Instant exportedAt;
    std::string supportID;
    const DiagnosticExportContext& context;
    const DiagnosticBuffer::Events& events;

    /// Indented JSON with sorted keys; none when a text is no UTF-8.
    std::optional<std::string> text() const;

    /// Replaces the file by the document. The error is `DiagnosticLogExportError::unavailable` or what the
    /// file system says.
    std::expected<void, std::error_code> writeTo(FileSystem& files, const std::filesystem::path& file) const;
};

enum class DiagnosticLogExportError : std::uint8_t {
    disabled = 1, ///< diagnostic logging is off
    unavailable,  ///< the export could not be encoded
};

std::error_code make_error_code(DiagnosticLogExportError error); // NOLINT(readability-identifier-naming)

} // namespace cindertop

template <>
struct std::is_error_code_enum<cindertop::DiagnosticLogExportError> : std::true_type {};
