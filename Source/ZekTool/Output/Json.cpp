#include "ZekTool/Output/Json.h"

#include "ZekTool/Output/Text.h"

namespace zektool
{

namespace
{

std::string MakeBase64(std::string_view bytes)
{
    constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3)
    {
        const auto at = [&](std::size_t j) -> unsigned
        { return j < bytes.size() ? static_cast<unsigned char>(bytes[j]) : 0; };
        const unsigned group = at(i) << 16 | at(i + 1) << 8 | at(i + 2);
        text += digits[group >> 18];
        text += digits[group >> 12 & 63];
        text += i + 1 < bytes.size() ? digits[group >> 6 & 63] : '=';
        text += i + 2 < bytes.size() ? digits[group & 63] : '=';
    }
    return text;
}

} // namespace

Json MakeJsonText(std::string_view bytes)
{
    if (IsUTF8(bytes))
        return {{"text", bytes}};
    return {{"bytes", MakeBase64(bytes)}};
}

std::string MakeJsonLine(const Json& json)
{
    return json.dump() + '\n';
}

std::string MakeFailureJson(std::string_view path, EOutcome outcome, std::string_view reason)
{
    return MakeJsonLine(
        {{"model", MakeJsonText(path)},
         {"outcome", outcome == EOutcome::Failed ? "failed" : "not done"},
         {"error", MakeJsonText(reason)}});
}

} // namespace zektool
