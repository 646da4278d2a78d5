#include "clap_host/TransportClock.h"

#include <gtest/gtest.h>

TEST(TransportClock, CountsBeatsAndBarsFromTheStart)
{
    // At 90 a beat lasts 2/3 s: 32000 frames at 48 kHz, a bar of four 128000.
    struct Row {
        std::int64_t frame;
        double beats;
        int bar;
    };
    const TransportClock clock(90.0, 48000.0);
    for (const auto& [frame, beats, bar] :
         {Row{0, 0.0, 0}, Row{16000, 0.5, 0}, Row{127999, 127999.0 / 32000.0, 0}, Row{128000, 4.0, 1},
          Row{std::int64_t{128000} * 1000, 4000.0, 1000}}) {
        const clap_event_transport_t transport = clock.at(frame);
        const double one = static_cast<double>(CLAP_BEATTIME_FACTOR);
        EXPECT_NEAR(static_cast<double>(transport.song_pos_beats) / one, beats, 1e-9);
        EXPECT_NEAR(static_cast<double>(transport.song_pos_seconds) / one,
                    static_cast<double>(frame) / 48000.0, 1e-9);
        EXPECT_EQ(transport.bar_number, bar);
        EXPECT_EQ(transport.bar_start, CLAP_BEATTIME_FACTOR * 4 * bar);
        EXPECT_EQ(transport.tempo, 90.0);
        EXPECT_TRUE(transport.flags & CLAP_TRANSPORT_HAS_TEMPO);
        EXPECT_TRUE(transport.flags & CLAP_TRANSPORT_IS_PLAYING);
    }
}

TEST(TransportClock, BeginsWhereItIsTold)
{
    // 6.5 beats at 90 last 6.5 x 2/3 s.
    const clap_event_transport_t transport = TransportClock(90.0, 48000.0, 6.5).at(16000);
    const double one = static_cast<double>(CLAP_BEATTIME_FACTOR);
    EXPECT_NEAR(static_cast<double>(transport.song_pos_beats) / one, 7.0, 1e-9);
    EXPECT_NEAR(static_cast<double>(transport.song_pos_seconds) / one, 7.0 * 2.0 / 3.0, 1e-9);
    EXPECT_EQ(transport.bar_number, 1);
    EXPECT_EQ(transport.bar_start, CLAP_BEATTIME_FACTOR * 4);
}
