#pragma once

#include "foundation/NotifyEvent.h"
#include "foundation/Realtime.h"
#include "wave/Block.h"
#include "wave/MemoryTrail.h"

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

namespace wave {

class Producer;

/// What the components of one engine share: the clock, the sample rate, the block limit, and the lists of
/// those that run in every block or hold state. It outlives them. Thread: audio, except construction and
/// destruction.
class Environment {
public:
    static constexpr int blockLimit = 128;  // samples

    enum class Reset {
        Enabled = 0,      // the clock's marks, and every enabled component with state
        Everything = 1,   // the same for disabled components
        Soft = 2,         // parameters jump to their targets; signal state stays
        EnabledHere = 3,  // as Enabled, without the children
    };
    /// What a component is told when `run` calls it. A pull tells it `Pulled`.
    enum RunFlags { Pulled = 0, Unread = 1, SecondPass = 2 };

    Environment();
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment() = default;

    int maxBlockSize() const noexcept REALTIME { return blockLimit; }
    float sampleRate() const noexcept REALTIME { return rate; }    // Hz
    std::uint64_t now() const noexcept REALTIME { return clock; }  // samples since construction
    std::uint64_t softResetTime() const noexcept REALTIME { return lastSoftReset; }
    std::uint64_t hardResetTime() const noexcept REALTIME { return lastHardReset; }
    std::uint32_t generationNumber() const noexcept REALTIME { return generation; }

    /// Always zero, flagged constant. What silent components point at.
    Block& silentBlock() noexcept REALTIME { return silence; }
    /// Always one, flagged constant.
    Block& unityBlock() noexcept REALTIME { return unity; }
    /// Two blocks that any component may use within one call.
    Block& scratchBlock(int index) noexcept REALTIME
    {
        return *scratchBlocks[static_cast<std::size_t>(index)];
    }

    /// Opens a sub-block: everything that is pulled from now on computes anew.
    void nextGeneration() noexcept REALTIME;
    /// Closes a sub-block of `count` samples: scheduled components that nobody read run, delay lines take
    /// their input, the clock moves on. With `skipSchedule` only the clock moves.
    void run(int count, bool skipSchedule) noexcept REALTIME;
    void reset(Reset kind) noexcept REALTIME;
    /// Components hear of a new rate as a reset. The present rate does nothing. Thread: main, engine at rest.
    void setSampleRate(float newRate);
    /// What `buffer` holds is needed only until the sub-block ends: between `beginWork` and `endWork` it lies
    /// in memory that the environments of a thread share. Until `withdraw`, or until the engine goes. Thread:
    /// main.
    void shareMemory(AlignedBuffer& buffer);
    void withdraw(const AlignedBuffer& buffer) noexcept;
    /// Around the sub-blocks of one call. An engine that never begins keeps every buffer in its own memory.
    void beginWork() noexcept REALTIME;
    void endWork() noexcept REALTIME;
    /// Where the components lie; fetched by `beginWork` when another environment has played meanwhile.
    MemoryTrail& memoryTrail() noexcept REALTIME { return trail; }

    /// True if no component with state has a tail to play.
    bool isIdle() const noexcept REALTIME;

    /// Adds an environment that runs along, at `rateFactor` times this one's sample rate. Not owned.
    void addChild(Environment& child, int rateFactor);

    bool isDisplayActive() const noexcept REALTIME { return displayActive; }
    void setDisplayActive(bool active) noexcept REALTIME;

    /// From now on components don't take themselves off the lists: all of them go.
    void markDestroying() noexcept;

    /// Fired, with this environment as argument, after the rate changed and the components were reset.
    NotifyEvent sampleRateChanged;

private:
    friend class Producer;
    struct Child {
        Environment* environment;
        int rateFactor;
    };

    /// A buffer that lies in working memory while there is some.
    struct SharedBuffer {
        AlignedBuffer* buffer;
        float* own;
        int offset;  // in the working memory, in samples
    };

    void placeShared(float* memory) noexcept REALTIME;
    void noteTrail() noexcept REALTIME;
    void componentAdded(Producer& component);
    void componentRemoved(Producer& component) noexcept;
    void insertScheduled(Producer& component, int order);
    void removeScheduled(Producer& component) noexcept REALTIME;

    std::vector<Producer*> schedule;
    int leadCount = 0;  // entries of order 0, all at the front
    bool destroying = false;
    bool displayActive = false;
    std::vector<Producer*> components;  // all of them
    std::uint64_t lastSoftReset = 0;
    std::vector<Producer*> resettables;
    std::uint64_t lastHardReset = 0;
    std::uint64_t clock = 0;
    float rate = 44100.0f;
    std::vector<Child> children;
    std::array<std::unique_ptr<Block>, 2> scratchBlocks;
    std::uint32_t generation = 0;
    std::vector<SharedBuffer> sharedBuffers;
    MemoryTrail trail;
    int sharedLength = 0;            // samples of working memory that they take
    float* workingMemory = nullptr;  // where they lie; null while they lie in their own
    bool working = false;            // `workingMemory` is lent at present
    ConstValueBlock silence;
    ConstValueBlock unity;
};

}  // namespace wave
