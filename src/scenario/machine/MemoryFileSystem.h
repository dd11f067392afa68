#pragma once

#include "support/FileSystem.h"

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>

namespace cindertop::simulated {

/// Files in memory. At first there is the root folder only; a relative path starts there.
class MemoryFileSystem final : public FileSystem {
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

private:
    /// Lives on without a name as long as it is open.
    struct Contents {
        std::string bytes;
        bool isLocked = false;
    };

    struct OpenFile {
        std::shared_ptr<Contents> contents;
        bool isWritable;
        std::size_t position = 0;
    };

    /// What stands in the way of a file of that name; an errc{} when nothing does.
    std::errc obstacleTo(const std::string& file) const;
    FileHandle keep(OpenFile file);

    std::mutex lock_;
    std::map<std::string, std::shared_ptr<Contents>> files_; ///< by absolute path
    std::set<std::string> folders_{"/"};
    std::map<FileHandle, OpenFile> open_;
    int handles_ = 0;
};

} // namespace cindertop::simulated
