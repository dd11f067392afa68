#include "platform/linux/LinuxSystemValues.h"

#include "platform/linux/FileHead.h"
#include "platform/linux/FileReading.h"
#include "platform/linux/MachineIdentity.h"
#include "support/Text.h"

namespace cindertop::linux_platform {

namespace {

constexpr std::size_t cpuinfoRoom = 4096; ///< the first processor's block; the name stands near its top

} // namespace

LinuxSystemValues::LinuxSystemValues(const Roots& roots) {
    // The boot loader of an Apple machine may make up DMI tables with names of its own: the device tree goes
    // first.
    const auto compatible = parseCompatible(readTextFile(roots.proc / "device-tree/compatible").value_or(""));
    model_ = appleModelIdentifier(compatible);
    if (!model_) {
        model_ = readAttribute(roots.sys / "class/dmi/id/product_name").transform(repairedUtf8);
        source_ = "product name of the firmware";
    }
    brand_ = appleChipBrand(compatible).or_else([&] {
        return readFileHead(roots.proc / "cpuinfo", cpuinfoRoom).and_then([](const std::string& text) {
            return parseProcessorModel(text);
        });
    });
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
            .reason = model_ ? source_ : "neither a known device tree nor a product name of the firmware"};
}

} // namespace cindertop::linux_platform
