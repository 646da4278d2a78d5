#include "core/MidiDecoder.h"

#include "MidiRecorder.h"
#include "core/DefaultEventReceiver.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

using Lines = std::vector<std::string>;

/// Tells a recorder everything, program changes too, under a name of its own.
struct RecordingChannel : AbstractChannelEventReceiver {
    RecordingChannel() { addListener(recorder); }
    void programChange(int bank, int program) noexcept override
    {
        recorder.add("program %d %d", bank, program);
    }
    MidiRecorder recorder;
};

struct Receiver : AbstractMusicEventReceiver,
                  AbstractMusicEventReceiver::SystemReceiver,
                  AbstractMusicEventReceiver::RawListener {
    explicit Receiver(std::initializer_list<int> occupied)
    {
        for (int entry : occupied)
            entries[static_cast<std::size_t>(entry)] = std::make_unique<RecordingChannel>();
        systemReceiver = this;
        rawListener = this;
    }
    void systemReset() noexcept override { ++systemResets; }
    void message(std::uint8_t status, std::uint8_t, std::uint8_t) noexcept override { raw.push_back(status); }
    Lines& at(int entry) { return static_cast<RecordingChannel*>(channel(entry))->recorder.heard; }

    int systemResets = 0;
    std::vector<int> raw;
};

MidiMessage bytes(int status, int data1, int data2)
{
    return {static_cast<std::uint8_t>(status), static_cast<std::uint8_t>(data1),
            static_cast<std::uint8_t>(data2), 0};
}

}  // namespace

TEST(MidiDecoder, TurnsEveryChannelMessageIntoItsCall)
{
    struct Row {
        MidiMessage message;
        Lines heard;
    };
    // Velocities, pressures and values are byte / 127.
    for (const auto& [message, heard] : {
             Row{bytes(0x80, 60, 127), {"off 60 1000"}},
             Row{bytes(0x8F, 0, 0), {"off 0 0"}},
             Row{bytes(0x90, 127, 1), {"on 127 8"}},
             Row{bytes(0x93, 60, 64), {"on 60 504"}},
             Row{bytes(0x90, 60, 0), {"off 60 0"}},
             Row{bytes(0xA0, 61, 127), {"poly pressure 61 1000"}},
             Row{bytes(0xB0, 7, 100), {"controller 7 100 787"}},
             Row{bytes(0xB0, 1, 127), {"controller 1 127 1000", "mod wheel 1000"}},
             Row{bytes(0xB0, 127, 0), {"controller 127 0 0"}},
             Row{bytes(0xB5, 123, 77), {"off 0 0"}},
             Row{bytes(0xC0, 5, 0), {"program 0 5"}},
             Row{bytes(0xD0, 127, 0), {"channel pressure 1000"}},
             Row{bytes(0xD0, 0, 200), {"channel pressure 0"}},  // its second byte means nothing
             // 14 bits, the low 7 first: 16383 steps of 1 / 16383 around the centre.
             Row{bytes(0xE0, 0, 0), {"bend -500"}},
             Row{bytes(0xE0, 0, 32), {"bend -250"}},
             Row{bytes(0xE0, 0, 64), {"bend 0"}},
             Row{bytes(0xE0, 127, 1), {"bend -484"}},  // 255 / 16383 - 0.5
             Row{bytes(0xE0, 127, 127), {"bend 500"}},
         }) {
        Receiver receiver{AbstractMusicEventReceiver::allChannels};
        MidiDecoder(receiver).decode(message);
        EXPECT_EQ(receiver.at(0), heard) << std::hex << int{message.status};
    }
}

TEST(MidiDecoder, RestsAWheelAHairAboveItsCentre)
{
    struct : MidiRecorder {
        void pitchBend(float value) noexcept override { seen = value; }
        float seen = -1.0f;
    } wheel;
    Receiver receiver{0};
    receiver.channel(0)->addListener(wheel);
    MidiDecoder(receiver).decode(bytes(0xE0, 0, 64));
    EXPECT_NEAR(wheel.seen, 3.05e-5, 1e-7);  // 8192 / 16383 - 0.5
}

