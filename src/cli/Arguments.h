#pragma once

#include <expected>
#include <span>
#include <string>
#include <string_view>

namespace cindertop::cli {

enum class Command { status, watch, offenders, help, version };

enum class Format { text, json };

/// What the user asked for.
struct Arguments {
    Command command = Command::status;
    Format format = Format::text;

    bool operator==(const Arguments&) const = default;
};

/// Reads the words after the program's name. The error is one sentence without the program's name.
/// "--help" and "--version" win wherever they stand, as long as what stands before them is known.
std::expected<Arguments, std::string> parseArguments(std::span<const std::string_view> words);

} // namespace cindertop::cli
