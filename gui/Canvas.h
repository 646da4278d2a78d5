#pragma once

#include "foundation/Property.h"
#include "gui/ICanvas.h"

namespace gui {

/// What controls paint on: clip, alpha and origin in front of a target. All coordinates are relative to
/// `Origin`; nothing is drawn outside `Clip`.
class Canvas : public ICanvas {
public:
    /// What painting a subtree saves and restores.
    struct State {
        Rect clip;
        int alpha = 255;
        Point origin;
    };

    explicit Canvas(ICanvas& canvasTarget) : target(&canvasTarget) {}

    Property<Rect> Clip;       // relative to the origin
    Property<int> Alpha{255};  // multiplies that of every operation
    Property<Point> Origin;    // in the target

    State Save() const { return {Clip.value(), Alpha.value(), Origin.value()}; }
    void Restore(const State& state);

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
    const IDeviceBacking& GetBacking() const override { return target->GetBacking(); }
    Color GetPixel(Point point) const override;
    void SetPixel(Point point, Color color) override;

    /// The whole bitmap with its top left at `point`.
    void DrawBitmapAt(const IBitmap& bitmap, Point point, int alpha = 255);
    /// Keeps the ends of the picture and tiles its middle, along each axis whose size differs.
    /// @param corner  the least length of an end, logical units
    void DrawBitmapStretched(const IBitmap& bitmap, const Rect& destination, const Rect& source, float corner,
                             int alpha = 255);
    /// Each half of the picture stretched over its half of the destination along `axis`.
    void DrawBitmapStretchedHalves(const IBitmap& bitmap, const Rect& rect, const Rect& source, int alpha,
                                   Orientation axis);
    /// Four strips just outside the rectangle, each `width` thick.
    void StrokeRect(const Rect& rect, Color color, float width);

private:
    Point SnappedOrigin() const;
    /// What of `rect` lies within the clip, relative to the snapped origin.
    Rect Clipped(const Rect& rect, Point snapped) const;

    ICanvas* target;
};

}  // namespace gui
