// JSON, an object in each line.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace jkc::cli {

// What is no UTF-8 in it, as names of files may be, gets replacement characters.
inline std::string line_of(const nlohmann::ordered_json &object) {
    return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace jkc::cli
