#pragma once

#include "wave/AlignedBuffer.h"

namespace wave {

class Environment;

/// The samples of one signal for one sub-block, as long as the environment's block limit.
template <class T>
class BasicBlock;

template <>
class BasicBlock<float> : public AlignedBuffer {
public:
    explicit BasicBlock(const Environment& environment);

    /// Every valid sample equals sample 0. Readers may then look at that one alone; all are there anyway.
    bool isConstant() const noexcept REALTIME { return constant; }
    void setConstant(bool newConstant) noexcept REALTIME { constant = newConstant; }

    /// Writes `value` to `count` samples and sets the constant flag.
    void fill(float value, int count) noexcept REALTIME;

private:
    bool constant = false;
};

using Block = BasicBlock<float>;

/// A block that holds one value for ever.
class ConstValueBlock : public Block {
public:
    ConstValueBlock(const Environment& environment, float constantValue);
    float value() const noexcept REALTIME { return (*this)[0]; }
};

/// Fills a block with constants, where nobody else writes it, and touches it only for a new one.
class SteadyFill {
public:
    void fill(Block& block, float value, int count) noexcept REALTIME
    {
        if (value == heldValue && count <= held)
            return;
        block.fill(value, count);
        heldValue = value;
        held = count;
    }
    /// The block has been written otherwise.
    void forget() noexcept REALTIME { held = 0; }

private:
    float heldValue = 0.0f;
    int held = 0;  // samples that are `heldValue`
};

}  // namespace wave
