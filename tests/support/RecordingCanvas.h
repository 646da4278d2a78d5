#pragma once

#include "gui/ICanvas.h"

#include <vector>

/// A target that keeps the fills that reach it.
class RecordingCanvas : public gui::ICanvas {
public:
    struct Fill {
        gui::Rect rect;
        gui::Color color;
        friend bool operator==(const Fill&, const Fill&) = default;
    };

    void DrawBitmap(const gui::IBitmap&, const gui::Rect&, gui::Point, int) override {}
    void DrawMaskedBitmap(const gui::IBitmap&, const gui::Rect&, gui::Point, const gui::IBitmap&, gui::Point,
                          int) override
    {}
    void DrawCurves(const gui::CurveStyle&, const gui::Rect&, const gui::Rect&, gui::Point, int, int) override
    {}
    void DrawCurveBand(gui::BandMode, const gui::ICurve&, const gui::Rect&, const gui::Rect&, gui::Point,
                       gui::Color, gui::Color, float) override
    {}
    void FillGradient(const gui::IGradient&, const gui::Rect&, gui::Direction, float, float, int) override {}
    void DrawLine(gui::Point, gui::Point, const gui::Rect&, gui::Color, float) override {}
    void FillRect(const gui::Rect& rect, gui::Color color) override { fills.push_back({rect, color}); }
    const gui::IDeviceBacking& GetBacking() const override { return backing; }
    gui::Color GetPixel(gui::Point) const override { return {}; }
    void SetPixel(gui::Point, gui::Color) override {}

    std::vector<Fill> fills;

private:
    struct PlainBacking : gui::IDeviceBacking {
        float Snap(float value) const noexcept override { return value; }
        float Scale() const noexcept override { return 1.0f; }
    };
    PlainBacking backing;
};
