#include "persistence/DiagnosticLogExport.h"

#include "persistence/DiagnosticEventCodec.h"
#include "persistence/Preferences.h"
#include "support/AtomicFile.h"
#include "support/DateText.h"
#include "support/Wording.h"

#include <nlohmann/json.hpp>

#include <variant>

namespace cindertop {
namespace {

using nlohmann::json;

/// Under which the system's version stands.
constexpr Wording versionKey{"macOS", "linux"};

json settingsJson(const DiagnosticExportContext& context) {
    json settings{{"launchAtLoginStatus", context.launchAtLoginStatus}};
    for (const auto& preference : preferences()) {
        if (!preference.extras.isForLiveMachines) {
            const auto name =
                preference.extras.exportedAs.empty() ? preference.name : preference.extras.exportedAs;
            std::visit([&](const auto& value) { settings[std::string(name)] = value; },
                       preference.read(context.settings));
        }
    }
    return settings;
}

class ExportErrors final : public std::error_category {
public:
    const char* name() const noexcept override { return "DiagnosticLogExportError"; }

    std::string message(int code) const override {
        return static_cast<DiagnosticLogExportError>(code) == DiagnosticLogExportError::disabled
                   ? "diagnostic logging is off"
                   : "the export could not be encoded";
    }
};

} // namespace

std::error_code make_error_code(DiagnosticLogExportError error) { // NOLINT(readability-identifier-naming)
    static const ExportErrors category;
    return {static_cast<int>(error), category};
}

std::optional<std::string> DiagnosticLogExport::text() const {
    json document{
        {"schemaVersion", 1},
        {"exportedAt", utcText(exportedAt)},
        {"supportID", supportID},
        {"app", {{"version", context.appVersion}, {"build", context.appBuild}}},
        {"system",
         {{versionKey.in(context.operatingSystem), context.operatingSystemVersion},
          {"architecture", context.architecture},
          {"model", context.model}}},
        {"settings", settingsJson(context)},
        {"events", json::array()},
    };
    for (const DiagnosticLogEvent& event : events) {
        document["events"].push_back(diagnosticEventJson(event));
    }
    try {
        return document.dump(2) + '\n';
    } catch (const json::type_error&) { // a text that is no UTF-8
        return std::nullopt;
    }
}

std::expected<void, std::error_code> DiagnosticLogExport::writeTo(FileSystem& files,
                                                                  const std::filesystem::path& file) const {
    const auto document = text();
    if (!document) {
        return std::unexpected(make_error_code(DiagnosticLogExportError::unavailable));
    }
    if (const auto written = replaceFile(files, file, *document, Durability::synced); !written) {
        return std::unexpected(std::error_code(static_cast<int>(written.error()), std::system_category()));
    }
    return {};
}

} // namespace cindertop
