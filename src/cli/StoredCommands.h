#pragma once

#include "app/DiagnosticContext.h"
#include "cli/Arguments.h"
#include "persistence/AppSettings.h"
#include "platform/SystemValues.h"
#include "platform/UserDefaults.h"
#include "support/DateText.h"
#include "support/FileSystem.h"
#include "support/Instant.h"
#include "support/LocalizedComparison.h"
#include "support/TemperatureText.h"
#include "terminal/Output.h"
#include "terminal/TerminalTraits.h"

#include <expected>
#include <filesystem>
#include <functional>
#include <string>

namespace cindertop::cli {

/// The stored preferences as the agent would have them; `standard` are those of a user who never chose
/// anything. What the agent would repair stays as it is stored.
AppSettings storedSettings(const UserDefaults& defaults, const AppSettings& standard);

/// What the commands about stored things work with. Everything must outlive the call.
struct StoredEnvironment {
    FileSystem& files;
    UserDefaults& defaults;
    const SystemValues& systemValues;
    Output& output;
    std::function<TerminalTraits()> terminal;
    TemperatureFormatter temperatures;
    const LocalizedComparison& comparison;
    CalendarDays calendar;
    Instant now;
    std::filesystem::path historyFile;
    std::filesystem::path diagnosticFile;
    std::filesystem::path deploymentFile;
    ProgramCircumstances circumstances;
};

/// Shows the stored history and writes nothing. Unless the agent has just saved it, as of when it was
/// written.
WriteResult showHistory(const StoredEnvironment& environment, Format format, bool isJustSaved);

/// The error is one sentence without the program's name.
using ExportResult = std::expected<void, std::string>;

/// Writes what the diagnostic log has stored into a file, "-" for the output. Needs no running agent and
/// leaves the log as it is; only the support identifier is stored when there is none yet.
ExportResult exportDiagnostics(const StoredEnvironment& environment, const std::string& file);

} // namespace cindertop::cli
