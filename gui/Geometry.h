#pragma once

#include <algorithm>
#include <cmath>

namespace gui {

/// Edges and positions closer than this are the same, in logical units.
constexpr float geometryTolerance = 0.001f;

constexpr bool IsSameEdge(float a, float b) noexcept
{
    return a - b <= geometryTolerance && b - a <= geometryTolerance;
}

/// A point or a size; y grows downwards.
template <class T>
struct BasicPoint {
    T x{};
    T y{};

    friend constexpr BasicPoint operator+(BasicPoint a, BasicPoint b) { return {a.x + b.x, a.y + b.y}; }
    friend constexpr BasicPoint operator-(BasicPoint a, BasicPoint b) { return {a.x - b.x, a.y - b.y}; }
    friend constexpr BasicPoint operator*(BasicPoint a, T factor) { return {a.x * factor, a.y * factor}; }
    friend constexpr bool operator==(BasicPoint a, BasicPoint b) = default;
};

/// A rectangle; right and bottom are exclusive.
template <class T>
struct BasicRect {
    T left{};
    T top{};
    T right{};
    T bottom{};

    static constexpr BasicRect At(BasicPoint<T> origin, BasicPoint<T> size)
    {
        return {origin.x, origin.y, origin.x + size.x, origin.y + size.y};
    }

    constexpr T Width() const { return right - left; }
    constexpr T Height() const { return bottom - top; }
    constexpr BasicPoint<T> Origin() const { return {left, top}; }
    constexpr BasicPoint<T> Size() const { return {Width(), Height()}; }
    constexpr BasicPoint<T> Middle() const { return {(left + right) / 2, (top + bottom) / 2}; }
    constexpr bool IsEmpty() const { return !(Width() > 0 && Height() > 0); }
    constexpr T Area() const { return IsEmpty() ? T{} : Width() * Height(); }
    constexpr bool Contains(BasicPoint<T> point) const
    {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }

    constexpr BasicRect Translated(BasicPoint<T> by) const
    {
        return {left + by.x, top + by.y, right + by.x, bottom + by.y};
    }
    /// Moves each edge inwards by `margin`; a negative one grows the rectangle.
    constexpr BasicRect Inset(T margin) const
    {
        return {left + margin, top + margin, right - margin, bottom - margin};
    }
    constexpr BasicRect Intersected(BasicRect other) const
    {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }
    /// The smallest rectangle around both; an empty one counts for nothing.
    constexpr BasicRect United(BasicRect other) const
    {
        if (IsEmpty())
            return other;
        if (other.IsEmpty())
            return *this;
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }

    friend constexpr bool operator==(BasicRect a, BasicRect b) = default;
};

using Point = BasicPoint<float>;
using Rect = BasicRect<float>;
using DeviceRect = BasicRect<int>;

/// True if no edge differs by more than `geometryTolerance`.
constexpr bool IsSameRect(const Rect& a, const Rect& b) noexcept
{
    return IsSameEdge(a.left, b.left) && IsSameEdge(a.top, b.top) && IsSameEdge(a.right, b.right) &&
           IsSameEdge(a.bottom, b.bottom);
}

/// The device pixel of a logical coordinate: the one rounding for windows, dirty rectangles and painting, so
/// that neighbours never leave a gap.
inline int ToDevice(float logical, float scale) noexcept
{
    return static_cast<int>(std::floor(logical * scale + 0.7f));
}

inline DeviceRect ToDevice(const Rect& rect, float scale) noexcept
{
    return {ToDevice(rect.left, scale), ToDevice(rect.top, scale), ToDevice(rect.right, scale),
            ToDevice(rect.bottom, scale)};
}

enum class Direction { Left = 0, Right = 1, Up = 2, Down = 3 };
constexpr bool IsHorizontal(Direction direction) noexcept
{
    return direction == Direction::Left || direction == Direction::Right;
}

enum class Orientation { Horizontal = 0, Vertical = 1 };
enum class Alignment { Left = 0, Centre = 1, Right = 2 };

}  // namespace gui
