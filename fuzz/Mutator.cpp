#include "Mutator.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

// Where programs stumble: at the ends of ranges, and one beyond.
constexpr std::array<std::uint32_t, 12> lies{0u,          1u,          0xFFu,       0x7FFFu,
                                             0xFFFFu,     0x10000u,    0x7FFFFFFFu, 0x80000000u,
                                             0xFFFFFFFFu, 0xFFFFFFF0u, 0x7FC00000u, 0x7F800000u};

}  // namespace

std::string Mutator::mutate(const std::string& original)
{
    std::string bytes = original;
    // Few wounds for the most part: many are caught at the first one.
    for (std::uint32_t wounds = 1 + below(2) * below(8); wounds > 0; --wounds)
        damage(bytes);
    return bytes;
}

void Mutator::damage(std::string& bytes)
{
    if (bytes.empty()) {
        bytes.push_back(static_cast<char>(below(256)));
        return;
    }
    // Heads are short, and everything depends on them.
    const std::size_t reach = below(2) ? bytes.size() : std::min<std::size_t>(bytes.size(), 128);
    const std::size_t place = below(reach);
    const std::size_t length = std::min<std::size_t>(1 + below(64), bytes.size() - place);
    switch (below(8)) {
    case 0:
        bytes[place] = static_cast<char>(bytes[place] ^ (1 << below(8)));
        break;
    case 1:
        bytes[place] = static_cast<char>(below(256));
        break;
    case 2:
        bytes.resize(place);
        break;
    case 3:
        bytes.erase(place, length);
        break;
    case 4:
        bytes.insert(place, bytes.substr(place, length));
        break;
    case 5:
        if (place + 4 <= bytes.size())
            std::memcpy(bytes.data() + place, &lies[below(lies.size())], 4);
        break;
    case 6:
        std::rotate(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(place), bytes.end());
        break;
    default:
        for (std::size_t i = 0; i < length; ++i)
            bytes[place + i] = static_cast<char>(below(256));
        break;
    }
}
