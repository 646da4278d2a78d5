#include "gui/BitmapResourceList.h"

#include "gui/Bitmap.h"
#include "gui/PNGFiler.h"

#include <algorithm>

namespace gui {

std::span<const BitmapFilerFactory* const> BitmapFilerFactories()
{
    static const PNGFilerFactory png;
    static const BitmapFilerFactory* const factories[]{&png};
    return factories;
}

BitmapResourceList::BitmapResourceList(DeviceBacking& deviceBacking) : backing(deviceBacking) {}

BitmapResourceList::~BitmapResourceList() = default;

Bitmap& BitmapResourceList::Get(const std::string& resourceName)
{
    // Resources differ neither in case nor in what follows the last dot.
    std::string key = resourceName.substr(0, resourceName.rfind('.'));
    std::transform(key.begin(), key.end(), key.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    const auto known = bitmaps.find(key);
    if (known != bitmaps.end())
        return *known->second;
    auto bitmap = std::make_unique<Bitmap>(backing);
    bitmap->Load(resourceName);
    return *bitmaps.emplace(std::move(key), std::move(bitmap)).first->second;
}

}  // namespace gui
