#include "platform/SmoothScroll.h"

namespace gui {

void SmoothScroll::ForgetValues()
{
    for (auto& [key, axis] : axes)
        axis.value.reset();
}

void SmoothScroll::SetAxis(int device, int number, const Axis& axis)
{
    if (axis.increment != 0.0)
        axes[{device, number}] = axis;
}

bool SmoothScroll::HasAxes(int device) const
{
    const auto first = axes.lower_bound({device, 0});
    return first != axes.end() && first->first.first == device;
}

std::optional<SmoothScroll::Step> SmoothScroll::Move(int device, int number, double value)
{
    const auto found = axes.find({device, number});
    if (found == axes.end())
        return std::nullopt;
    Axis& axis = found->second;
    const std::optional<double> before = axis.value;
    axis.value = value;
    if (!before || *before == value)
        return std::nullopt;
    const auto notches = static_cast<float>((value - *before) / axis.increment);
    // Downwards counts up.
    return Step{axis.orientation, axis.orientation == Orientation::Vertical ? -notches : notches};
}

}  // namespace gui
