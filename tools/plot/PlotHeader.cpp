#include "plot/PlotHeader.h"

#include "plot/PlotTheme.h"

namespace {

constexpr double titleBaseLine = 48.0;
constexpr double subtitleBaseLine = 71.0;
constexpr double settingsBaseLine = 96.0;
constexpr double settingsLeading = 18.0;
constexpr double spaceBelow = 42.0;  // holds the caption of the first panel
constexpr std::size_t mostSettingLines = 6;

const PlotTextStyle titleStyle{24.0, plotTheme::ink, PlotTextStyle::Align::Left, PlotTextStyle::Weight::Bold};
const PlotTextStyle subtitleStyle{13.0, plotTheme::softInk};
const PlotTextStyle settingsStyle{12.0, plotTheme::ink};

}  // namespace

double PlotHeader::draw(PlotCanvas& canvas) const
{
    canvas.text({left, titleBaseLine}, content.title, titleStyle);
    canvas.text({left, subtitleBaseLine}, content.subtitle, subtitleStyle);
    double y = settingsBaseLine;
    for (const std::string& line : settingLines(canvas)) {
        canvas.text({left, y}, line, settingsStyle);
        y += settingsLeading;
    }
    return height(canvas);
}

double PlotHeader::height(PlotCanvas& canvas) const
{
    const auto lines = static_cast<double>(settingLines(canvas).size());
    return (lines > 0.0 ? settingsBaseLine + (lines - 1.0) * settingsLeading : subtitleBaseLine) + spaceBelow;
}

std::vector<std::string> PlotHeader::settingLines(PlotCanvas& canvas) const
{
    std::vector<std::string> lines;
    for (const std::string& setting : content.settings) {
        const std::string joined = lines.empty() ? setting : lines.back() + "   \u00b7   " + setting;
        if (!lines.empty() && canvas.textWidth(joined, settingsStyle) <= right - left)
            lines.back() = joined;
        else if (lines.size() < mostSettingLines)
            lines.push_back(setting);
        else {
            lines.back() += " \u2026";
            break;
        }
    }
    return lines;
}
