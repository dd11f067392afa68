#include "persistence/DiagnosticBuffer.h"

#include "persistence/DiagnosticEventCodec.h"
#include "support/AtomicFile.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <numeric>
#include <utility>

namespace cindertop {
namespace {

constexpr std::chrono::seconds longestAge(604'800); // seven days
constexpr std::size_t largestFile = 5'242'880;
constexpr std::string_view separator = ",\n";
constexpr std::string_view opening = "[\n";
constexpr std::string_view closing = "\n]\n";
constexpr std::string_view emptyFile = "[]\n";

} // namespace

DiagnosticBuffer::DiagnosticBuffer(Events events) : events_(std::move(events)) {
    for (const DiagnosticLogEvent& event : events_) {
        encode(event);
    }
}

DiagnosticBuffer DiagnosticBuffer::read(FileSystem& files, const std::filesystem::path& file) {
    const auto text = wholeFile(files, file, diagnosticFileSizeLimit);
    auto events = text ? decodeDiagnosticEvents(*text) : std::nullopt;
    return events ? DiagnosticBuffer(*std::move(events)) : DiagnosticBuffer();
}

void DiagnosticBuffer::encode(const DiagnosticLogEvent& event) {
    const std::size_t before = text_.size();
    text_ += separator;
    text_ += encodeDiagnosticEvent(event);
    lengths_.push_back(text_.size() - before);
}

void DiagnosticBuffer::append(DiagnosticLogEvent event) {
    encode(event);
    events_.push_back(std::move(event));
}

void DiagnosticBuffer::dropFirst(std::size_t count) {
    const auto end = static_cast<std::ptrdiff_t>(count);
    dropped_ += std::accumulate(lengths_.begin(), lengths_.begin() + end, std::size_t{0});
    lengths_.erase(lengths_.begin(), lengths_.begin() + end);
    events_.erase(events_.begin(), events_.begin() + end);
    if (dropped_ > text_.size() / 2) { // each byte is moved at most once for one that is dropped
        text_.erase(0, dropped_);
        dropped_ = 0;
    }
}

void DiagnosticBuffer::keepRecent(Instant now) {
    dropBefore(now - longestAge);
    shrinkTo(largestFile);
}

void DiagnosticBuffer::dropBefore(Instant oldest) {
    const auto isOld = [&](const DiagnosticLogEvent& event) { return event.timestamp < oldest; };
    const auto firstKept = std::ranges::find_if_not(events_, isOld);
    if (firstKept != events_.begin()) {
        dropFirst(static_cast<std::size_t>(firstKept - events_.begin()));
    }
    if (std::ranges::any_of(events_, isOld)) { // the clock went back at some time
        std::erase_if(events_, isOld);
        *this = DiagnosticBuffer(std::move(events_));
    }
}

std::size_t DiagnosticBuffer::fileSize() const {
    const auto pieces = fileText();
    return std::transform_reduce(pieces.begin(), pieces.end(), std::size_t{0}, std::plus{},
                                 [](std::string_view piece) { return piece.size(); });
}

void DiagnosticBuffer::shrinkTo(std::size_t bytes) {
    std::size_t size = fileSize();
    std::size_t count = 0;
    for (; count < events_.size() && size > bytes; ++count) {
        size -= lengths_[count];
    }
    if (count > 0) {
        dropFirst(count);
    }
}

std::array<std::string_view, 3> DiagnosticBuffer::fileText() const {
    if (events_.empty()) {
        return {emptyFile, {}, {}};
    }
    return {opening, std::string_view(text_).substr(dropped_ + separator.size()), closing};
}

} // namespace cindertop
