#include "gui/Bitmap.h"

#include "foundation/Resources.h"
#include "foundation/Tolerance.h"
#include "gui/BitmapFiler.h"
#include "gui/Resampling.h"

#include <algorithm>
#include <limits>
#include <utility>

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

Bitmap::~Bitmap()
{
    backing->RemoveListener(*this);
    ReleaseSource();
}

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
        sourcePixels = pixels;
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
    if (isNear(ratio, 1.0f)) {
        ReleasePixels();
        deviceSize = sourceSize;
        pixels = sourcePixels;
    } else {
        Reallocate(target);
        if (pixels)
            Resample({sourcePixels, PixelCount(sourceSize)}, sourceSize, ratio, target, pixels);
    }
    SetLogicalSize(
        {static_cast<float>(sourceSize.x) / sourceScale, static_cast<float>(sourceSize.y) / sourceScale});
    MarkWhole();
}

void Bitmap::CopyFrom(const Bitmap& other)
{
    if (&other == this)
        return;
    const ScopedUpdate batch(*this);
    ReleaseSource();
    if (other.sourcePixels) {
        Reallocate(other.sourceSize);
        std::copy_n(other.sourcePixels, PixelCount(other.sourceSize), pixels);
        sourcePixels = pixels;
    }
    sourceSize = other.sourceSize;
    sourceScale = other.sourceScale;
    if (other.pixels != other.sourcePixels) {
        Reallocate(other.deviceSize);
        std::copy_n(other.pixels, PixelCount(other.deviceSize), pixels);
    }
    deviceSize = other.deviceSize;
    Opaque.assign(other.Opaque.value());
    SetLogicalSize(other.GetLogicalSize());
    MarkWhole();
}

void Bitmap::Clear()
{
    if (!pixels)
        return;
    std::fill_n(pixels, PixelCount(deviceSize), transparentPixel);
    MarkDirty(clipRect);
    changed();
}

void Bitmap::SetSize(float width, float height)
{
    ReleaseSource();
    const float scale = backing->Scale();
    Reallocate({std::max(ToDevice(width, scale), 0), std::max(ToDevice(height, scale), 0)});
    SetLogicalSize({std::max(width, 0.0f), std::max(height, 0.0f)});
    MarkWhole();
}

void Bitmap::SetSourceSize(int width, int height)
{
    ReleaseSource();
    Reallocate({width, height});
    const float scale = backing->Scale();
    SetLogicalSize({static_cast<float>(width) / scale, static_cast<float>(height) / scale});
    MarkWhole();
}

std::uint32_t* Bitmap::AllocatePixels()
{
    const std::size_t count = PixelCount(deviceSize);
    return count > 0 ? new std::uint32_t[count] : nullptr;
}

void Bitmap::FreePixels(std::uint32_t* freed) noexcept { delete[] freed; }

void Bitmap::Reallocate(BasicPoint<int> size)
{
    ReleasePixels();
    deviceSize = size;
    pixels = AllocatePixels();
    std::fill_n(pixels, PixelCount(size), transparentPixel);
}

void Bitmap::ReleasePixels() noexcept
{
    // A picture that needs no scaling is its own source.
    if (pixels != sourcePixels)
        FreePixels(pixels);
    pixels = nullptr;
}

void Bitmap::ReleaseSource() noexcept
{
    ReleasePixels();
    FreePixels(std::exchange(sourcePixels, nullptr));
    sourceSize = {};
}

void Bitmap::SetLogicalSize(Point size)
{
    logicalRect = Rect::At({}, size);
    canvas.Clip.assign(logicalRect);
    clipRect = {0, 0, deviceSize.x, deviceSize.y};
}

void Bitmap::Colorize(gui::Color color)
{
    for (std::uint32_t& pixel : std::span(pixels, PixelCount(deviceSize))) {
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
    if (sourcePixels) {
        ScaleSource();
    } else {
        const Point size = GetLogicalSize();
        SetSize(size.x, size.y);
    }
}

}  // namespace gui
