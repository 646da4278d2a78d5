#include "render/MidiFile.h"

#include "render/RenderError.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

std::string bigEndian(std::uint32_t value, int bytes)
{
    std::string text;
    for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8)
        text += static_cast<char>(value >> shift & 0xFF);
    return text;
}

const std::string end = "\x00\xFF\x2F\x00"s;  // of a track, at once

std::string track(const std::string& events)
{
    return "MTrk" + bigEndian(static_cast<std::uint32_t>(events.size()), 4) + events;
}

/// @param division  ticks a beat
std::string file(std::uint32_t format, std::uint32_t division, const std::vector<std::string>& chunks,
                 std::uint32_t trackCount)
{
    std::string bytes =
        "MThd" + bigEndian(6, 4) + bigEndian(format, 2) + bigEndian(trackCount, 2) + bigEndian(division, 2);
    for (const std::string& chunk : chunks)
        bytes += chunk;
    return bytes;
}

std::string oneTrack(const std::string& events) { return file(0, 100, {track(events)}, 1); }

struct Expected {
    double seconds;
    int status;
    int data1;
    int data2;
};

void expectMessages(const std::string& bytes, const std::vector<Expected>& expected)
{
    const auto messages = readMidi(bytes, "song.mid");
    ASSERT_EQ(messages.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(messages[i].seconds, expected[i].seconds, 1e-12) << i;
        EXPECT_EQ(messages[i].status, expected[i].status) << i;
        EXPECT_EQ(messages[i].data1, expected[i].data1) << i;
        EXPECT_EQ(messages[i].data2, expected[i].data2) << i;
    }
}

