#pragma once

#include "cli/Pages.h"
#include "cli/Screen.h"
#include "cli/WatchPrinter.h"

#include <functional>

namespace cindertop::cli {

/// Draws each tick over the last one.
class ScreenPrinter final : public WatchPrinter {
public:
    /// How to write, and into how many rows.
    struct Place {
        PageStyle style;
        int rows;
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

/// Writes each tick as a line.
class LinePrinter final : public WatchPrinter {
public:
    using Encoder = std::function<std::string(const MachineReport&)>;

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
