#pragma once

#include "support/FileSystem.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace cindertop {

/// The whole text of a regular file; `std::errc::file_too_large` when it has more bytes than `limit`.
FileResult<std::string> wholeFile(FileSystem& files, const std::filesystem::path& file, std::size_t limit);

/// Makes a folder and the missing ones above it, each with mode 0700; those that exist stay as they are.
FileResult<void> makeFolders(FileSystem& files, const std::filesystem::path& folder);

/// Removes a file and what a killed process left beside it; no file is an error like any other.
FileResult<void> removeFile(FileSystem& files, const std::filesystem::path& file);

/// What a power cut may cost: nothing, or what was written in its last seconds. Never half a file.
enum class Durability : std::uint8_t { synced, relaxed };

/// Replaces a file by these pieces, one after the other: every reader, and every start after a crash, sees
/// either the old or the new contents, also while several processes do it at once. The file gets mode 0600.
/// On an error the old file stands. What a killed process leaves beside the file is taken up by the next
/// writer.
FileResult<void> replaceFile(FileSystem& files, const std::filesystem::path& file,
                             std::span<const std::string_view> pieces, Durability durability);
FileResult<void> replaceFile(FileSystem& files, const std::filesystem::path& file, std::string_view bytes,
                             Durability durability);

} // namespace cindertop
