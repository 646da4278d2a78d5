#include "stress/DamagedState.h"

#include <cstring>

std::string damaged(std::string state, Random& random)
{
    if (state.empty() || random.oneIn(4)) {
        state.resize(random.below(static_cast<std::uint32_t>(state.size()) + 1));
        return state;
    }
    for (std::uint32_t i = random.below(5); i-- > 0;)
        state[random.below(static_cast<std::uint32_t>(state.size()))] = static_cast<char>(random.bits());
    // Counts and values that nobody would write: the ends of 32 bits, and what is no number.
    constexpr std::uint32_t strange[] = {0xFFFFFFFF, 0x7FFFFFFF, 0x80000000, 0x7F800000, 0x7FC00000, 1};
    if (state.size() >= 4 && random.oneIn(2)) {
        const std::uint32_t number = random.pick(strange);
        std::memcpy(state.data() + 4 * random.below(static_cast<std::uint32_t>(state.size() / 4)), &number,
                    sizeof number);
    }
    return state;
}
