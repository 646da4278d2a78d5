#include "core/SettingSerializer.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {

template <class T>
T parsed(const std::string& text, T fallback)
{
    T value{};
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    return result.ec == std::errc() && result.ptr == end ? value : fallback;
}

// As "%.15g", but for the locale.
std::string textOf(double value)
{
    std::array<char, 32> text{};
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, 15);
    return {text.data(), result.ptr};
}

}  // namespace

bool SettingSerializer::boolValue(const std::string& key, bool value, bool fallback)
{
    return intValue(key, value ? 1 : 0, fallback ? 1 : 0) != 0;
}

double SettingSerializer::floatValue(const std::string& key, double value, double fallback)
{
    const std::string text = stringValue(key, textOf(value), {});
    if (isWriter())
        return value;  // not what is left of it in the text
    const double found = parsed(text, fallback);
    return std::isfinite(found) ? found : fallback;
}

std::int32_t SettingSerializer::intValue(const std::string& key, std::int32_t value, std::int32_t fallback)
{
    return parsed(stringValue(key, std::to_string(value), {}), fallback);
}
