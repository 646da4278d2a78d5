#pragma once

#include "wave/Producer.h"

namespace wave {

/// A component with an input and an output. `filter` does its work.
class FilterBase : public Producer, public Consumer {
public:
    using Producer::Producer;

protected:
    /// @param in, out  `count` samples; `out` is the component's own block. `in` is null where `generate`
    /// doesn't
    ///                 pull the input first.
    virtual void filter(Block* in, Block* out, int count, int flags) noexcept REALTIME = 0;
};

/// A filter that pulls its input before it works. It may show the input's block, or the silent one, instead
/// of writing its own.
class Filter : public FilterBase {
public:
    using FilterBase::FilterBase;

protected:
    void generate(Block* block, int count, int flags) noexcept REALTIME override;
};

}  // namespace wave
