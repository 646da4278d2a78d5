#include "clap_host/TransportClock.h"

#include <cmath>

namespace {

constexpr int beatsPerBar = 4;

std::int64_t fixedPoint(double position) noexcept
{
    // Beats and seconds have the same factor.
    return std::llround(position * static_cast<double>(CLAP_BEATTIME_FACTOR));
}

}  // namespace

TransportClock::TransportClock(double tempoBpm, double sampleRate, double startBeats) noexcept
    : tempo(tempoBpm), framesPerSecond(sampleRate), firstBeat(startBeats)
{}

clap_event_transport_t TransportClock::at(std::int64_t frame) const noexcept
{
    const double secondsPerBeat = 60.0 / tempo;
    const double played = static_cast<double>(frame) / framesPerSecond;
    const double seconds = firstBeat * secondsPerBeat + played;
    const double beats = firstBeat + played / secondsPerBeat;
    const double bar = std::floor(beats / beatsPerBar);

    clap_event_transport_t transport{};
    transport.header = {sizeof(transport), 0, CLAP_CORE_EVENT_SPACE_ID, CLAP_EVENT_TRANSPORT, 0};
    transport.flags = CLAP_TRANSPORT_HAS_TEMPO | CLAP_TRANSPORT_HAS_BEATS_TIMELINE |
                      CLAP_TRANSPORT_HAS_SECONDS_TIMELINE | CLAP_TRANSPORT_HAS_TIME_SIGNATURE |
                      CLAP_TRANSPORT_IS_PLAYING;
    transport.song_pos_beats = fixedPoint(beats);
    transport.song_pos_seconds = fixedPoint(seconds);
    transport.tempo = tempo;
    transport.bar_start = fixedPoint(bar * beatsPerBar);
    transport.bar_number = static_cast<std::int32_t>(bar);
    transport.tsig_num = beatsPerBar;
    transport.tsig_denom = 4;
    return transport;
}
