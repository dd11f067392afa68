#pragma once

#include "cli/Pages.h"
#include "report/MachineReport.h"
#include "terminal/Output.h"
#include "terminal/Screen.h"

#include <functional>
#include <optional>
#include <string>

namespace cindertop::cli {

/// Shows the ticks of a watch.
class WatchPrinter {
public:
    virtual ~WatchPrinter() = default;
    virtual WriteResult show(const MachineReport& report) = 0;
    /// The place of output has another size; the next `show` fits it.
    virtual void resize() = 0;
    /// Stops the program until the shell continues it; the next `show` draws anew.
    virtual void suspend() = 0;
};

/// Draws each tick over the last one.
class ScreenPrinter final : public WatchPrinter {
public:
    /// How to write, and into how many rows.
    struct Place {
        PageStyle style;
        int rows;
        OffenderOrder order{};
    };

    /// `output` must outlive the printer and be a terminal that can redraw; `readPlace` tells its size each
    /// time.
    ScreenPrinter(const Output& output, std::function<Place()> readPlace);

    WriteResult show(const MachineReport& report) override;
    void resize() override;
    void suspend() override;

private:
    std::function<Place()> readPlace_;
    Place place_;
    Screen screen_;
};

/// Writes each tick that is worth it as a line.
class LinePrinter final : public WatchPrinter {
public:
    /// None: nothing to tell.
    using Encoder = std::function<std::optional<std::string>(const MachineReport&)>;

    /// `output` must outlive the printer.
    LinePrinter(const Output& output, Encoder encoder);

    WriteResult show(const MachineReport& report) override;

    void resize() override {}

    void suspend() override {}

private:
    const Output& output_;
    Encoder encoder_;
};

} // namespace cindertop::cli
