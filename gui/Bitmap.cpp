#include "gui/Bitmap.h"

#include "foundation/Resources.h"
#include "foundation/Tolerance.h"
#include "gui/BitmapFiler.h"
#include "gui/Resampling.h"

#include <algorithm>
#include <limits>

namespace gui {

namespace {

/// "Name.png" gives "Name_2x.png".
std::string DoubleSizeName(std::string_view name)
{
    const std::size_t dot = std::min(name.rfind('.'), name.size());
    return std::string(name.substr(0, dot)).append("_2x").append(name.substr(dot));
}

constexpr std::size_t maxRegions = 3;

}  // namespace

Bitmap::Bitmap(DeviceBacking& deviceBacking) : backing(&deviceBacking) { backing->AddListener(*this); }

Bitmap::~Bitmap() { backing->RemoveListener(*this); }

void Bitmap::Load(std::string_view resourceName)
{
    const std::string doubled = DoubleSizeName(resourceName);
    const bool plain = resourceExists(resourceName) && isNear(backing->Scale(), 1.0f);
    const bool useDoubled = !plain && resourceExists(doubled);
    const auto stream = openResource(useDoubled ? std::string_view(doubled) : resourceName);
    ReadSource(*stream, useDoubled ? 2.0f : 1.0f);
}

void Bitmap::ReadSource(std::istream& stream, float scale)
{
    const ScopedUpdate batch(*this);
    for (const BitmapFilerFactory* factory : BitmapFilerFactories()) {
        stream.clear();
        stream.seekg(0);
        const auto filer = factory->Create(*this, stream);
        if (!filer)
            continue;
        stream.clear();
        stream.seekg(0);
        filer->Read(stream);
        sourcePixels = std::move(pixels);
        sourceSize = deviceSize;
        sourceScale = scale;
        ScaleSource();
        return;
    }
    throw EBitmap("Unknown file format");
}

void Bitmap::ScaleSource()
{
    const float ratio = backing->Scale() / sourceScale;
    const BasicPoint<int> target{ToDevice(static_cast<float>(sourceSize.x), ratio),
                                 ToDevice(static_cast<float>(sourceSize.y), ratio)};
    deviceSize = target;
    if (isNear(ratio, 1.0f))
        pixels = sourcePixels;
    else if (target.x > 0 && target.y > 0)
        pixels = Resample(sourcePixels, sourceSize, ratio, target);
    else
        pixels.clear();
    SetLogicalSize(
        {static_cast<float>(sourceSize.x) / sourceScale, static_cast<float>(sourceSize.y) / sourceScale});
    MarkWhole();
}

void Bitmap::CopyFrom(const Bitmap& other)
{
    if (&other == this)
        return;
    const ScopedUpdate batch(*this);
    deviceSize = other.deviceSize;
    pixels = other.pixels;
    sourcePixels = other.sourcePixels;
    sourceSize = other.sourceSize;
    sourceScale = other.sourceScale;
    Opaque.assign(other.Opaque.value());
    SetLogicalSize(other.GetLogicalSize());
    MarkWhole();
}

void Bitmap::Clear()
{
    if (pixels.empty())
        return;
    std::fill(pixels.begin(), pixels.end(), transparentPixel);
    MarkDirty({0, 0, deviceSize.x, deviceSize.y});
    changed();
}

void Bitmap::SetSize(float width, float height)
{
    sourcePixels.clear();
    sourceSize = {};
    const float scale = backing->Scale();
    AllocatePixels({std::max(ToDevice(width, scale), 0), std::max(ToDevice(height, scale), 0)});
    SetLogicalSize({std::max(width, 0.0f), std::max(height, 0.0f)});
    MarkWhole();
}

void Bitmap::SetSourceSize(int width, int height)
{
    sourcePixels.clear();
    AllocatePixels({width, height});
    const float scale = backing->Scale();
    SetLogicalSize({static_cast<float>(width) / scale, static_cast<float>(height) / scale});
    MarkWhole();
}

void Bitmap::AllocatePixels(BasicPoint<int> size)
{
    deviceSize = size;
    pixels.assign(static_cast<std::size_t>(size.x) * static_cast<std::size_t>(size.y), transparentPixel);
}

void Bitmap::SetLogicalSize(Point size)
{
    logicalRect = Rect::At({}, size);
    canvas.Clip.assign(logicalRect);
}

void Bitmap::Colorize(gui::Color color)
{
    for (std::uint32_t& pixel : pixels) {
        // Black on white: what is missing from green, the brightest of the three, is the coverage.
        const int coverage = 255 - static_cast<int>(pixel >> 8 & 0xFF);
        pixel = ToPixel(color.Faded(coverage));
    }
    MarkWhole();
}

void Bitmap::MarkWhole()
{
    dirtyRegions.clear();
    uploadState = UploadState::Whole;
    changed();
}

void Bitmap::MarkDirty(const DeviceRect& rect)
{
    if (uploadState == UploadState::Whole)
        return;
    uploadState = UploadState::Partial;
    if (rect.IsEmpty())
        return;
    DeviceRect* cheapest = nullptr;
    int leastAdded = std::numeric_limits<int>::max();
    for (DeviceRect& region : dirtyRegions) {
        const int added = region.United(rect).Area() - region.Area();
        if (added < leastAdded) {
            leastAdded = added;
            cheapest = &region;
        }
    }
    if (cheapest && (dirtyRegions.size() == maxRegions || leastAdded <= rect.Area()))
        *cheapest = cheapest->United(rect);
    else
        dirtyRegions.push_back(rect);
}

std::unique_ptr<ITexture> Bitmap::TakeTexture() const { return std::move(texture); }

void Bitmap::SetTexture(std::unique_ptr<ITexture> newTexture) const
{
    texture = std::move(newTexture);
    dirtyRegions.clear();
    uploadState = UploadState::Current;
}

void Bitmap::BackingScaleChanged()
{
    if (!sourcePixels.empty()) {
        ScaleSource();
    } else {
        const Point size = GetLogicalSize();
        SetSize(size.x, size.y);
    }
}

}  // namespace gui
