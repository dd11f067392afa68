#pragma once

#include <expected>
#include <string>
#include <string_view>

namespace cindertop::cli {

/// Why a text did not get out whole.
struct WriteError {
    int code; ///< an errno value

    /// The reader has gone, as `head` does: nothing to report.
    bool isReaderGone() const;
    /// The interrupting descriptor became readable first; see `Output::interruptBy`.
    bool isInterruption() const;
    /// The system's words, for example "No space left on device".
    std::string message() const;

    bool operator==(const WriteError&) const = default;
};

using WriteResult = std::expected<void, WriteError>;

/// A descriptor that takes text. It is not closed here.
class Output {
public:
    explicit Output(int descriptor) : descriptor_(descriptor) {}

    /// From now on a write that has to wait for its reader gives up as soon as this descriptor becomes
    /// readable.
    void interruptBy(int descriptor) { interruption_ = descriptor; }

    void interruptByNothing() { interruption_ = noDescriptor; }

    /// All of the text, or why not: then some of it may have been written.
    WriteResult write(std::string_view text) const;

    int descriptor() const { return descriptor_; }

private:
    static constexpr int noDescriptor = -1; ///< poll passes over it

    WriteResult waitForRoom() const;

    int descriptor_;
    int interruption_ = noDescriptor;
};

/// A file that is opened later must not take the number of a standard descriptor that was closed, and our
/// output with it. What is opened here refuses the wrong direction, so that writing still fails. Called first
/// of all.
void occupyStandardDescriptors();

} // namespace cindertop::cli
