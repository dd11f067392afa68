#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <span>
#include <string_view>
#include <system_error>

namespace cindertop {

/// An open file, handed out and taken back by one FileSystem.
enum class FileHandle : int {};

template <typename Value>
using FileResult = std::expected<Value, std::errc>;

/// The few calls of the operating system that files are kept with, one for one, so that a test can let any of
/// them fail. Reads and writes may do less than asked and may be interrupted; `wholeFile` and `replaceFile`
/// deal with that. Any thread may call; a handle belongs to one thread at a time.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    /// Opens a regular file, never a folder, a device or a pipe.
    virtual FileResult<FileHandle> openForReading(const std::filesystem::path& file) = 0;
    /// Makes a file with mode 0600, or takes an abandoned one, for this process alone: empty, and locked
    /// while it stays open. `std::errc::device_or_resource_busy` when another holds it.
    virtual FileResult<FileHandle> openForReplacing(const std::filesystem::path& file) = 0;
    /// How many bytes were read; 0 at the end.
    virtual FileResult<std::size_t> read(FileHandle file, std::span<char> buffer) = 0;
    /// How many bytes were written, at least one.
    virtual FileResult<std::size_t> write(FileHandle file, std::string_view bytes) = 0;
    /// Returns once the contents are on the disk.
    virtual FileResult<void> sync(FileHandle file) = 0;
    virtual void close(FileHandle file) = 0;

    /// Puts a file in the place of another, in one step; a symbolic link there is replaced, not followed.
    virtual FileResult<void> rename(const std::filesystem::path& from, const std::filesystem::path& to) = 0;
    /// Removes a file or a link, never a folder.
    virtual FileResult<void> remove(const std::filesystem::path& file) = 0;
    /// Makes one folder with mode 0700. `std::errc::file_exists` when there is one.
    virtual FileResult<void> makeFolder(const std::filesystem::path& folder) = 0;
    /// Returns once the folder's names are on the disk.
    virtual FileResult<void> syncFolder(const std::filesystem::path& folder) = 0;
};

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
