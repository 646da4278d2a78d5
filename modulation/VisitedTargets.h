#pragma once

#include "foundation/Realtime.h"

#include <vector>

/// A set of target ids that is emptied and filled in no time, without memory being taken:
///
///   dense   5  2  9          the members, in the order of their coming
///   sparse  . . 1 . . 0 ...  at [id]: where in `dense` the id would stand
class VisitedTargets {
public:
    explicit VisitedTargets(int targetCount)
        : sparse(static_cast<std::size_t>(targetCount), 0), dense(static_cast<std::size_t>(targetCount), 0)
    {}

    void clear() noexcept REALTIME { count = 0; }
    bool contains(int target) const noexcept REALTIME
    {
        const std::size_t place = sparse[static_cast<std::size_t>(target)];
        return place < count && dense[place] == target;
    }
    /// False if it was in already.
    bool insert(int target) noexcept REALTIME
    {
        if (contains(target))
            return false;
        sparse[static_cast<std::size_t>(target)] = count;
        dense[count++] = target;
        return true;
    }

private:
    std::vector<std::size_t> sparse;
    std::vector<int> dense;
    std::size_t count = 0;
};
