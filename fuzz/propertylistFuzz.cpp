#include "support/PropertyListValue.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

/// Whatever is read can be written and read again. The first writing may leave characters out; from then on
/// nothing changes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace cindertop;
    const auto value = parsePropertyList(std::string(reinterpret_cast<const char*>(data), size));
    if (!value) {
        return 0;
    }
    for (const auto layout : {PropertyListLayout::indented, PropertyListLayout::compact}) {
        const auto text = propertyListText(*value, layout);
        if (!text) { // keys that differ only in what is not written
            continue;
        }
        const auto again = parsePropertyList(*text);
        if (!again ||
            parsePropertyList(propertyListText(*again, layout).value_or("")).value_or(*value) != *again) {
            std::abort();
        }
    }
    return 0;
}
