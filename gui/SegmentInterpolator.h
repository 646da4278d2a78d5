#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace gui {

/// Values at positions, linear in between, and as the first or last one beyond them. `ToPrecise` and
/// `FromPrecise` turn a `Value` into the `Precise` that can be mixed, and back. Remembers the segment it
/// found last: one thread at a time.
template <class Value, class Precise>
class SegmentInterpolator {
public:
    using Stop = std::pair<Value, float>;

    /// Keeps the stops sorted; one at the same position as another comes behind it.
    void AddStop(Value value, float position)
    {
        const auto behind = std::upper_bound(stops.begin(), stops.end(), position,
                                             [](float x, const Stop& stop) { return x < stop.second; });
        stops.insert(behind, {value, position});
        lastSegment = 0;
    }

    friend bool operator==(const SegmentInterpolator& a, const SegmentInterpolator& b)
    {
        return a.stops == b.stops;
    }

protected:
    /// The number of stops at or below `position`.
    int Find(float position) const
    {
        if (!IsInSegment(lastSegment, position)) {
            const auto behind = std::upper_bound(stops.begin(), stops.end(), position,
                                                 [](float x, const Stop& stop) { return x < stop.second; });
            lastSegment = static_cast<std::size_t>(behind - stops.begin());
        }
        return static_cast<int>(lastSegment);
    }

    /// There is at least one stop.
    Value ValueOf(float position) const
    {
        const auto segment = static_cast<std::size_t>(Find(position));
        if (segment == 0)
            return stops.front().first;
        if (segment == stops.size())
            return stops.back().first;
        const Stop& from = stops[segment - 1];
        const Stop& to = stops[segment];
        const float share = (position - from.second) / (to.second - from.second);
        const Precise start = ToPrecise(from.first);
        return FromPrecise(start + (ToPrecise(to.first) - start) * share);
    }

    std::vector<Stop> stops;

private:
    bool IsInSegment(std::size_t segment, float position) const
    {
        return segment <= stops.size() && (segment == 0 || stops[segment - 1].second <= position) &&
               (segment == stops.size() || position < stops[segment].second);
    }

    mutable std::size_t lastSegment = 0;
};

}  // namespace gui
