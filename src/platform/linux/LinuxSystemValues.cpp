#include "platform/linux/LinuxSystemValues.h"

#include "platform/linux/FileReading.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <filesystem>
#include <span>
#include <utility>

namespace cindertop::linux_platform {

namespace {

using Row = std::pair<std::string_view, std::string_view>;

constexpr auto boards = std::to_array<Row>({
    {"apple,j313", "MacBookAir10,1"},
    {"apple,j413", "Mac14,2"},
    {"apple,j415", "Mac14,15"},
    {"apple,j613", "Mac15,12"},
    {"apple,j615", "Mac15,13"},
    {"apple,j713", "Mac16,12"},
    {"apple,j715", "Mac16,13"},
    {"apple,j813", "Mac17,3"}, // inferred from the boards before it, like the next
    {"apple,j815", "Mac17,4"},
});

constexpr auto chips = std::to_array<Row>({
    {"apple,t8103", "Apple M1"},
    {"apple,t8112", "Apple M2"},
    {"apple,t8122", "Apple M3"},
    {"apple,t8132", "Apple M4"},
    {"apple,t8142", "Apple M5"},
});

/// In lower case and without the punctuation and blanks that makers put anywhere.
constexpr auto placeholderNames = std::to_array<std::string_view>({
    "allseries",
    "default",
    "defaultstring",
    "empty",
    "filledbyoem",
    "invalid",
    "lenovo",
    "model",
    "modelname",
    "na",
    "noname",
    "none",
    "notapplicable",
    "notavailable",
    "notdefined",
    "notset",
    "notspecified",
    "null",
    "oem",
    "oemproduct",
    "product",
    "productname",
    "producttype",
    "standard",
    "system",
    "systemmanufacturer",
    "systemmodel",
    "systemname",
    "systemproduct",
    "systemproductname",
    "systemversion",
    "tbd",
    "tobefilled",
    "tobefilledbyoem",
    "tobefilledbyoemplease",
    "type1productconfigid",
    "type1version",
    "undefined",
    "unknown",
    "version",
    "0123456789",
    "123456789",
    "1234567890",
});

std::string withoutPunctuation(std::string_view name) {
    auto text = lowerCased(name);
    std::erase_if(text, [](char character) {
        const bool isLetterOrDigit =
            (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9');
        return static_cast<unsigned char>(character) < 0x80 && !isLetterOrDigit;
    });
    return text;
}

std::string upperAscii(std::string_view text) {
    std::string upper(text);
    std::ranges::transform(upper, upper.begin(), [](char character) {
        return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
    });
    return upper;
}

std::optional<std::string> firstMatch(std::span<const Row> rows, const std::vector<std::string>& names) {
    for (const auto& name : names) {
        if (const auto row = std::ranges::find(rows, name, &Row::first); row != rows.end()) {
            return std::string(row->second);
        }
    }
    return std::nullopt;
}

} // namespace

std::vector<std::string> parseCompatible(std::string_view bytes) {
    std::vector<std::string> names;
    while (!bytes.empty()) {
        const auto name = untilZeroByte(bytes);
        bytes.remove_prefix(std::min(name.size() + 1, bytes.size()));
        if (!name.empty()) {
            names.emplace_back(name);
        }
    }
    return names;
}

std::optional<std::string> appleModelIdentifier(const std::vector<std::string>& compatible) {
    return firstMatch(boards, compatible);
}

std::optional<std::string> appleChipBrand(const std::vector<std::string>& compatible) {
    return firstMatch(chips, compatible);
}

std::optional<std::string> socOfCompatible(const std::vector<std::string>& compatible) {
    // Behind the system on the chip there can be a name for all machines of a maker or of a virtual kind.
    constexpr std::array generic{std::string_view("apple,arm-platform"),
                                 std::string_view("linux,dummy-virt")};
    for (std::size_t index = compatible.size(); index > 1; --index) {
        const std::string_view name = compatible[index - 1];
        if (std::ranges::find(generic, name) == generic.end()) {
            const auto comma = name.find(',');
            return upperAscii(repairedUtf8(comma == std::string_view::npos ? name : name.substr(comma + 1)));
        }
    }
    return std::nullopt; // the only name is the board's
}

bool isPlaceholderName(std::string_view name) {
    const auto text = withoutPunctuation(name);
    const bool isOneCharacter =
        std::ranges::all_of(text, [&](char character) { return character == text.front(); });
    return isOneCharacter || std::ranges::find(placeholderNames, text) != placeholderNames.end();
}

std::optional<std::string> parseProcessorModel(std::string_view cpuinfo) {
    while (!cpuinfo.empty()) {
        const auto end = cpuinfo.find('\n');
        if (end == std::string_view::npos) {
            return std::nullopt; // a line that the caller's room cut off
        }
        const auto line = cpuinfo.substr(0, end);
        cpuinfo.remove_prefix(end + 1);
        const auto colon = line.find(':');
        if (colon == std::string_view::npos || trimmingWhitespace(line.substr(0, colon)) != "model name") {
            continue;
        }
        const auto model = trimmingWhitespace(line.substr(colon + 1));
        const bool isName = !model.empty() && !model.starts_with("ARMv") && !model.starts_with("AArch64");
        return isName ? std::optional<std::string>(repairedUtf8(model)) : std::nullopt;
    }
    return std::nullopt;
}

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
                     return readFilePrefix(roots.proc / "cpuinfo", cpuinfoRoom)
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
