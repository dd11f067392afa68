#include "Require.h"
#include "persistence/DiagnosticBuffer.h"
#include "persistence/DiagnosticEventCodec.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Events that were read can be written, and read back as the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cindertop;
    const auto events = decodeDiagnosticEvents(std::string_view(reinterpret_cast<const char*>(data), size));
    if (!events) {
        return 0;
    }
    const DiagnosticBuffer buffer(*events);
    std::string text;
    for (const std::string_view piece : buffer.fileText()) {
        text += piece;
    }
    require(decodeDiagnosticEvents(text) == events);
    return 0;
}
