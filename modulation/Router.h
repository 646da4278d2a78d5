#pragma once

#include "foundation/Property.h"
#include "wave/FloatParameter.h"

#include <memory>
#include <vector>

/// Selects one of its inputs. A new choice fades over linearly, then the router merely points at its input.
/// Inputs that aren't heard aren't pulled. Thread: audio, but for wiring.
class Router : public wave::Source, public PropertyOwner {
public:
    Router(wave::Environment& owner, int inputCount);

    /// Thread: main, before the first block.
    void setSource(int input, wave::Producer& source);

    wave::Producer& origin() noexcept REALTIME override { return solo ? solo->origin() : *this; }
    void propertyChanged(AbstractProperty& property) override;

    Property<int> index;     // the selected input
    Property<float> fadeMs;  // length of a fade, 20 at first

protected:
    void generate(wave::Block* block, int count, int flags) noexcept REALTIME override;

private:
    struct RouterInput {
        explicit RouterInput(wave::Environment& owner, float initialGain) : gain(owner, 1.0f)
        {
            gain.setValue(initialGain, 0.0f);
        }
        FloatParameter gain;
        wave::Producer* source = nullptr;
    };

    std::vector<std::unique_ptr<RouterInput>> inputs;
    wave::Producer* solo = nullptr;  // the one input that passes unchanged, once a fade is over
};
