#pragma once

#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "ZekTool/Output/STally.h"

namespace zektool
{

/// JSON whose members stay in the order in which they are added.
using Json = nlohmann::ordered_json;

/// Returns a path or name, which may be any bytes: {"text": ...} when it is UTF-8, {"bytes": ...}
/// with base64 when it is not.
Json MakeJsonText(std::string_view bytes);

/// Returns a line of JSON Lines.
std::string MakeJsonLine(const Json& json);

/// Returns the line of a model that failed, or was not done.
std::string MakeFailureJson(std::string_view path, EOutcome outcome, std::string_view reason);

} // namespace zektool
