#include "speed/SpeedMeasurement.h"

#include <time.h>

#include <algorithm>

namespace {

double nanosecondsPerFrame(SpeedSubject& subject)
{
    const double start = threadSeconds();
    subject.playStretch();
    return (threadSeconds() - start) * 1e9 / static_cast<double>(SpeedSubject::stretchFrames);
}

}  // namespace

double threadSeconds() noexcept
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

std::vector<SpeedFigure> measureInTurn(const std::vector<SpeedSubject*>& subjects, int rounds,
                                       const std::function<void(double)>& tellDone)
{
    std::vector<std::vector<double>> times(subjects.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < subjects.size(); ++i)
            times[i].push_back(nanosecondsPerFrame(*subjects[i]));
        tellDone(static_cast<double>(round + 1) / rounds);
    }
    std::vector<SpeedFigure> figures;
    for (std::vector<double>& own : times) {
        std::ranges::sort(own);
        figures.push_back({own.front(), own[own.size() / 2]});
    }
    return figures;
}
