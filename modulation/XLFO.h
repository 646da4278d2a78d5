#pragma once

#include "foundation/NotifyEvent.h"
#include "foundation/Property.h"
#include "wave/FloatParameterSource.h"

#include <array>
#include <cstdint>

class FunctionTable;

/// A step sequencer as a low-frequency oscillator of -1..1. Up to 16 steps share a cycle; the balance says
/// where in the cycle the second half of them begins, and leans the shape without changing its rate:
///
///   balance 0.25, four steps:   | 1 | 2 |     3     |     4     |
///   phase                       0  1/8 1/4         5/8          1
///
/// With an odd number of steps the middle one holds the balance point and is halfway through there. It keeps
/// its phase in blocks that nobody reads. Thread: audio, but for construction.
class XLFO : public wave::Source, public PropertyOwner {
public:
    enum class GlideCurve { Linear, Square, SquareRoot, Sine };
    /// Where the values of random steps lie.
    enum class RandomRange { Bipolar, Unipolar };
    static constexpr int maxSteps = 16;

    class Step : public PropertyOwner {
    public:
        Step();
        void propertyChanged(AbstractProperty& property) override;

        LimitedProperty<float> glide;     // 0..1: the part of the step that glides to the next one's value
        Property<GlideCurve> glideCurve;  // the shape of that part
        Property<bool> random;            // a value by chance, a new one each time round
        Property<bool> snap;              // value in twelfths: semitones, where 1 is an octave
        LimitedProperty<float> value;     // -1..1

    private:
        friend class XLFO;

        float heldValue = 0.0f;   // the value in force
        bool heldValid = false;   // or one has to be made
        float randomNext = 0.0f;  // of a step that is alone: what comes after the value in force
        bool isMiddle = false;    // holds the balance point
        double start = 0.0;       // phases between which the step runs
        double end = 0.0;
        double inverseLength = 1.0;
    };

    /// Each oscillator draws other random values than the ones made before it in this process.
    explicit XLFO(wave::Environment& owner);
    /// @param seed  of the random values, for the same ones again; its low 23 bits count
    XLFO(wave::Environment& owner, std::uint32_t seed);

    /// Starts the cycle over, with its phase offset. A locked cycle counts from the present song position on.
    void retrigger() noexcept REALTIME;
    /// Makes a locked cycle count from the start of the song.
    void countFromSongStart() noexcept REALTIME { syncOrigin = 0.0; }

    /// Puts the cycle where it has to be at the next sample, `anchor` beats into the song. The position of
    /// the last lock moves nothing.
    void lock(double anchor, double beatsPerCycle) noexcept REALTIME;
    /// Says where the song is at the next sample, and how fast.
    /// @param beats  from the start of the song
    void setSongPosition(double beats, double newBeatsPerSample) noexcept REALTIME;

    void reset() noexcept REALTIME override;
    void propertyChanged(AbstractProperty& property) override;

    Step& step(int index) noexcept REALTIME { return steps[static_cast<std::size_t>(index)]; }
    /// Whether the steps go by too fast for an eye that watches the source.
    bool isTooFastToShow() const noexcept REALTIME { return tooFastToShow; }
    /// What is shown of the source: 0..1 where its output is within the values of its steps.
    float displayValue() noexcept REALTIME;

    LimitedProperty<int> numSteps;  // in use
    FloatParameterBus balance;      // where the second half of the steps begins, as a phase; counts by block
    FloatParameterBus frequency;    // cycles a second
    FloatParameterBus glide;        // -1..1, added to each step's own
    FloatParameterBus level;        // gain of the output
    FloatParameterBus phaseOffset;  // cycles
    Property<RandomRange> randomRange;
    /// Fired when a second half of a cycle slow enough to be seen begins, and when it is over.
    NotifyEvent cycleEvent;

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;

private:
    struct Inputs;
    struct Piece;
    struct Glide;

    float random(float reference) noexcept REALTIME;
    float valueOf(int index) noexcept REALTIME;
    float newValueOf(int index) noexcept REALTIME;
    void updateBoundaries(float newBalance) noexcept REALTIME;
    void keepPlaceInShape(float newBalance) noexcept REALTIME;
    int findStep() noexcept REALTIME;
    Piece pieceOf(int index) noexcept REALTIME;

    void renderAll(const Inputs& inputs, float* out, int count) noexcept REALTIME;
    void renderUnread(const Inputs& inputs, float* out, int count) noexcept REALTIME;
    int renderStep(int index, const Inputs& inputs, float* out, int position, int count) noexcept REALTIME;
    template <class Curve>
    int renderPiece(const Piece& piece, const Inputs& inputs, float* out, int position, int count,
                    Curve curve) noexcept REALTIME;
    template <class Curve>
    int renderSteady(const Piece& piece, const Inputs& inputs, float* out, int position, int count,
                     Curve curve) noexcept REALTIME;
    void endStep(Step& ended) noexcept REALTIME;
    void foldPhase() noexcept REALTIME;
    void applyLevel(float* out, int count, int rendered) noexcept REALTIME;

    bool isInSecondHalf() noexcept REALTIME { return !(balance.parameter().target() > phase); }
    void watchHalf(int position) noexcept REALTIME;

    std::array<Step, maxSteps> steps;
    const FunctionTable& sine;
    int stepsSeen = 0;         // for which the boundaries were built, along with:
    float lastBalance = 0.5f;  //
    double phase = 0.0;        // in the cycle, 0 up to but not including 1, with the offset
    double accumulator = 0.0;  // the same without
    float lastPhaseOffset = 0.0f;
    int currentStep = 0;  // where the search for the step begins
    std::uint32_t randomState;
    bool tooFastToShow = false;

    // Positions are doubles. A float has steps of 1/2048 beat an hour into a song, 1/128 of the shortest
    // cycle.
    double runningPosition = 0.0;  // beats, at the next sample
    double beatsPerSample = 0.0;
    double lastPosition = 0.0;  // beats, of the last lock
    double syncOrigin = 0.0;    // beats; the song position of phase 0

    bool halfFlag = false;     // the phase is at or beyond the balance
    bool blink = false;        // and has been before it for long enough
    int samplesSinceHalf = 0;  // where `halfFlag` changed, in samples from the start of the block
};
