#include "cli/MetricsFile.h"

#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cindertop::cli {

namespace {

constexpr mode_t readableByAll = 0644;

std::unexpected<WriteError> latestError() {
    return std::unexpected(WriteError{errno});
}

WriteResult writeWhole(int descriptor, std::string_view text) {
    if (::fchmod(descriptor, readableByAll) != 0) {
        return latestError();
    }
    return Output(descriptor).write(text);
}

} // namespace

MetricsFile::~MetricsFile() {
    if (isWritten_) {
        std::error_code ignored;
        std::filesystem::remove(file_, ignored);
    }
}

/// The preferences' own way to replace a file keeps it private, and syncs: both would be wrong here.
WriteResult MetricsFile::replace(std::string_view text) {
    // Hidden, and with another ending, so that no collector reads it.
    auto name = (file_.parent_path() / ("." + file_.filename().string() + ".XXXXXX")).string();
    const int descriptor = ::mkostemp(name.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return latestError();
    }
    auto written = writeWhole(descriptor, text);
    if (::close(descriptor) != 0 && written) {
        written = latestError();
    }
    if (written && ::rename(name.c_str(), file_.c_str()) != 0) {
        written = latestError();
    }
    if (!written) {
        ::unlink(name.c_str());
    }
    isWritten_ = isWritten_ || written;
    return written;
}

} // namespace cindertop::cli