std::string messageFor(const std::string& bytes)
{
    try {
        readMidi(bytes, "song.mid");
    } catch (const RenderError& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace

TEST(MidiFile, ReadsMessagesRunningStatusAndLongTimes)
{
    // 100 ticks a beat, 120 beats a minute: 5 ms a tick.
    expectMessages(oneTrack("\x00\x90\x3C\x40"                 // on
                            "\x0A\x3C\x00"                     // again a note-on, as it runs on
                            "\x81\x00\xC5\x07"                 // 128 ticks later
                            "\x00\x08"                         // runs on with one data byte
                            "\x00\xF0\x03\x01\x02\xF7"         // skipped
                            "\x00\xFF\x01\x02hi"               // skipped
                            "\xFF\xFF\xFF\x7F\xE0\x00\x40"s +  // the longest time: 2^28 - 1 ticks
                            end),
                   {{0.0, 0x90, 60, 64},
                    {0.05, 0x90, 60, 0},
                    {0.69, 0xC5, 7, 0},
                    {0.69, 0xC5, 8, 0},
                    {0.69 + 268435455 * 0.005, 0xE0, 0, 64}});
    expectMessages(oneTrack(end), {});
}

TEST(MidiFile, FollowsTheTemposOfAnyTrackThroughAllOfThem)
{
    // 60 beats a minute from tick 100 on, 240 from 200 on: 10 ms and 2.5 ms a tick.
    const std::string tempos = track("\x64\xFF\x51\x03\x0F\x42\x40\x64\xFF\x51\x03\x03\xD0\x90"s + end);
    const std::string notes = track("\x32\x90\x01\x01\x64\x90\x02\x01\x64\x90\x03\x01"s + end);
    const std::string strange = "XFIH" + bigEndian(3, 4) + "abc";
    for (const auto& chunks : {std::vector{tempos, strange, notes}, {notes, tempos}})
        expectMessages(file(1, 100, chunks, 2),
                       {{0.25, 0x90, 1, 1}, {0.5 + 0.5, 0x90, 2, 1}, {1.5 + 0.125, 0x90, 3, 1}});
}

TEST(MidiFile, KeepsTheOrderOfTracksAtOneTime)
{
    const std::string first = track("\x05\xB0\x01\x01"s + end);
    const std::string second = track("\x05\xB0\x01\x02\x00\xB0\x01\x03"s + end);
    expectMessages(file(1, 100, {first, second}, 2),
                   {{0.025, 0xB0, 1, 1}, {0.025, 0xB0, 1, 2}, {0.025, 0xB0, 1, 3}});
}

TEST(MidiFile, CountsByATimeCodeWhateverTheTempo)
{
    struct Row {
        std::uint32_t division;
        double secondsPerTick;
    };
    const std::string events = "\x00\xFF\x51\x03\x0F\x42\x40\x64\x90\x01\x01"s + end;
    for (const auto& [division, secondsPerTick] :
         {Row{0xE850, 1.0 / (24 * 80)}, Row{0xE728, 1.0 / (25 * 40)}, Row{0xE364, 1.001 / (30 * 100)},
          Row{0xE204, 1.0 / (30 * 4)}})
        expectMessages(file(0, division, {track(events)}, 1), {{100 * secondsPerTick, 0x90, 1, 1}});
}

TEST(MidiFile, NamesTheByteOfWhatDoesNotFit)
{
    struct Row {
        std::string bytes;
        const char* message;
    };
    // The header takes 14 bytes; the events of the first track begin at 22.
    for (const auto& [bytes, message] : {
             Row{"", "byte 0: no MIDI file"},
             Row{"RIFF", "byte 0: no MIDI file"},
             Row{"MThd\x00\x00"s, "byte 6: the file ends too soon"},
             Row{file(2, 100, {track(end)}, 1), "byte 8: format 2, where 0 or 1 can be read"},
             Row{file(0, 0, {track(end)}, 1), "byte 12: a time base that is none"},
             Row{file(0, 0xE700, {track(end)}, 1), "byte 12: a time base that is none"},
             Row{file(0, 0xF014, {track(end)}, 1), "byte 12: a time base that is none"},
             Row{file(0, 100, {}, 1), "byte 14: a length of 4 reaches beyond the end"},
             Row{file(0, 100, {"MTrk" + bigEndian(9, 4) + end}, 1),
                 "byte 22: a length of 9 reaches beyond the end"},
             Row{oneTrack(""), "byte 22: the file ends too soon"},
             Row{file(1, 100, {track("\x00\x90\x01"s), track(end)}, 2), "byte 25: the track ends too soon"},
             Row{oneTrack("\x00\x40\x40"s + end), "byte 23: data without a message that it belongs to"},
             Row{oneTrack("\x00\xB0\x01\x01\x00\xFF\x01\x00\x00\x01\x01"s + end),
                 "byte 31: data without a message that it belongs to"},
             Row{oneTrack("\x00\x90\x40\x90"s + end), "byte 25: a message that lacks data"},
             Row{oneTrack("\x00\xF8"s + end), "byte 23: a system message that files don't hold"},
             Row{oneTrack("\x80\x80\x80\x80\x00"s + end), "byte 22: a number of more than four bytes"},
             Row{oneTrack("\x00\xFF\x51\x03\x00\x00\x00"s + end), "byte 26: a tempo that is none"},
             Row{oneTrack("\x00\xFF\x51\x02\x0F\x42"s + end), "byte 26: a tempo that is none"},
             Row{oneTrack("\x00\xFF\x01\x7Fhi"s), "byte 26: a length of 127 reaches beyond the end"},
         })
        EXPECT_EQ(messageFor(bytes), std::string("song.mid, ").append(message));
}

TEST(MidiFile, RefusesEveryFileThatBreaksOff)
{
    const std::string whole =
        file(1, 96, {track("\x00\xFF\x51\x03\x0F\x42\x40"s + end), track("\x00\x90\x3C\x40"s + end)}, 2);
    EXPECT_EQ(messageFor(whole), "no error");
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_NE(messageFor(whole.substr(0, length)), "no error") << length;
}
