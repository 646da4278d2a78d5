#pragma once

#include <cstdint>
#include <string>
#include <utility>

/// Something whose time for a stretch of stereo sound at 48 kHz is measured. Thread: one.
class SpeedSubject {
public:
    static constexpr double sampleRate = 48000.0;  // Hz
    /// A stretch is a little over a second, and whole blocks of every size up to 4096.
    static constexpr std::int64_t stretchFrames = 49152;

    explicit SpeedSubject(std::string subjectName) : ownName(std::move(subjectName)) {}
    virtual ~SpeedSubject() = default;
    SpeedSubject(const SpeedSubject&) = delete;
    SpeedSubject& operator=(const SpeedSubject&) = delete;

    const std::string& name() const noexcept { return ownName; }
    /// The same work each time.
    virtual void playStretch() = 0;

private:
    std::string ownName;
};
