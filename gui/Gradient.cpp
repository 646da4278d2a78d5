#include "gui/Gradient.h"

#include <algorithm>

namespace gui {

Gradient::Gradient(Color start, Color end)
{
    AddStop(start, 0.0f);
    AddStop(end, 1.0f);
}

Color Gradient::GetColorAt(float position) const { return stops.empty() ? Color() : ValueOf(position); }

bool Gradient::IsOpaque() const
{
    return !stops.empty() &&
           std::all_of(stops.begin(), stops.end(), [](const Stop& stop) { return stop.first.a == 255; });
}

Gradient FadedGradient(const IGradient& gradient, int alpha)
{
    Gradient faded;
    for (int i = 0; i < gradient.GetStopCount(); ++i)
        faded.AddStop(gradient.GetStopColor(i).Faded(alpha), gradient.GetStopPosition(i));
    return faded;
}

}  // namespace gui
