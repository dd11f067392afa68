#pragma once

#include "support/FileSystem.h"

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

namespace cindertop::fakes {

/// Files that work until they are told to fail.
class FaultyFileSystem final : public FileSystem {
public:
    enum class Call {
        openForReading,
        openForReplacing,
        read,
        write,
        sync,
        rename,
        remove,
        makeFolder,
        syncFolder
    };

    explicit FaultyFileSystem(FileSystem& files) : files_(files) {}

    /// The call fails `times` times from now on, then works again.
    void fail(Call call, std::errc error, int times = 1'000'000) { faults_[call] = {error, times}; }

    void repair() {
        faults_.clear();
        callsLeft_.reset();
    }

    /// The process is gone after that many more calls: nothing happens any more, no cleaning up either.
    void stopAfter(int moreCalls) { callsLeft_ = moreCalls; }

    /// Each write takes at most that many bytes, each read gives at most as many.
    void limitTransfers(std::size_t bytes) { transferLimit_ = bytes; }

    /// Every call so far, closing left out.
    std::vector<Call> calls;

    FileResult<FileHandle> openForReading(const std::filesystem::path& file) override {
        return done(Call::openForReading, [&] { return files_.openForReading(file); });
    }

    FileResult<FileHandle> openForReplacing(const std::filesystem::path& file) override {
        return done(Call::openForReplacing, [&] { return files_.openForReplacing(file); });
    }

    FileResult<std::size_t> read(FileHandle file, std::span<char> buffer) override {
        return done(Call::read,
                    [&] { return files_.read(file, buffer.first(std::min(buffer.size(), transferLimit_))); });
    }

    FileResult<std::size_t> write(FileHandle file, std::string_view bytes) override {
        return done(Call::write, [&] { return files_.write(file, bytes.substr(0, transferLimit_)); });
    }

    FileResult<void> sync(FileHandle file) override {
        return done(Call::sync, [&] { return files_.sync(file); });
    }

    void close(FileHandle file) override { files_.close(file); }

    FileResult<void> rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
        return done(Call::rename, [&] { return files_.rename(from, to); });
    }

    FileResult<void> remove(const std::filesystem::path& file) override {
        return done(Call::remove, [&] { return files_.remove(file); });
    }

    FileResult<void> makeFolder(const std::filesystem::path& folder) override {
        return done(Call::makeFolder, [&] { return files_.makeFolder(folder); });
    }

    FileResult<void> syncFolder(const std::filesystem::path& folder) override {
        return done(Call::syncFolder, [&] { return files_.syncFolder(folder); });
    }

private:
    struct Fault {
        std::errc error;
        int times;
    };

    std::optional<std::errc> errorOf(Call call) {
        calls.push_back(call);
        if (callsLeft_ && (*callsLeft_)-- <= 0) {
            return std::errc::owner_dead;
        }
        const auto fault = faults_.find(call);
        if (fault == faults_.end() || fault->second.times-- <= 0) {
            return std::nullopt;
        }
        return fault->second.error;
    }

    template <typename Work>
    auto done(Call call, const Work& work) -> decltype(work()) {
        if (const auto error = errorOf(call)) {
            return std::unexpected(*error);
        }
        return work();
    }

    FileSystem& files_;
    std::map<Call, Fault> faults_;
    std::optional<int> callsLeft_;
    std::size_t transferLimit_ = static_cast<std::size_t>(-1);
};

} // namespace cindertop::fakes
