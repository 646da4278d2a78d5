#pragma once

#include "dsp/ClipTable.h"
#include "dsp/FilterSettingTable.h"

#include <string>

class BinaryDataReader;

/// The measured behaviour of a filter: what a peak setting at a cut-off frequency does to its damping, its
/// cubic term and its clipper. Made once per process and shared by all filters that sound like it.
class DesignFilterStyle {
public:
    /// The three numbers that a filter asks for.
    struct Characteristic {
        float resonance = 0.0f;  // 1 is the edge; above it the filter oscillates by itself
        float cubic = 0.0f;      // damping that grows with the square of the level
        float clipDrive = 0.1f;  // how far a signal reaches into the clipper, at least 0.1
    };

    /// Rows of peak settings, 0 to 1, and as many columns of frequencies, in each of the three tables.
    static constexpr int tableSize = 11;

    /// @param fileName  of a resource; an empty one, or none of that name, leaves a plain resonant filter:
    /// the drive is
    ///                  0.1, there is no cubic term, and resonance is the peak setting
    /// @param gain      linear, in front of the filter; taken back behind it
    explicit DesignFilterStyle(const std::string& fileName = {}, float gain = 1.0f);

    /// Reads a .fil file. False if it isn't one, or if it ends early; what was read up to there stays.
    bool read(BinaryDataReader& reader);

    /// @param frequencyLog2  log2 of Hz; beyond the columns counts as the outermost one
    /// @param peak           0..1
    Characteristic characteristicAt(float frequencyLog2, float peak) const noexcept REALTIME;

    const ClipTable& clipTable() const noexcept REALTIME { return clip; }
    float gain() const noexcept REALTIME { return inputGain; }
    float asymmetry() const noexcept REALTIME { return clipAsymmetry; }
    /// log2 of Hz, of the first and of the last column.
    float minimumFrequency() const noexcept REALTIME { return lowestFrequency; }
    float maximumFrequency() const noexcept REALTIME { return highestFrequency; }

    const FilterSettingTable& clipDriveTable() const noexcept REALTIME { return clipDrive; }
    const FilterSettingTable& cubicTable() const noexcept REALTIME { return cubic; }
    const FilterSettingTable& resonanceTable() const noexcept REALTIME { return resonance; }

private:
    void setDefaults();
    void setAsymmetry(float asymmetry);
    void setFrequencies(float lowest, float highest);

    float inputGain;
    float clipAsymmetry = 0.3f;
    float lowestFrequency = 2.2666f;
    float highestFrequency = 16.2064f;
    float columnsPerLog2 = 0.0f;
    ClipTable clip{clipAsymmetry};
    FilterSettingTable clipDrive{tableSize};
    FilterSettingTable cubic{tableSize};
    FilterSettingTable resonance{tableSize};
};
