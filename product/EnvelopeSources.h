#pragma once

#include "foundation/ValueAssignable.h"
#include "modulation/EnvelopeFollower.h"
#include "modulation/EnvelopeGenerator.h"
#include "modulation/ModulationMatrix.h"
#include "modulation/Router.h"
#include "product/EFParameterSet.h"
#include "product/EGParameterSet.h"

#include <memory>
#include <vector>

/// The envelope generators and followers as modulation sources, each with a switch between the peaks of the
/// input and those of the side chain. Those that aren't in use cost nothing. Thread: audio, but for
/// construction.
class EnvelopeSources {
public:
    /// What the envelopes listen to: the largest magnitude over the channels, sample by sample.
    struct Peaks {
        wave::Producer& main;
        wave::Producer& sideChain;
    };

    /// Makes the matrix read the sources, and the sources follow the parameters and the matrix's targets.
    EnvelopeSources(wave::Environment& environment, ModulationMatrix& matrix,
                    EGParameterSetList& generatorSets, EFParameterSetList& followerSets, Peaks peaks);

    /// A key went down: generators that notes trigger start. Key 0 lets all keys go instead.
    void noteOn(int key) noexcept REALTIME;
    /// With the last held key the gates of all generators close. Key 0 stands for all held keys.
    void noteOff(int key) noexcept REALTIME;
    /// Gives a generator whose Triggering was set its trigger, and closes its gate. -1 stands for all
    /// parameters.
    void parameterApplied(int index) noexcept REALTIME;

    /// Where a source stands, from 0 up. @param source  the id of a generator or a follower
    float displayValue(int source) noexcept REALTIME;

private:
    struct Generator {
        Generator(wave::Environment& environment, Peaks peaks);
        bool isPlayedByNotes() const noexcept REALTIME { return !trigger.enabled.value(); }

        Router input;
        Trigger trigger;
        EnvelopeGenerator envelope;
    };
    struct Follower {
        Follower(wave::Environment& environment, Peaks peaks);

        Router input;
        ValueAssignableConverter<GenericPluginBase::InputSignal, int> inputChoice;
        EnvelopeFollower envelope;
    };

    void addGenerators(wave::Environment& environment, ModulationMatrix& matrix, Peaks peaks);
    void addFollowers(wave::Environment& environment, ModulationMatrix& matrix, EFParameterSetList& sets,
                      Peaks peaks);

    EGParameterSetList& generatorSets;
    std::vector<std::unique_ptr<Generator>> generators;
    std::vector<std::unique_ptr<Follower>> followers;
    int heldNotes = 0;
};
