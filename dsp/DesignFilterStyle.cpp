#include "dsp/DesignFilterStyle.h"

#include "foundation/BinaryResourceReader.h"
#include "foundation/Resources.h"
#include "foundation/Tolerance.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr const char* fileMagic = "MVil";
constexpr float lowestDrive = 0.1f;
// Far beyond what a voice asks for. What lies outside is damage.
constexpr float leastAsymmetry = 1e-3f;
constexpr float mostAsymmetry = 1e3f;
constexpr float farthestFrequency = 100.0f;  // log2 of Hz
constexpr float largestSetting = 1e4f;

/// `x` within the table. Also a number that is none becomes a place in it.
float placeWithin(float x) noexcept
{
    return x > 0.0f ? std::min(x, static_cast<float>(DesignFilterStyle::tableSize - 1)) : 0.0f;
}

}  // namespace

DesignFilterStyle::DesignFilterStyle(const std::string& fileName, float gain) : inputGain(gain)
{
    setDefaults();
    if (!fileName.empty() && resourceExists(fileName)) {
        BinaryResourceReader reader(fileName);
        read(reader);
    }
}

bool DesignFilterStyle::read(BinaryDataReader& reader)
{
    if (!reader.readMagic(fileMagic))
        return false;
    const float asymmetry = reader.readFloat();
    const float lowest = reader.readFloat();
    const float highest = reader.readFloat();
    if (!reader.good() || !(asymmetry >= leastAsymmetry && asymmetry <= mostAsymmetry) ||
        !(lowest < highest && std::fabs(lowest) <= farthestFrequency &&
          std::fabs(highest) <= farthestFrequency))
        return false;
    setAsymmetry(asymmetry);
    setFrequencies(lowest, highest);
    for (FilterSettingTable* table : {&clipDrive, &cubic, &resonance}) {
        FilterSettingTable next(tableSize);
        if (reader.readInt() != tableSize)
            return false;
        next.readValues(reader);
        if (!reader.good() || !(next.largest() <= largestSetting))
            return false;
        *table = next;
    }
    return true;
}

auto DesignFilterStyle::characteristicAt(float frequencyLog2, float peak) const noexcept -> Characteristic
{
    const float column = placeWithin((frequencyLog2 - lowestFrequency) * columnsPerLog2);
    const float row = placeWithin(static_cast<float>(tableSize - 1) * peak);
    return {resonance.lookup(column, row), cubic.lookup(column, row),
            std::max(clipDrive.lookup(column, row), lowestDrive)};
}

void DesignFilterStyle::setDefaults()
{
    setFrequencies(lowestFrequency, highestFrequency);
    for (int row = 0; row < tableSize; ++row) {
        for (int column = 0; column < tableSize; ++column) {
            clipDrive.set(row, column, lowestDrive);
            resonance.set(row, column, static_cast<float>(row) / static_cast<float>(tableSize - 1));
        }
    }
}

void DesignFilterStyle::setAsymmetry(float asymmetry)
{
    if (isNear(asymmetry, clipAsymmetry))
        return;
    clipAsymmetry = asymmetry;
    clip.build(asymmetry);
}

void DesignFilterStyle::setFrequencies(float lowest, float highest)
{
    lowestFrequency = lowest;
    highestFrequency = highest;
    columnsPerLog2 = static_cast<float>(tableSize - 1) / (highest - lowest);
}
