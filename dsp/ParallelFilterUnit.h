#pragma once

#include "dsp/FilterUnit.h"

#include <array>
#include <memory>
#include <vector>

class GenericFilter;

/// Runs up to four filters at once, as the lanes of one vector. The filter that is pulled first in a
/// sub-block runs all of them; no lane may depend on another one within it. Thread: audio, but for attaching.
class ParallelFilterUnit : public FilterUnit {
public:
    static constexpr int lanes = 4;

    explicit ParallelFilterUnit(wave::Environment& owner);
    ~ParallelFilterUnit() override;

    /// The order of attachment is the order of the lanes. Allocates nothing.
    void attach(GenericFilter& filter) noexcept REALTIME;
    void detach(GenericFilter& filter) noexcept REALTIME;

    /// Filters what all attached filters have to, and shows each its result. All lanes have the shape of the
    /// filter that is pulled first: they share their controls.
    void run(const GenericFilter& pulled, int count) noexcept REALTIME;

protected:
    /// Once per sub-block, before coefficients are set.
    virtual void prepare() noexcept REALTIME = 0;
    virtual void setCoefficients(int lane, int segment, float frequency, float peak,
                                 float gain) noexcept REALTIME = 0;
    /// Gives a lane the coefficients that another one has in the same segment.
    virtual void copyCoefficients(int fromLane, int toLane, int segment) noexcept REALTIME = 0;
    /// Filters `laneInputs` into `laneOutputs`, in the segments of `segmentLengths`.
    virtual void processLanes(int count) noexcept REALTIME = 0;
    /// The same for `leader` and then for this one, whose inputs are the leader's outputs.
    virtual void processLanesInSeries(int) noexcept REALTIME {}
    virtual void clearLane(int lane) noexcept REALTIME = 0;

    ParallelFilterUnit* leader = nullptr;  // whose lanes often come before the same lanes of this one
    std::array<wave::Block*, lanes> laneInputs;
    std::array<std::unique_ptr<wave::Block>, lanes> laneOutputs;
    std::array<bool, lanes> laneActive{};

private:
    void takeShape(const GenericFilter& filter) noexcept REALTIME;
    bool runBehindLeader(int count) noexcept REALTIME;
    /// Each lane has the same lane of the leader as its input, which hasn't run yet.
    bool canFollow() const noexcept REALTIME;
    /// What leaves the lanes is what leaves their filters.
    bool passesWhole() const noexcept REALTIME;
    bool gatherLanes(int count) noexcept REALTIME;
    bool gatherLane(std::size_t lane, wave::Block& in, int count) noexcept REALTIME;
    void prepareLanes(int count) noexcept REALTIME;
    void finishLanes(int count) noexcept REALTIME;
    void cutSegments(int count) noexcept REALTIME;
    int commonSegmentEnd(int from, int count) const noexcept REALTIME;
    void setLaneCoefficients(int segment, int at) noexcept REALTIME;
    /// An earlier lane that is shaped alike at this sample, or the lane itself.
    std::size_t twinOf(std::size_t lane, int at) const noexcept REALTIME;

    std::vector<GenericFilter*> filters;
    std::array<FilterSignals, lanes> laneSignals{};
    std::array<bool, lanes> laneNeedsClear{};  // a lane that comes back starts from silence
};
