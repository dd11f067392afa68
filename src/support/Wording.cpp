#include "support/Wording.h"

namespace cindertop {

std::string withName(std::string_view sentence, std::string_view name) {
    std::string text(sentence);
    if (const auto place = text.find(placeForName); place != std::string::npos) {
        text.replace(place, placeForName.size(), name);
    }
    return text;
}

} // namespace cindertop
