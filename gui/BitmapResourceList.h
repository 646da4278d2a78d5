#pragma once

#include "gui/DeviceBacking.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace gui {

class Bitmap;

/// The pictures of one interface, each read once.
class BitmapResourceList {
public:
    explicit BitmapResourceList(DeviceBacking& deviceBacking);
    ~BitmapResourceList();

    /// The picture of a resource, case-insensitive. Owned by the list. Throws EResource and EBitmap.
    Bitmap& Get(const std::string& resourceName);

private:
    DeviceBacking& backing;
    std::unordered_map<std::string, std::unique_ptr<Bitmap>> bitmaps;
};

}  // namespace gui
