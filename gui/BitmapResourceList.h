#pragma once

#include "gui/DeviceBacking.h"

#include <memory>
#include <string>
#include <vector>

namespace gui {

class Bitmap;

/// Pictures at one scale, each read once. It is made with `new` and one reference, and deletes itself with
/// the last. Thread: main.
class BitmapResourceList {
public:
    /// @param deviceBacking  outlives the list: no reference may stay behind when it goes
    explicit BitmapResourceList(DeviceBacking& deviceBacking);
    /// Takes the backing over.
    explicit BitmapResourceList(std::unique_ptr<DeviceBacking> deviceBacking);
    BitmapResourceList(const BitmapResourceList&) = delete;
    BitmapResourceList& operator=(const BitmapResourceList&) = delete;

    void AddReference() { ++referenceCount; }
    void Release();

    /// The picture of a resource, case-insensitive. Owned by the list. Throws EResource and EBitmap.
    Bitmap& Get(const std::string& resourceName);
    DeviceBacking& Backing() { return *backing; }

private:
    struct Entry {
        std::string key;
        std::unique_ptr<Bitmap> bitmap;
    };

    ~BitmapResourceList();

    std::vector<Entry> bitmaps;
    DeviceBacking* backing;
    bool ownsBacking;
    int referenceCount = 1;
};

struct ReleaseBitmapResources {
    void operator()(BitmapResourceList* list) const { list->Release(); }
};
/// One reference.
using BitmapResourceReference = std::unique_ptr<BitmapResourceList, ReleaseBitmapResources>;

}  // namespace gui
