#include "platform/X11DesktopSettings.h"

#include "platform/X11Connection.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

namespace gui {

namespace {

constexpr float pixelsPerInch = 96.0f;

/// Takes numbers and names from a settings manager's bytes.
class SettingsReader {
public:
    explicit SettingsReader(std::string_view settingBytes) : bytes(settingBytes)
    {
        bigEndian = !bytes.empty() && bytes[0] == 1;
    }

    bool Skip(std::size_t count)
    {
        if (bytes.size() < count)
            return false;
        bytes.remove_prefix(count);
        return true;
    }

    std::optional<std::uint32_t> Number(std::size_t size)
    {
        if (bytes.size() < size)
            return std::nullopt;
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < size; ++i)
            number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]))
                      << 8 * (bigEndian ? size - 1 - i : i);
        Skip(size);
        return number;
    }

    std::optional<std::string> PaddedText(std::size_t length)
    {
        const std::size_t padded = (length + 3) & ~std::size_t{3};
        if (bytes.size() < padded)
            return std::nullopt;
        std::string text(bytes.substr(0, length));
        Skip(padded);
        return text;
    }

private:
    std::string_view bytes;
    bool bigEndian = false;
};

xcb_window_t managerWindow(X11Connection& connection)
{
    const X11Reply<xcb_intern_atom_reply_t> name(
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 1, 13, "_XSETTINGS_S0"), nullptr));
    if (!name || !name->atom)
        return XCB_WINDOW_NONE;
    const X11Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, name->atom), nullptr));
    return owner ? owner->owner : xcb_window_t{XCB_WINDOW_NONE};
}

}  // namespace

X11DesktopSettings X11DesktopSettings::Read(X11Connection& connection)
{
    X11DesktopSettings settings;
    const auto resources =
        connection.GetProperty(connection.RootWindow(), connection.Atom(X11Atom::ResourceManager));
    if (const auto dpi = FindResource(resources.bytes, "Xft.dpi"); dpi && *dpi > 0.0f)
        settings.fontScale = *dpi / pixelsPerInch;
    const xcb_window_t manager = managerWindow(connection);
    if (!manager)
        return settings;
    // It tells of later ones by the property.
    const std::uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(connection, manager, XCB_CW_EVENT_MASK, &changes);
    const auto managed = connection.GetProperty(manager, connection.Atom(X11Atom::XSettings));
    for (const auto& [name, value] : ParseManager(managed.bytes)) {
        if (value <= 0)
            continue;
        if (name == "Xft/DPI")  // in 1024ths
            settings.fontScale = static_cast<float>(value) / (1024.0f * pixelsPerInch);
        else if (name == "Net/DoubleClickTime")
            settings.doubleClickMs = value;
        else if (name == "Net/DoubleClickDistance")
            settings.doubleClickPixels = value;
    }
    return settings;
}

std::map<std::string, int> X11DesktopSettings::ParseManager(std::string_view bytes)
{
    enum Kind : std::uint32_t { integer = 0, text = 1, color = 2 };
    std::map<std::string, int> numbers;
    SettingsReader reader(bytes);
    if (!reader.Skip(8))  // byte order, padding, serial
        return numbers;
    const auto count = reader.Number(4);
    for (std::uint32_t i = 0; count && i < *count; ++i) {
        const auto kind = reader.Number(1);
        reader.Skip(1);
        const auto length = reader.Number(2);
        const auto name = length ? reader.PaddedText(*length) : std::nullopt;
        if (!kind || !name || !reader.Skip(4))  // the entry's own serial
            break;
        if (*kind == color && reader.Skip(8))
            continue;
        const auto value = reader.Number(4);
        if (!value)
            break;
        if (*kind == integer)
            numbers[*name] = static_cast<int>(*value);
        else if (*kind != text || !reader.PaddedText(*value))
            break;
    }
    return numbers;
}

std::optional<float> X11DesktopSettings::FindResource(std::string_view text, std::string_view name)
{
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!line.starts_with(name) || line.size() <= name.size() || line[name.size()] != ':')
            continue;
        line.remove_prefix(name.size() + 1);
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        float value = 0.0f;
        if (std::from_chars(line.data(), line.data() + line.size(), value).ec == std::errc())
            return value;
    }
    return std::nullopt;
}

}  // namespace gui