TEST(MidiDecoder, DropsWhatIsNoWholeMessage)
{
    for (const MidiMessage& message :
         {bytes(60, 100, 0), bytes(0x7F, 0, 0), bytes(0x90, 128, 1), bytes(0x90, 1, 255), bytes(0xC0, 200, 0),
          bytes(0xF8, 0, 0), bytes(0xF0, 1, 2), bytes(0xFE, 0, 0)}) {
        Receiver receiver{0, 1, 9};
        MidiDecoder(receiver).decode(message);
        EXPECT_TRUE(receiver.at(0).empty() && receiver.at(1).empty() && receiver.at(9).empty());
        EXPECT_EQ(receiver.systemResets, 0);
        EXPECT_EQ(receiver.raw, std::vector<int>{message.status});
    }
}

TEST(MidiDecoder, TellsTheSystemReceiverOfAResetOnly)
{
    Receiver receiver{0};
    MidiDecoder decoder(receiver);
    decoder.decode(bytes(0xFF, 0, 0));
    EXPECT_EQ(receiver.systemResets, 1);
    receiver.systemReceiver = nullptr;
    receiver.rawListener = nullptr;
    decoder.decode(bytes(0xFF, 0, 0));
    EXPECT_TRUE(receiver.at(0).empty());
}

TEST(MidiDecoder, GivesAllChannelsToOneEntryAndEachToItsOwn)
{
    Receiver receiver{0, 1, 16};
    MidiDecoder decoder(receiver);
    decoder.decode(bytes(0x90, 60, 127));
    decoder.decode(bytes(0x97, 61, 127));  // nobody but the first entry
    decoder.decode(bytes(0x9F, 62, 127));
    EXPECT_EQ(receiver.at(0), (Lines{"on 60 1000", "on 61 1000", "on 62 1000"}));
    EXPECT_EQ(receiver.at(1), Lines{"on 60 1000"});
    EXPECT_EQ(receiver.at(16), Lines{"on 62 1000"});
}

TEST(MidiDecoder, HoldsABankUntilTheNextOnePerEntry)
{
    Receiver receiver{0, 1, 2};
    MidiDecoder decoder(receiver);
    for (const MidiMessage& message :
         {bytes(0xC0, 1, 0), bytes(0xB0, 0, 1), bytes(0xB0, 32, 2), bytes(0xC0, 3, 0), bytes(0xC0, 4, 0),
          bytes(0xB1, 32, 127), bytes(0xC1, 5, 0), bytes(0xB0, 0, 127), bytes(0xC0, 6, 0)})
        decoder.decode(message);
    // High 1 and low 2 are 1 x 128 + 2; each half leaves the other alone.
    EXPECT_EQ(receiver.at(1), (Lines{"program 0 1", "program 130 3", "program 130 4", "program 16258 6"}));
    EXPECT_EQ(receiver.at(2), Lines{"program 127 5"});
    EXPECT_EQ(receiver.at(0),
              (Lines{"program 0 1", "program 130 3", "program 130 4", "program 255 5", "program 16383 6"}));
}

TEST(DefaultEventReceiver, MovesItsOneReceiverToAnotherChannel)
{
    auto made = std::make_unique<RecordingChannel>();
    RecordingChannel& channel = *made;
    DefaultEventReceiver receiver(std::move(made));
    MidiDecoder decoder(receiver);
    const auto hears = [&](int midiChannel) {
        channel.recorder.heard.clear();
        decoder.decode(bytes(0xD0 | midiChannel, 127, 0));
        return channel.recorder.heard.size() == 1;
    };
    EXPECT_TRUE(hears(0) && hears(3) && hears(15));
    for (int entry : {4, 16, 1}) {
        receiver.entry.assign(entry);
        EXPECT_TRUE(hears(entry - 1)) << entry;
        EXPECT_FALSE(hears(entry % 16)) << entry;
        EXPECT_EQ(&receiver.channelReceiver(), &channel);
    }
    receiver.entry.assign(99);
    EXPECT_TRUE(hears(15));
    receiver.entry.assign(AbstractMusicEventReceiver::allChannels);
    EXPECT_TRUE(hears(0) && hears(15));
}
