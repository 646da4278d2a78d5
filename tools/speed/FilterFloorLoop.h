#pragma once

// The bare loop, for the sources that build it for one kind of processor each.
#include "foundation/Float8.h"

inline namespace SORDELIN_VECTOR_VARIANT {

/// The loop of `Vector::width` lanes over samples that lie side by side.
template <class Vector>
class FilterFloorLoop {
public:
    /// @param samples  `count` times the lanes
    template <class Load, class Store>
    void run(int count, Load load, Store store) noexcept REALTIME
    {
        const Vector f(0.09f), q(0.5f), k(0.01f), one(1.0f), ten(10.0f);
        const Vector minusOne(-1.0f), minusTen(-10.0f);
        Vector b = band, l = low;
        for (int i = 0; i < count; ++i) {
            const Vector x = load(i);
            for (int round = 0; round < 3; ++round) {
                const Vector bent = multiplySubtractFrom(k * b, b * b, b);
                l = multiplyAdd(f, b, l);
                b = multiplyAdd(multiplySubtractFrom(q, b, x) - l, f, bent);
            }
            b = clamp(b, minusOne, one);
            l = clamp(l, minusTen, ten);
            store(i, l);
        }
        band = b;
        low = l;
    }

private:
    Vector band;
    Vector low;
};

}  // namespace SORDELIN_VECTOR_VARIANT
