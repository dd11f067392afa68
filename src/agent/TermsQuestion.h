#pragma once

#include "cli/Output.h"

#include <optional>

namespace cindertop::agent {

/// Shows what the terms of use say and asks on the terminal whether the user accepts them. None when
/// `interruption` became readable before there was an answer.
std::optional<bool> askForTerms(const cli::Output& output, int input, int interruption);

} // namespace cindertop::agent
