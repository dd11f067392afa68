#include "report/Json.h"

#include <nlohmann/json.hpp>

namespace cindertop {

std::string compactText(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string indentedText(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace);
}

} // namespace cindertop
