#include "plot/PlotCanvas.h"

#include <cairo.h>

#include <array>
#include <cmath>
#include <cstring>

#if defined(SORDELIN_SANITIZED)
// Fontconfig links what it caches by coded offsets, which the leak detector doesn't recognise as pointers.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
#endif

void PlotCanvas::DestroySurface::operator()(_cairo_surface* dying) const noexcept
{
    cairo_surface_destroy(dying);
}

void PlotCanvas::DestroyContext::operator()(_cairo* dying) const noexcept { cairo_destroy(dying); }

PlotCanvas::PlotCanvas(double width, double height, double scale)
    : pixelsPerUnit(scale),
      surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, static_cast<int>(std::ceil(width * scale)),
                                         static_cast<int>(std::ceil(height * scale)))),
      context(cairo_create(surface.get()))
{
    cairo_scale(context.get(), scale, scale);
    cairo_set_line_join(context.get(), CAIRO_LINE_JOIN_ROUND);
}

void PlotCanvas::clear(PlotColour colour)
{
    use(colour);
    cairo_paint(context.get());
}

void PlotCanvas::fill(const PlotRect& rect, PlotColour colour)
{
    use(colour);
    cairo_rectangle(context.get(), rect.x, rect.y, rect.width, rect.height);
    cairo_fill(context.get());
}

void PlotCanvas::frame(const PlotRect& rect, PlotColour colour, double lineWidth)
{
    use(colour);
    cairo_set_line_width(context.get(), lineWidth);
    cairo_rectangle(context.get(), rect.x, rect.y, rect.width, rect.height);
    cairo_stroke(context.get());
}

void PlotCanvas::line(PlotPoint from, PlotPoint to, PlotColour colour, double lineWidth)
{
    use(colour);
    cairo_set_line_width(context.get(), lineWidth);
    cairo_move_to(context.get(), from.x, from.y);
    cairo_line_to(context.get(), to.x, to.y);
    cairo_stroke(context.get());
}

void PlotCanvas::dashedLine(PlotPoint from, PlotPoint to, PlotColour colour, double lineWidth)
{
    const std::array dashes{3.0, 3.0};
    cairo_set_dash(context.get(), dashes.data(), static_cast<int>(dashes.size()), 0.0);
    line(from, to, colour, lineWidth);
    cairo_set_dash(context.get(), nullptr, 0, 0.0);
}

void PlotCanvas::curve(const std::vector<PlotPoint>& points, const PlotRect& shown, PlotColour colour,
                       double lineWidth)
{
    cairo_save(context.get());
    cairo_rectangle(context.get(), shown.x, shown.y, shown.width, shown.height);
    cairo_clip(context.get());
    use(colour);
    cairo_set_line_width(context.get(), lineWidth);
    for (const PlotPoint& point : points)
        cairo_line_to(context.get(), point.x, point.y);
    cairo_stroke(context.get());
    cairo_restore(context.get());
}

void PlotCanvas::polygon(const std::vector<PlotPoint>& points, PlotColour colour, double outlineWidth)
{
    use(colour);
    for (const PlotPoint& point : points)
        cairo_line_to(context.get(), point.x, point.y);
    cairo_close_path(context.get());
    cairo_fill_preserve(context.get());
    cairo_set_line_width(context.get(), outlineWidth);
    cairo_stroke(context.get());
}

void PlotCanvas::text(PlotPoint at, const std::string& text, const PlotTextStyle& style)
{
    const double shift = style.align == PlotTextStyle::Align::Left     ? 0.0
                         : style.align == PlotTextStyle::Align::Centre ? 0.5
                                                                       : 1.0;
    const double width = shift > 0.0 ? textWidth(text, style) : 0.0;
    use(style.colour);
    selectFont(style);
    cairo_move_to(context.get(), at.x - shift * width, at.y);
    cairo_show_text(context.get(), text.c_str());
    cairo_new_path(context.get());
}

double PlotCanvas::textWidth(const std::string& text, const PlotTextStyle& style)
{
    selectFont(style);
    cairo_text_extents_t extents;
    cairo_text_extents(context.get(), text.c_str(), &extents);
    return extents.x_advance;
}

void PlotCanvas::image(const PlotRect& rect, const std::vector<std::uint32_t>& pixels, int columns)
{
    const int rows = static_cast<int>(pixels.size()) / columns;
    const std::unique_ptr<cairo_surface_t, DestroySurface> picture(
        cairo_image_surface_create(CAIRO_FORMAT_RGB24, columns, rows));
    unsigned char* target = cairo_image_surface_get_data(picture.get());
    const int stride = cairo_image_surface_get_stride(picture.get());
    for (int row = 0; row < rows; ++row) {
        const std::uint32_t* source = pixels.data() + static_cast<std::ptrdiff_t>(row) * columns;
        std::memcpy(target + static_cast<std::ptrdiff_t>(row) * stride, source,
                    static_cast<std::size_t>(columns) * sizeof(*source));
    }
    cairo_surface_mark_dirty(picture.get());

    cairo_save(context.get());
    cairo_translate(context.get(), rect.x, rect.y);
    cairo_scale(context.get(), rect.width / columns, rect.height / rows);
    cairo_set_source_surface(context.get(), picture.get(), 0.0, 0.0);
    cairo_pattern_set_extend(cairo_get_source(context.get()), CAIRO_EXTEND_PAD);
    cairo_rectangle(context.get(), 0.0, 0.0, columns, rows);
    cairo_fill(context.get());
    cairo_restore(context.get());
}

bool PlotCanvas::writePng(const std::filesystem::path& file)
{
    return cairo_surface_write_to_png(surface.get(), file.c_str()) == CAIRO_STATUS_SUCCESS;
}

void PlotCanvas::use(PlotColour colour)
{
    cairo_set_source_rgba(context.get(), colour.red, colour.green, colour.blue, colour.alpha);
}

void PlotCanvas::selectFont(const PlotTextStyle& style)
{
    const bool bold = style.weight == PlotTextStyle::Weight::Bold;
    cairo_select_font_face(context.get(), "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                           bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(context.get(), style.size);
}
