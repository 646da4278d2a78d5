#include "host/ClapEventScan.h"

#include "clap_host/EventList.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace {

using Message = std::array<int, 4>;  // status, two data bytes, offset

struct Sink final : ClapEventScan::Sink {
    void applyParameter(clap_id, double) noexcept override {}
    void queueMidi(std::uint8_t status, std::uint8_t data1, std::uint8_t data2,
                   std::int32_t offset) noexcept override
    {
        messages.push_back({status, data1, data2, offset});
    }
    std::vector<Message> messages;
};

std::vector<Message> messagesOf(const std::vector<ClapEvent>& events)
{
    EventList list;
    for (const ClapEvent& event : events)
        list.add(event);
    Sink sink;
    ClapEventScan(list.record(), sink).advance(0, 512);
    return sink.messages;
}

ClapEvent ofType(ClapEvent event, std::uint16_t type)
{
    event.header.type = type;
    return event;
}

}  // namespace

TEST(ClapEventScan, TurnsNotesIntoMidi)
{
    struct Row {
        ClapEvent event;
        std::vector<Message> messages;
    };
    for (const auto& [event, messages] : {
             // Velocities are cut to whole steps; a note that starts has at least 1.
             Row{noteOnEvent(5, 0, 60, 1.0), {{0x90, 60, 127, 5}}},
             Row{noteOnEvent(0, 15, 127, 0.5), {{0x9F, 127, 63, 0}}},
             Row{noteOnEvent(0, 3, 0, 0.0), {{0x93, 0, 1, 0}}},
             Row{noteOnEvent(0, -1, 60, 1.0), {{0x9F, 60, 127, 0}}},  // any channel
             Row{noteOffEvent(7, 2, 60, 0.0), {{0x82, 60, 0, 7}}},
             Row{noteOffEvent(7, 2, 60, 0.75), {{0x82, 60, 95, 7}}},
             Row{noteOffEvent(0, 0, -1, 0.5), {}},
             Row{ofType(noteOffEvent(0, 0, 60, 0.0), CLAP_EVENT_NOTE_CHOKE), {}},
             Row{ofType(noteOffEvent(0, 0, 60, 0.0), CLAP_EVENT_NOTE_END), {}},
             Row{midiEvent(511, 0xE3, 1, 64), {{0xE3, 1, 64, 511}}},
             Row{midiEvent(0, 0x90, 60, 0), {{0x90, 60, 0, 0}}},
         })
        EXPECT_EQ(messagesOf({event}), messages) << event.header.type;
}

TEST(ClapEventScan, CountsOffsetsFromTheSubBlock)
{
    EventList list;
    list.add(midiEvent(10, 0xB0, 1, 1));
    list.add(parameterEvent(100, 0, 0.5));
    list.add(midiEvent(100, 0xB0, 1, 2));
    list.add(midiEvent(130, 0xB0, 1, 3));
    Sink sink;
    ClapEventScan scan(list.record(), sink);
    EXPECT_EQ(scan.advance(0, 512), 100u);
    EXPECT_EQ(sink.messages, (std::vector<Message>{{0xB0, 1, 1, 10}}));
    EXPECT_EQ(scan.advance(100, 512), 512u);
    EXPECT_EQ(sink.messages, (std::vector<Message>{{0xB0, 1, 1, 10}, {0xB0, 1, 2, 0}, {0xB0, 1, 3, 30}}));
}
