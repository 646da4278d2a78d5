#pragma once

#include "presets/CustomPresetLoader.h"
#include "product/SordelinLimits.h"

#include <array>

class ModMatrixParamController;
class SordelinPlugin;
struct OldModulationTables;

/// Reads presets from before today's layout of 705 values. What they hold and today's list hasn't is turned
/// into what sounds like it; parameters that they don't know are at their defaults. Thread: main.
///
///   Version  Signature  Values
///   1        MDly       150         the first product: 2 LFOs, 21 slots, one feedback for both delays
///   2        MSlg       176 or 180  the one before this: 2 LFOs, 24 slots, an envelope, panned delays
///   3        MStd       704         today's list without "Delay Freeze"
///   4        MStd       705         today's list; the depths of some modulations were others
class SordelinPresetLoader : public CustomPresetLoader {
public:
    explicit SordelinPresetLoader(SordelinPlugin& sordelinPlugin);

protected:
    std::string signature(int presetVersion) const override;
    bool acceptsVersion(int presetVersion) override;
    void beginLoad(int presetVersion) override;
    void finishLoad(int presetVersion) override;

private:
    void mapOldValues(int presetVersion);
    void mapOldDelays(int presetVersion);
    void mapOldFilters();
    void mapOldRouting(int presetVersion);
    void mapOldLfos(int presetVersion);
    void mapOldSlots();

    void splitFeedback();
    void convertDelayTimes();
    void adjustDepths();
    void convertLfos();
    void convertLfo(const float* fields);
    void setSourceCounts(int presetVersion);
    void remapSlots(const OldModulationTables& tables);
    void fixSlotCount();
    void copyFeedbackSlots();
    void rescaleMidiSlots();

    static constexpr int oldLfos = 2;
    static constexpr int oldLfoFields = 7;  // of an LFO, at most

    SordelinPlugin& sordelin;
    // What has no parameter of its own today.
    float oldLevelA = 0.0f;    // feedback
    float oldBalanceA = 0.0f;  // -1..1, of both delays' feedback
    float oldLevelB = 0.0f;    // cross feedback
    float oldBalanceB = 0.0f;
    std::array<std::array<float, oldLfoFields>, oldLfos> lfoFields{};
    std::array<float, SordelinLimits::delays> oldModulationTimes{};  // read and dropped
    int lfoFieldCount = 0;                                           // in the file
    int slotCount = 0;
};
