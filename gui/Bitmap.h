#pragma once

#include "foundation/NotifyEvent.h"
#include "foundation/Property.h"
#include "gui/Canvas.h"
#include "gui/DeviceBacking.h"
#include "gui/MemberProperty.h"

#include <istream>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace gui {

/// A picture couldn't be read.
class EBitmap : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A picture in memory and the software renderer that draws on it. A loaded one keeps its source and follows
/// the scale of its backing; any other is emptied to nothing at the new size when the scale changes.
class Bitmap : public PropertyOwner,
               public IBitmap,
               public ICanvas,
               public DeviceBacking::BackingScaleListener {
public:
    /// @param deviceBacking  outlives the bitmap
    explicit Bitmap(DeviceBacking& deviceBacking);
    ~Bitmap() override;

    float GetWidth() const { return GetLogicalSize().x; }
    void SetWidth(float width) { SetSize(width, GetHeight()); }
    float GetHeight() const { return GetLogicalSize().y; }
    void SetHeight(float height) { SetSize(GetWidth(), height); }
    Point GetSizeProperty() const { return GetLogicalSize(); }
    void SetSizeProperty(Point size) { SetSize(size.x, size.y); }

    MemberProperty<float, Bitmap, &Bitmap::GetWidth, &Bitmap::SetWidth> Width{*this};
    MemberProperty<float, Bitmap, &Bitmap::GetHeight, &Bitmap::SetHeight> Height{*this};
    MemberProperty<Point, Bitmap, &Bitmap::GetSizeProperty, &Bitmap::SetSizeProperty> Size{*this};
    Property<bool> Opaque{false, this};
    NotifyEvent OnChanged;  // size or whole content, once per update; drawing on it doesn't count

    /// Reads a picture resource, the double-size one unless the scale is 1 and a plain one exists.
    /// Throws EResource ("Resource not found") and EBitmap.
    void Load(std::string_view resourceName);
    /// Reads a picture of `scale` (1 or 2) pixels to a logical unit. Throws EBitmap.
    void ReadSource(std::istream& stream, float scale);
    void CopyFrom(const Bitmap& other);
    void Clear();
    /// Logical units; device pixels by ToDevice. The content is nothing afterwards.
    void SetSize(float width, float height);
    /// Turns darkness into coverage: a black-on-white picture becomes `color` where it was black.
    void Colorize(Color color);
    /// A canvas on the whole of this bitmap.
    Canvas& GetCanvas() { return canvas; }

    /// For filers: sets the device size directly. The content is nothing afterwards.
    void SetSourceSize(int width, int height);
    std::uint32_t* Pixels() noexcept { return pixels; }
    /// Widens the list of changed regions, at most three, by the least cost in area.
    virtual void MarkDirty(const DeviceRect& rect);

    // IBitmap
    BasicPoint<int> GetSize() const noexcept override { return deviceSize; }
    Point GetLogicalSize() const noexcept override { return logicalRect.Size(); }
    bool IsOpaque() const noexcept override { return Opaque.value(); }
    const std::uint32_t* GetPixels() const noexcept override { return pixels; }
    std::span<const DeviceRect> GetDirtyRegions() const noexcept override { return dirtyRegions; }
    UploadState GetUploadState() const noexcept override { return uploadState; }
    std::unique_ptr<ITexture> TakeTexture() const override;
    void SetTexture(std::unique_ptr<ITexture> newTexture) const override;

    // ICanvas
    void DrawBitmap(const IBitmap& bitmap, const Rect& destination, Point source, int alpha) override;
    void DrawMaskedBitmap(const IBitmap& bitmap, const Rect& destination, Point source, const IBitmap& mask,
                          Point maskSource, int alpha) override;
    void DrawCurves(const CurveStyle& style, const Rect& rect, const Rect& clip, Point origin, int flags,
                    int alpha) override;
    void DrawCurveBand(BandMode mode, const ICurve& curve, const Rect& clip, const Rect& band, Point origin,
                       Color top, Color bottom, float innerFraction) override;
    void FillGradient(const IGradient& gradient, const Rect& rect, Direction direction, float start,
                      float end, int alpha) override;
    void DrawLine(Point from, Point to, const Rect& clip, Color color, float width) override;
    void FillRect(const Rect& rect, Color color) override;
    const IDeviceBacking& GetBacking() const override { return *backing; }
    Color GetPixel(Point point) const override;
    void SetPixel(Point point, Color color) override;

    void BackingScaleChanged() override;
    void propertyChanged(AbstractProperty&) override { changed(); }

protected:
    void update() override { OnChanged.fire(this); }
    // A bitmap whose pixels lie elsewhere than on the heap overrides both, and has no pixels left when its
    // own part is destroyed.
    /// Gives back what `AllocatePixels` took; null is nothing.
    virtual void FreePixels(std::uint32_t* freed) noexcept;
    /// Takes memory for `deviceSize` pixels, whose content doesn't matter. Null, if that is empty.
    virtual std::uint32_t* AllocatePixels();

private:
    /// Memory for `size` pixels in place of the present ones.
    void Reallocate(BasicPoint<int> size);
    void ReleasePixels() noexcept;
    /// The source and the pixels made of it.
    void ReleaseSource() noexcept;
    static std::size_t PixelCount(BasicPoint<int> size) noexcept
    {
        return static_cast<std::size_t>(size.x) * static_cast<std::size_t>(size.y);
    }
    void SetLogicalSize(Point size);
    /// All is to be uploaded anew.
    void MarkWhole();
    /// The picture as it was read, scaled to the backing.
    void ScaleSource();
    /// @param heights  of a curve at the left edges of the area's columns and at the right edge of the last
    void FillBelowCurve(const DeviceRect& area, std::span<const float> heights, float baseline,
                        gui::Color atCurve, gui::Color atBaseline);
    std::uint32_t* PixelAt(int x, int y) noexcept
    {
        return pixels + static_cast<std::size_t>(y) * static_cast<std::size_t>(deviceSize.x) + x;
    }
    /// The device pixels of `rect` that lie on this bitmap.
    DeviceRect ToTarget(const Rect& rect) const noexcept;

    DeviceBacking* backing;
    DeviceRect clipRect;  // (0, 0, deviceSize): what can be drawn on
    Rect logicalRect;     // (0, 0, width, height)
    BasicPoint<int> deviceSize;
    std::uint32_t* pixels = nullptr;        // the source's own where that needs no scaling
    std::uint32_t* sourcePixels = nullptr;  // as loaded
    BasicPoint<int> sourceSize;
    float sourceScale = 1.0f;  // 1 or 2
    Canvas canvas{*this};
    // What a renderer keeps beside a picture it only reads.
    mutable std::vector<DeviceRect> dirtyRegions;
    mutable UploadState uploadState = UploadState::Whole;
    mutable std::unique_ptr<ITexture> texture;
};

}  // namespace gui
