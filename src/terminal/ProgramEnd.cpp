#include "terminal/ProgramEnd.h"

#include "terminal/SignalDescriptor.h"

#include <unistd.h>

namespace cindertop::cli {

void reportError(const std::string& sentence) {
    // If even this cannot be written, the exit status remains.
    [[maybe_unused]] const auto ignored = Output(STDERR_FILENO).write("cindertopctl: " + sentence + '\n');
}

ExitStatus exitStatus(const WriteResult& written) {
    if (written || written.error().isReaderGone()) {
        return success;
    }
    reportError("cannot write the output: " + written.error().message());
    return failure;
}

ExitStatus exitStatus(const std::expected<std::optional<int>, WriteError>& watched) {
    if (!watched) {
        return exitStatus(WriteResult(std::unexpected(watched.error())));
    }
    if (*watched) {
        terminateBySignal(**watched);
    }
    return success;
}

ExitStatus exitStatus(const std::expected<void, std::string>& result) {
    if (result) {
        return success;
    }
    reportError(result.error());
    return failure;
}

} // namespace cindertop::cli
