#include "dsp/ParallelFilterUnit.h"

#include "dsp/GenericFilter.h"

#include <algorithm>

ParallelFilterUnit::ParallelFilterUnit(wave::Environment& owner) : FilterUnit(owner)
{
    filters.reserve(lanes);
    laneInputs.fill(&owner.silentBlock());
    for (auto& output : laneOutputs) {
        output = std::make_unique<wave::Block>(owner);
        owner.shareMemory(*output);
    }
}

ParallelFilterUnit::~ParallelFilterUnit()
{
    for (const auto& output : laneOutputs)
        environment().withdraw(*output);
}

void ParallelFilterUnit::attach(GenericFilter& filter) noexcept { filters.push_back(&filter); }

void ParallelFilterUnit::detach(GenericFilter& filter) noexcept
{
    const auto place = std::find(filters.begin(), filters.end(), &filter);
    if (place == filters.end())
        return;
    // The lanes behind it move up, with what they hold: they have to begin anew.
    filters.erase(place);
    laneNeedsClear.fill(true);
}

void ParallelFilterUnit::run(const GenericFilter& pulled, int count) noexcept
{
    takeShape(pulled);
    if (canFollow() && runBehindLeader(count))
        return;
    if (gatherLanes(count)) {
        prepareLanes(count);
        processLanes(count);
    }
    finishLanes(count);
}

void ParallelFilterUnit::takeShape(const GenericFilter& filter) noexcept
{
    response = filter.response.value();
    slope = filter.slope.value();
}

bool ParallelFilterUnit::canFollow() const noexcept
{
    if (!leader || filters.empty() || filters.size() != leader->filters.size())
        return false;
    for (std::size_t lane = 0; lane < filters.size(); ++lane) {
        const GenericFilter* const before = leader->filters[lane];
        wave::Producer* const input = filters[lane]->input;
        if (!input || &input->origin() != before || before->isComputed())
            return false;
    }
    return true;
}

// Two loops at once take little longer than one. Returns false with the leader done, if the two had to be run
// one after the other.
bool ParallelFilterUnit::runBehindLeader(int count) noexcept
{
    leader->takeShape(*leader->filters.front());
    const bool leaderRuns = leader->gatherLanes(count);
    if (leaderRuns)
        leader->prepareLanes(count);
    bool together = leaderRuns && leader->passesWhole();
    if (together) {
        bool any = false;
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            wave::Block& in =
                lane < filters.size() ? *leader->laneOutputs[lane] : environment().silentBlock();
            any = gatherLane(lane, in, count) || any;
        }
        together = any;
    }
    if (together) {
        prepareLanes(count);
        processLanesInSeries(count);
        leader->finishLanes(count);
        finishLanes(count);
        return true;
    }
    if (leaderRuns)
        leader->processLanes(count);
    leader->finishLanes(count);
    return false;
}

bool ParallelFilterUnit::passesWhole() const noexcept
{
    for (std::size_t lane = 0; lane < filters.size(); ++lane) {
        if (!laneActive[lane] || !filters[lane]->passesWhole())
            return false;
    }
    return true;
}

void ParallelFilterUnit::prepareLanes(int count) noexcept
{
    beginBlock(count);
    prepare();
    cutSegments(count);
}

void ParallelFilterUnit::finishLanes(int count) noexcept
{
    for (std::size_t lane = 0; lane < filters.size(); ++lane)
        filters[lane]->finish(*laneInputs[lane], *laneOutputs[lane], count);
}

bool ParallelFilterUnit::gatherLanes(int count) noexcept
{
    bool any = false;
    for (std::size_t lane = 0; lane < lanes; ++lane) {
        wave::Block& in =
            lane < filters.size() ? filters[lane]->pullInput(count) : environment().silentBlock();
        any = gatherLane(lane, in, count) || any;
    }
    return any;
}

bool ParallelFilterUnit::gatherLane(std::size_t lane, wave::Block& in, int count) noexcept
{
    laneInputs[lane] = &in;
    laneActive[lane] = lane < filters.size() && filters[lane]->gather(count, laneSignals[lane]);
    if (laneActive[lane] && laneNeedsClear[lane])
        clearLane(static_cast<int>(lane));
    laneNeedsClear[lane] = !laneActive[lane];
    return laneActive[lane];
}

void ParallelFilterUnit::cutSegments(int count) noexcept
{
    int segment = 0;
    for (int at = 0; at < count; ++segment) {
        const int end = commonSegmentEnd(at, count);
        setLaneCoefficients(segment, at);
        segmentLengths[static_cast<std::size_t>(segment)] = end - at;
        at = end;
    }
}

int ParallelFilterUnit::commonSegmentEnd(int from, int count) const noexcept
{
    bool still = true;
    for (std::size_t lane = 0; lane < lanes; ++lane)
        still = still && (!laneActive[lane] || (laneSignals[lane].allConstant && !laneSignals[lane].gate));
    if (still)
        return count;
    int end = std::min(from + longestSegment, count);
    for (std::size_t lane = 0; lane < lanes; ++lane) {
        if (laneActive[lane])
            end = segmentEnd(laneSignals[lane], from, end);
    }
    return end;
}

void ParallelFilterUnit::setLaneCoefficients(int segment, int at) noexcept
{
    for (std::size_t lane = 0; lane < lanes; ++lane) {
        if (!laneActive[lane])
            continue;
        const FilterSignals& signals = laneSignals[lane];
        // The lanes of a filter in the loop and on the way out have the same controls, and so have both
        // channels where nothing spreads them.
        const std::size_t twin = twinOf(lane, at);
        if (twin != lane) {
            copyCoefficients(static_cast<int>(twin), static_cast<int>(lane), segment);
            continue;
        }
        setCoefficients(static_cast<int>(lane), segment, signals.frequency[at], signals.peakAt(at),
                        signals.gain[at]);
    }
}

std::size_t ParallelFilterUnit::twinOf(std::size_t lane, int at) const noexcept
{
    const FilterSignals& own = laneSignals[lane];
    for (std::size_t other = 0; other < lane; ++other) {
        const FilterSignals& signals = laneSignals[other];
        if (laneActive[other] && signals.frequency[at] == own.frequency[at] &&
            signals.peakAt(at) == own.peakAt(at) && signals.gain[at] == own.gain[at])
            return other;
    }
    return lane;
}
