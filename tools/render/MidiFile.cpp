#include "render/MidiFile.h"

#include "clap_host/QuotedText.h"
#include "render/RenderError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>

namespace {

constexpr double usualSecondsPerBeat = 0.5;
constexpr std::uint8_t metaEvent = 0xFF, tempoChange = 0x51, endOfTrack = 0x2F;
constexpr int longestNumber = 4;  // bytes

/// Walks through the bytes of a file, or of one of its chunks.
class ByteReader {
public:
    ByteReader(std::string_view fileBytes, std::size_t begin, std::size_t end, const std::string& fileName)
        : bytes(fileBytes), position(begin), limit(end), name(fileName)
    {}

    std::size_t offset() const { return position; }
    bool atEnd() const { return position == limit; }
    [[noreturn]] void refuse(std::size_t at, const std::string& reason) const
    {
        throw RenderError(name + ", byte " + std::to_string(at) + ": " + reason);
    }

    std::uint8_t peek() const
    {
        if (atEnd())
            refuse(position, limit == bytes.size() ? "the file ends too soon" : "the track ends too soon");
        return static_cast<std::uint8_t>(bytes[position]);
    }
    std::uint8_t byte()
    {
        const std::uint8_t value = peek();
        ++position;
        return value;
    }
    std::uint32_t bigEndian(int count)
    {
        std::uint32_t value = 0;
        for (; count > 0; --count)
            value = value << 8 | byte();
        return value;
    }
    /// Seven bits a byte, the high bit set in all but the last.
    std::uint32_t variableLength()
    {
        const std::size_t start = position;
        std::uint32_t value = 0;
        for (int i = 0; i < longestNumber; ++i) {
            const std::uint8_t next = byte();
            value = value << 7 | (next & 0x7F);
            if (next < 0x80)
                return value;
        }
        refuse(start, "a number of more than four bytes");
    }
    void skip(std::size_t count)
    {
        if (count > limit - position)
            refuse(position, "a length of " + std::to_string(count) + " reaches beyond the end");
        position += count;
    }
    /// The next `count` bytes, on their own; this reader goes on behind them.
    ByteReader part(std::size_t count)
    {
        const std::size_t start = position;
        skip(count);
        return {bytes, start, position, name};
    }
    std::string text(std::size_t count)
    {
        const std::size_t start = position;
        skip(count);
        return std::string(bytes.substr(start, count));
    }

private:
    std::string_view bytes;
    std::size_t position;
    std::size_t limit;
    const std::string& name;
};

/// One message, or one change of tempo, at its tick.
struct TickEvent {
    std::uint64_t tick = 0;
    double secondsPerBeat = 0.0;  // 0: a message
    MidiFileMessage message;
};

/// What a tick lasts.
struct TimeBase {
    double ticksPerBeat = 0.0;
    double secondsPerTick = 0.0;  // of a time code; 0 where tempos count
};

class TrackReader {
public:
    TrackReader(ByteReader trackBytes, std::vector<TickEvent>& found) : bytes(trackBytes), events(found) {}

    void read()
    {
        while (!ended) {
            tick += bytes.variableLength();
            readEvent();
        }
    }

private:
    void readEvent()
    {
        const std::uint8_t first = bytes.peek();
        if (first == metaEvent)
            return readMeta();
        if (first == 0xF0 || first == 0xF7) {
            bytes.byte();
            running = 0;
            return bytes.skip(bytes.variableLength());
        }
        if (first > 0xF0)
            bytes.refuse(bytes.offset(), "a system message that files don't hold");
        if (first >= 0x80)
            running = bytes.byte();
        else if (running == 0)
            bytes.refuse(bytes.offset(), "data without a message that it belongs to");
        readMessage();
    }

    void readMeta()
    {
        bytes.byte();
        running = 0;
        const std::uint8_t type = bytes.byte();
        const std::uint32_t length = bytes.variableLength();
        const std::size_t start = bytes.offset();
        ByteReader content = bytes.part(length);
        ended = type == endOfTrack;
        if (type != tempoChange)
            return;
        const std::uint32_t microseconds = length == 3 ? content.bigEndian(3) : 0;
        if (microseconds == 0)
            bytes.refuse(start, "a tempo that is none");
        events.push_back({tick, microseconds * 1e-6, {}});
    }

