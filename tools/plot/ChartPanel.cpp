#include "plot/ChartPanel.h"

#include "plot/PlotTheme.h"

#include <cmath>
#include <utility>

double ChartAxis::placeOf(double value) const
{
    if (scale == Scale::Logarithmic)
        return std::log(value / lowest) / std::log(highest / lowest);
    return (value - lowest) / (highest - lowest);
}

ChartPanel::ChartPanel(const PlotRect& chartArea, ChartAxis horizontal, ChartAxis vertical)
    : rect(chartArea), across(std::move(horizontal)), up(std::move(vertical))
{}

void ChartPanel::drawGrid(PlotCanvas& canvas, const std::string& caption) const
{
    using Style = PlotTextStyle;
    canvas.fill(rect, plotTheme::panel);
    for (const ChartAxis::Tick& tick : across.ticks) {
        const double x = placeOf({tick.at, up.lowest}).x;
        canvas.line({x, rect.y}, {x, rect.bottom()}, plotTheme::grid, 0.8);
        canvas.text({x, rect.bottom() + 15.0}, tick.label,
                    {plotTheme::labelSize, plotTheme::softInk, Style::Align::Centre});
    }
    for (const ChartAxis::Tick& tick : up.ticks) {
        const double y = placeOf({across.lowest, tick.at}).y;
        canvas.line({rect.x, y}, {rect.right(), y}, plotTheme::grid, 0.8);
        canvas.text({rect.x - plotTheme::labelGap, y + 3.5}, tick.label,
                    {plotTheme::labelSize, plotTheme::softInk, Style::Align::Right});
    }
    canvas.frame(rect, plotTheme::panelEdge, 0.8);
    canvas.text({rect.x, rect.y - 9.0}, caption,
                {plotTheme::captionSize, plotTheme::ink, Style::Align::Left, Style::Weight::Bold});
}

void ChartPanel::drawCurve(PlotCanvas& canvas, const std::vector<PlotPoint>& points, PlotColour colour,
                           double lineWidth) const
{
    std::vector<PlotPoint> places;
    places.reserve(points.size());
    for (const PlotPoint& point : points)
        places.push_back(placeOf(point));
    canvas.curve(places, rect, colour, lineWidth);
}

PlotPoint ChartPanel::placeOf(const PlotPoint& point) const
{
    return {rect.x + rect.width * across.placeOf(point.x), rect.bottom() - rect.height * up.placeOf(point.y)};
}
