#include "dsp/FilterStyles.h"

#include <array>

namespace {

struct Entry {
    const char* fileName;
    float gain;  // linear
};

constexpr std::array entries{
    Entry{"Prime.fil", 1.8f},   Entry{"Gentle.fil", 1.0f},   Entry{"Raw.fil", 1.0f},
    Entry{"Tube.fil", 1.0f},    Entry{"Metal.fil", 1.0f},    Entry{"EasyGoing.fil", 1.0f},
    Entry{"Smooth.fil", 1.0f},  Entry{"Monopoly.fil", 1.4f},  // offered as "Hard"
    Entry{"Cheap.fil", 1.0f},                                 // offered as "Hollow"
    Entry{"Extreme.fil", 1.0f},
};

}  // namespace

FilterStyles::FilterStyles()
{
    styles.reserve(entries.size());
    for (const Entry& entry : entries)
        styles.emplace_back(entry.fileName, entry.gain);
}
