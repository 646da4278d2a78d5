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

BitmapResourceList::BitmapResourceList(DeviceBacking& deviceBacking)
    : backing(&deviceBacking), ownsBacking(false)
{}

BitmapResourceList::BitmapResourceList(std::unique_ptr<DeviceBacking> deviceBacking)
    : backing(deviceBacking.release()), ownsBacking(true)
{}

BitmapResourceList::~BitmapResourceList()
{
    bitmaps.clear();  // they listen to the backing
    if (ownsBacking)
        delete backing;
}

void BitmapResourceList::Release()
{
    if (--referenceCount == 0)
        delete this;
}

Bitmap& BitmapResourceList::Get(const std::string& resourceName)
{
    // Resources differ neither in case nor in what follows the last dot.
    std::string key = resourceName.substr(0, resourceName.rfind('.'));
    std::transform(key.begin(), key.end(), key.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    const auto known =
        std::find_if(bitmaps.begin(), bitmaps.end(), [&key](const Entry& entry) { return entry.key == key; });
    if (known != bitmaps.end())
        return *known->bitmap;
    auto bitmap = std::make_unique<Bitmap>(*backing);
    bitmap->Load(resourceName);
    bitmaps.push_back({std::move(key), std::move(bitmap)});
    return *bitmaps.back().bitmap;
}

}  // namespace gui
