#pragma once

#include "platform/DisplayList.h"
#include "platform/SourceStatus.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/LidSwitch.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace cindertop::linux_platform {

/// What a connector's folder name says.
enum class ConnectorKind {
    laptopPanel, ///< eDP or LVDS
    panel,       ///< DSI: of a tablet or a board, seldom of a laptop
    external,
    unknown, ///< the frame buffer that firmware set up, wherever it is shown
    writeback,
};

/// Where a display at a connector of this kind is.
DisplayPlace placeOf(ConnectorKind kind);

/// The kind of "card1-eDP-1" or "card0-HDMI-A-2"; none for a name of another shape ("card0", "renderD128").
std::optional<ConnectorKind> parseConnectorName(std::string_view name);

/// The connectors of /sys/class/drm that show a picture: connected, enabled and not switched off. A built-in
/// panel under a closed lid shows none. A connected one that does not tell the rest makes the whole list
/// fail: a display that is perhaps lit is not a dark one. Called from one thread at a time, that of the lid's
/// bus.
///
/// `countActiveDisplays` looks at the machine; the other questions answer from that same look.
/// An identifier is made from the connector's name: it stays the same while the machine runs, and is never 0.
class LinuxDisplayList final : public DisplayList {
public:
    /// `lid` must outlive the list.
    explicit LinuxDisplayList(LidSwitch& lid, const Roots& roots = {});

    Answer countActiveDisplays() const override;
    Answer activeDisplays(std::uint32_t capacity) const override;
    DisplayPlace placeOf(DisplayIdentifier display) const override;
    /// With a built-in connector, lit or not, and a lid. Where no lid is found, the firmware's chassis type
    /// decides; without one a panel is assumed to be a laptop's.
    bool canFold() const override;

    /// "displays", as the latest look found them.
    SourceStatus status() const;

private:
    struct Display {
        DisplayIdentifier identifier;
        DisplayPlace place;
    };

    struct Look {
        /// `silentConnector` is the one whose state could not be read; empty: none could be listed.
        static Look failed(std::string silentConnector);

        std::int32_t status = 0;
        std::size_t connectorCount = 0;
        bool hasLaptopPanel = false;
        bool hasBuiltIn = false;
        std::vector<Display> active;
        std::string silentConnector;
    };

    Look look() const;
    const Look& latest() const;

    LidSwitch& lid_;
    std::filesystem::path folder_;
    std::optional<bool> doesChassisFold_; ///< none: the firmware does not tell
    mutable std::optional<Look> latest_;
};

} // namespace cindertop::linux_platform
