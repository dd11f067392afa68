#pragma once

#include "terminal/Output.h"

#include <expected>
#include <optional>
#include <string>

namespace cindertop::cli {

/// How the program ends.
enum ExitStatus { success = 0, failure = 1, usageError = 2 };

/// Writes one sentence to standard error, behind the program's name.
void reportError(const std::string& sentence);

/// Reports a failed write, unless the reader has gone.
ExitStatus exitStatus(const WriteResult& written);

/// The same; a watch that a signal ended ends the program by that signal.
ExitStatus exitStatus(const std::expected<std::optional<int>, WriteError>& watched);

/// Reports an error.
ExitStatus exitStatus(const std::expected<void, std::string>& result);

} // namespace cindertop::cli
