#include "platform/linux/LinuxSystemValues.h"

#include "platform/linux/FileHead.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/MachineIdentity.h"
#include "support/Text.h"

#include <filesystem>

namespace cindertop::linux_platform {

namespace {

constexpr std::size_t cpuinfoRoom = 4096; ///< the first processor's block; the name stands near its top

using OptionalText = std::optional<std::string>;

OptionalText nameIn(const std::filesystem::path& file) {
    return readAttribute(file).and_then([](const std::string& text) {
        // A device tree's text ends at a zero byte.
        const auto name = trimmingWhitespace(untilZeroByte(text));
        return isPlaceholderName(name) ? OptionalText() : OptionalText(repairedUtf8(name));
    });
}

/// Lenovo's product name is an order number; what people call the machine is its version.
OptionalText productName(const std::filesystem::path& dmi) {
    const bool isLenovo = lowerCased(readAttribute(dmi / "sys_vendor").value_or("")) == "lenovo";
    const auto version = isLenovo ? nameIn(dmi / "product_version") : std::nullopt;
    return version ? version : nameIn(dmi / "product_name");
}

/// Some drivers give the board's name where the chip's belongs. Firmware that tells the maker by a number
/// only ("jep106:0426") names no chip.
OptionalText socName(const std::filesystem::path& soc, const OptionalText& board) {
    const auto machine = nameIn(soc / "machine");
    const auto name = machine && machine != board ? machine : nameIn(soc / "family");
    return name && !name->starts_with("jep106:") ? name : std::nullopt;
}

} // namespace

LinuxSystemValues::LinuxSystemValues(const Roots& roots) {
    // The boot loader of a device-tree machine may make up DMI tables with names of its own: the device tree
    // goes first.
    const auto compatible = parseCompatible(readTextFile(roots.proc / "device-tree/compatible").value_or(""));
    const auto board = nameIn(roots.proc / "device-tree/model");
    model_ = appleModelIdentifier(compatible);
    if (!model_) {
        model_ = board;
    }
    if (!model_) {
        model_ = productName(roots.sys / "class/dmi/id");
        source_ = "product name of the firmware";
    }
    brand_ = appleChipBrand(compatible)
                 .or_else([&] {
                     return readFileHead(roots.proc / "cpuinfo", cpuinfoRoom)
                         .and_then([](const std::string& text) {
                             const bool isWhole = text.size() < cpuinfoRoom; // its last line too
                             return parseProcessorModel(isWhole ? text + "\n" : text);
                         });
                 })
                 .or_else([&] { return socName(roots.sys / "devices/soc0", board); })
                 .or_else([&] { return socOfCompatible(compatible); });
}

std::optional<std::string> LinuxSystemValues::text(std::string_view name) const {
    if (name == "hw.model") {
        return model_;
    }
    return name == "machdep.cpu.brand_string" ? brand_ : std::nullopt;
}

SourceStatus LinuxSystemValues::status() const {
    return {.name = "machine identity",
            .isAvailable = model_.has_value(),
            .reason = model_ ? source_ : "neither a device tree nor a product name of the firmware"};
}

} // namespace cindertop::linux_platform
