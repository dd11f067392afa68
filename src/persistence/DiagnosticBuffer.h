#pragma once

#include "persistence/DiagnosticLogEvent.h"
#include "support/FileSystem.h"
#include "support/Instant.h"

#include <array>
#include <cstddef>
#include <deque>
#include <filesystem>
#include <string>
#include <string_view>

namespace cindertop {

/// The recent events, oldest first, together with the text of their file. The text grows and shrinks with the
/// events, so an event costs its own length and not that of the whole buffer.
class DiagnosticBuffer {
public:
    using Events = std::deque<DiagnosticLogEvent>;

    DiagnosticBuffer() = default;
    explicit DiagnosticBuffer(Events events);
    /// What a buffer file holds; nothing without a sound one.
    static DiagnosticBuffer read(FileSystem& files, const std::filesystem::path& file);

    const Events& events() const { return events_; }

    void append(DiagnosticLogEvent event);

    /// Drops what the log does not keep at `now`: events of more than seven days, then the oldest of what is
    /// more than 5 MiB.
    void keepRecent(Instant now);

    /// Drops every event before `oldest`, wherever it stands.
    void dropBefore(Instant oldest);

    /// Drops the oldest events until the file's text has at most that many bytes.
    void shrinkTo(std::size_t bytes);

    /// The text of the file, a JSON array, in pieces that are valid until the buffer changes.
    std::array<std::string_view, 3> fileText() const;

private:
    std::size_t fileSize() const;
    void dropFirst(std::size_t count);
    void encode(const DiagnosticLogEvent& event);

    Events events_;
    std::deque<std::size_t> lengths_; ///< of each event's text, with its separator
    std::string text_;                ///< every event's text, each behind its separator
    std::size_t dropped_ = 0;         ///< bytes at the beginning of `text_` that no longer count
};

} // namespace cindertop
