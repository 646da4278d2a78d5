#pragma once

#include "gui/Color.h"
#include "gui/Geometry.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace gui {

/// What a target is drawn at.
class IDeviceBacking {
public:
    virtual ~IDeviceBacking() = default;
    /// The logical coordinate of the device pixel that `value` falls on: floor(scale value + 0.7) / scale.
    virtual float Snap(float value) const noexcept = 0;
    /// Device pixels per logical unit.
    virtual float Scale() const noexcept = 0;
};

/// A picture's copy in the memory of an accelerated renderer; the bitmap owns it.
class ITexture {
public:
    virtual ~ITexture() = default;
};

/// A picture to draw. Pixels are rows from the top of 32-bit words, in memory B, G, R, T: the colours are
/// premultiplied by alpha, and T is 255 - alpha. 0xFF000000 is nothing at all, 0x00RRGGBB opaque.
class IBitmap {
public:
    enum class UploadState { Whole, Partial, Current };

    virtual ~IBitmap() = default;
    /// Device pixels.
    virtual BasicPoint<int> GetSize() const noexcept = 0;
    /// Logical units.
    virtual Point GetLogicalSize() const noexcept = 0;
    virtual bool IsOpaque() const noexcept = 0;
    /// Null if the size is empty. Rows follow each other without gaps.
    virtual const std::uint32_t* GetPixels() const noexcept = 0;
    /// What changed since the last upload, at most three rectangles of device pixels.
    virtual std::span<const DeviceRect> GetDirtyRegions() const noexcept = 0;
    virtual UploadState GetUploadState() const noexcept = 0;
    /// Gives the texture away, as to delete it; null if there is none.
    virtual std::unique_ptr<ITexture> TakeTexture() const = 0;
    /// Stores the texture that holds the present pixels. The upload state becomes `Current`.
    virtual void SetTexture(std::unique_ptr<ITexture> texture) const = 0;
};

/// A linear run of colours. `GetColorAt` remembers the segment it found: one thread at a time.
class IGradient {
public:
    virtual ~IGradient() = default;
    /// The segment, 0..stops, that `position` lies in: 0 below the first stop.
    virtual int FindSegment(float position) const = 0;
    virtual Color GetColorAt(float position) const = 0;
    virtual int GetStopCount() const = 0;
    virtual Color GetStopColor(int index) const = 0;
    virtual float GetStopPosition(int index) const = 0;
    /// True with at least one stop, if all are opaque.
    virtual bool IsOpaque() const = 0;
};

/// A function of x. Logical units, or what the drawer says.
class ICurve {
public:
    virtual ~ICurve() = default;
    virtual float ValueAt(float position) const = 0;
};

/// How `DrawCurves` paints: for each layer the area between its curve and its baseline, then a line along it.
struct CurveStyle {
    struct Layer {
        const ICurve* curve = nullptr;  // y in logical units at a logical x, both from the drawing's origin
        float baseline = 0.0f;          // y, logical units from the origin
        Color fillAtCurve;              // the fill runs between these two,
        Color fillAtBaseline;           // from the curve to the baseline
    };
    Color lineColor;
    Color fillColor;         // laid over the fills' colours; transparent leaves them
    float lineWidth = 2.0f;  // logical units
    std::vector<Layer> layers;
};

/// Where `DrawCurveBand` puts its light.
enum class BandMode {
    Columns = 0,  // each column over the whole height, its alpha by the value
    Middle = 1,   // a band around the middle, as thick as the value
};

/// A target to draw on: a bitmap or an accelerated renderer. Coordinates are logical units of the target,
/// alphas 0..255. Drawing outside the target draws nothing. Thread: main or render, with the root's lock
/// held.
class ICanvas {
public:
    virtual ~ICanvas() = default;
    /// Copies with blending, one device pixel to one.
    /// @param source  the point of the bitmap that lands on the top left of `destination`, logical units
    virtual void DrawBitmap(const IBitmap& bitmap, const Rect& destination, Point source, int alpha) = 0;
    /// The same with each pixel multiplied by the mask's alpha.
    virtual void DrawMaskedBitmap(const IBitmap& bitmap, const Rect& destination, Point source,
                                  const IBitmap& mask, Point maskSource, int alpha) = 0;
    /// @param flags  non-zero draws the fills without the lines
    virtual void DrawCurves(const CurveStyle& style, const Rect& rect, const Rect& clip, Point origin,
                            int flags, int alpha) = 0;
    /// Draws light whose strength follows `curve`, 0..1 at device columns from `origin`.x.
    /// @param innerFraction  0..1, the band's height at value 0
    virtual void DrawCurveBand(BandMode mode, const ICurve& curve, const Rect& clip, const Rect& band,
                               Point origin, Color top, Color bottom, float innerFraction) = 0;
    /// @param start, end  logical coordinates along `direction` of the positions 0 and 1
    virtual void FillGradient(const IGradient& gradient, const Rect& rect, Direction direction, float start,
                              float end, int alpha) = 0;
    /// An anti-aliased line. Below 0.01 device pixels in both axes nothing is drawn.
    virtual void DrawLine(Point from, Point to, const Rect& clip, Color color, float width) = 0;
    virtual void FillRect(const Rect& rect, Color color) = 0;
    virtual const IDeviceBacking& GetBacking() const = 0;
    /// The colour at a point, not premultiplied; all zero outside, or where the pixels can't be read.
    virtual Color GetPixel(Point point) const = 0;
    /// Fills one device pixel.
    virtual void SetPixel(Point point, Color color) = 0;
};

}  // namespace gui