    void readMessage()
    {
        MidiFileMessage message{0.0, running, data(), 0};
        const int kind = running >> 4;
        if (kind != 0xC && kind != 0xD)
            message.data2 = data();
        events.push_back({tick, 0.0, message});
    }

    std::uint8_t data()
    {
        if (bytes.peek() >= 0x80)
            bytes.refuse(bytes.offset(), "a message that lacks data");
        return bytes.byte();
    }

    ByteReader bytes;
    std::vector<TickEvent>& events;
    std::uint64_t tick = 0;
    std::uint8_t running = 0;  // the status that data belong to; 0 for none
    bool ended = false;
};

TimeBase timeBaseFrom(ByteReader& header)
{
    const std::size_t start = header.offset();
    const std::uint32_t division = header.bigEndian(2);
    TimeBase base;
    if (division < 0x8000) {
        base.ticksPerBeat = division;
    } else {
        // Frames a second as a negative byte, and ticks a frame. 29 stands for 30 frames in 1.001 s.
        const int frames = 256 - static_cast<int>(division >> 8);
        const double perSecond = frames == 29 ? 30.0 / 1.001 : frames;
        if (frames == 24 || frames == 25 || frames == 29 || frames == 30)
            base.ticksPerBeat = division & 0xFF;
        if (base.ticksPerBeat > 0.0)
            base.secondsPerTick = 1.0 / (perSecond * base.ticksPerBeat);
    }
    if (base.ticksPerBeat == 0.0)
        header.refuse(start, "a time base that is none");
    return base;
}

/// Reads the chunks behind the header. Those of kinds that nobody knows are skipped.
std::vector<TickEvent> readTracks(ByteReader& file, std::uint32_t count)
{
    std::vector<TickEvent> events;
    while (count > 0) {
        const std::string kind = file.text(4);
        ByteReader chunk = file.part(file.bigEndian(4));
        if (kind != "MTrk")
            continue;
        TrackReader(chunk, events).read();
        --count;
    }
    std::ranges::stable_sort(events, {}, &TickEvent::tick);
    return events;
}

std::vector<MidiFileMessage> timed(const std::vector<TickEvent>& events, const TimeBase& base)
{
    std::vector<MidiFileMessage> messages;
    double secondsPerTick =
        base.secondsPerTick > 0.0 ? base.secondsPerTick : usualSecondsPerBeat / base.ticksPerBeat;
    double seconds = 0.0;
    std::uint64_t tick = 0;
    for (const TickEvent& event : events) {
        seconds += static_cast<double>(event.tick - tick) * secondsPerTick;
        tick = event.tick;
        if (event.secondsPerBeat == 0.0) {
            messages.push_back(event.message);
            messages.back().seconds = seconds;
        } else if (base.secondsPerTick == 0.0) {
            secondsPerTick = event.secondsPerBeat / base.ticksPerBeat;
        }
    }
    return messages;
}

}  // namespace

std::vector<MidiFileMessage> readMidi(std::string_view bytes, const std::string& fileName)
{
    ByteReader file(bytes, 0, bytes.size(), fileName);
    if (!bytes.starts_with("MThd"))
        file.refuse(0, "no MIDI file");
    file.skip(4);
    ByteReader header = file.part(file.bigEndian(4));
    const std::size_t formatOffset = header.offset();
    const std::uint32_t format = header.bigEndian(2);
    if (format > 1)
        file.refuse(formatOffset, "format " + std::to_string(format) + ", where 0 or 1 can be read");
    const std::uint32_t trackCount = header.bigEndian(2);
    const TimeBase base = timeBaseFrom(header);
    return timed(readTracks(file, trackCount), base);
}

std::vector<MidiFileMessage> readMidiFile(const std::filesystem::path& file)
{
    if (std::filesystem::is_directory(file))
        throw RenderError("can't read " + inQuotes(file.string()) + ": it is a folder");
    errno = 0;
    std::ifstream stream(file, std::ios_base::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    if (!stream)
        throw RenderError("can't read " + inQuotes(file.string()) + ": " + std::strerror(errno));
    return readMidi(bytes, file.string());
}
