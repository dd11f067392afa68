#pragma once

#include "support/FileSystem.h"

namespace cindertop {

/// The machine's own files.
class PosixFileSystem : public FileSystem {
public:
    FileResult<FileHandle> openForReading(const std::filesystem::path& file) override;
    FileResult<FileHandle> openForReplacing(const std::filesystem::path& file) override;
    FileResult<std::size_t> read(FileHandle file, std::span<char> buffer) override;
    FileResult<std::size_t> write(FileHandle file, std::string_view bytes) override;
    FileResult<void> sync(FileHandle file) override;
    void close(FileHandle file) override;
    FileResult<void> rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
    FileResult<void> remove(const std::filesystem::path& file) override;
    FileResult<void> makeFolder(const std::filesystem::path& folder) override;
    FileResult<void> syncFolder(const std::filesystem::path& folder) override;
};

} // namespace cindertop
