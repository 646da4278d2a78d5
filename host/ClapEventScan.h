#pragma once

#include "abi/Clap.h"
#include "foundation/Realtime.h"

#include <cstdint>

/// Walks the events of one host block. Thread: audio, or main for a flush at rest.
class ClapEventScan {
public:
    /// Where events go.
    class Sink {
    public:
        virtual void applyParameter(clap_id id, double value) noexcept REALTIME = 0;
        /// @param offset  samples from the present position
        virtual void queueMidi(std::uint8_t status, std::uint8_t data1, std::uint8_t data2,
                               std::int32_t offset) noexcept REALTIME = 0;

    protected:
        ~Sink() = default;
    };

    /// @param events  null for none
    ClapEventScan(const clap_input_events_t* events, Sink& sink) noexcept;

    /// Applies the parameter events at `position`, hands on the notes and messages up to the next parameter
    /// event, and returns where that one stands; `end` if there is none. Parameter events behind the
    /// position, and beyond the end, are out of order and dropped.
    std::uint32_t advance(std::uint32_t position, std::uint32_t end) noexcept REALTIME;

    /// Applies every event, whatever its time.
    void applyAll() noexcept REALTIME;

private:
    void handMessage(const clap_event_header_t& event, std::uint32_t position) noexcept REALTIME;

    const clap_input_events_t* list;
    Sink& target;
    std::uint32_t count;
    std::uint32_t next = 0;
};
