#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

struct _cairo;
struct _cairo_surface;

/// Red, green, blue and opacity, 0..1 each, sRGB.
struct PlotColour {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
    double alpha = 1.0;

    /// @param hex  0xRRGGBB
    static constexpr PlotColour fromHex(std::uint32_t hex, double alpha = 1.0) noexcept
    {
        return {((hex >> 16) & 255) / 255.0, ((hex >> 8) & 255) / 255.0, (hex & 255) / 255.0, alpha};
    }
};

struct PlotPoint {
    double x = 0.0;
    double y = 0.0;
};

struct PlotRect {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    constexpr double right() const noexcept { return x + width; }
    constexpr double bottom() const noexcept { return y + height; }
    constexpr double middle() const noexcept { return y + 0.5 * height; }
};

/// How a text is set, and where it lies relative to its point, which is on its base line.
struct PlotTextStyle {
    enum class Align { Left, Centre, Right };
    enum class Weight { Normal, Bold };

    double size = 10.0;  // of the letters, in units of the canvas
    PlotColour colour{};
    Align align = Align::Left;
    Weight weight = Weight::Normal;
};

/// A picture to draw on. Its units are pixels of a plain screen; `scale` makes each of them so many pixels.
class PlotCanvas {
public:
    PlotCanvas(double width, double height, double scale);

    double scale() const noexcept { return pixelsPerUnit; }

    void clear(PlotColour colour);
    void fill(const PlotRect& rect, PlotColour colour);
    void frame(const PlotRect& rect, PlotColour colour, double lineWidth);
    void line(PlotPoint from, PlotPoint to, PlotColour colour, double lineWidth);
    void dashedLine(PlotPoint from, PlotPoint to, PlotColour colour, double lineWidth);
    /// An open line through `points`; only what lies within `shown` is drawn.
    void curve(const std::vector<PlotPoint>& points, const PlotRect& shown, PlotColour colour,
               double lineWidth);
    /// Filled, with an outline of the same colour so that the thinnest part still shows.
    void polygon(const std::vector<PlotPoint>& points, PlotColour colour, double outlineWidth);
    /// UTF-8.
    void text(PlotPoint at, const std::string& text, const PlotTextStyle& style);
    double textWidth(const std::string& text, const PlotTextStyle& style);
    /// @param pixels  0xRRGGBB each, row by row from the top, `columns` per row; stretched to fill `rect`
    void image(const PlotRect& rect, const std::vector<std::uint32_t>& pixels, int columns);

    /// False if the file can't be written.
    bool writePng(const std::filesystem::path& file);

private:
    struct DestroySurface {
        void operator()(_cairo_surface* surface) const noexcept;
    };
    struct DestroyContext {
        void operator()(_cairo* context) const noexcept;
    };

    void use(PlotColour colour);
    void selectFont(const PlotTextStyle& style);

    double pixelsPerUnit;
    std::unique_ptr<_cairo_surface, DestroySurface> surface;
    std::unique_ptr<_cairo, DestroyContext> context;
};
