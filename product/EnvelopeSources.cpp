#include "product/EnvelopeSources.h"

#include "product/SordelinModulationIds.h"

namespace {

constexpr int mainInput = 0;
constexpr int sideChain = 1;

void connect(Router& router, EnvelopeSources::Peaks peaks)
{
    router.setSource(mainInput, peaks.main);
    router.setSource(sideChain, peaks.sideChain);
}

}  // namespace

EnvelopeSources::Generator::Generator(wave::Environment& environment, Peaks peaks)
    : input(environment, 2), trigger(environment), envelope(environment)
{
    connect(input, peaks);
    trigger.input = &input;
    envelope.trigger = &trigger;
}

EnvelopeSources::Follower::Follower(wave::Environment& environment, Peaks peaks)
    : input(environment, 2), inputChoice(input.index), envelope(environment)
{
    connect(input, peaks);
    envelope.input = &input;
}

EnvelopeSources::EnvelopeSources(wave::Environment& environment, ModulationMatrix& matrix,
                                 EGParameterSetList& egSets, EFParameterSetList& efSets, Peaks peaks)
    : generatorSets(egSets)
{
    addGenerators(environment, matrix, peaks);
    addFollowers(environment, matrix, efSets, peaks);
}

void EnvelopeSources::addGenerators(wave::Environment& environment, ModulationMatrix& matrix, Peaks peaks)
{
    std::vector<wave::Producer*> entries;
    for (int i = 0; i < generatorSets.count(); ++i) {
        auto made = std::make_unique<Generator>(environment, peaks);
        EnvelopeGenerator& envelope = made->envelope;
        envelope.hold.connect(matrix.producerForTarget(SordelinTargets::generatorHold(i)));
        envelope.delay.connect(matrix.producerForTarget(SordelinTargets::generatorDelay(i)));
        envelope.attack.connect(matrix.producerForTarget(SordelinTargets::generatorAttack(i)));
        envelope.decay.connect(matrix.producerForTarget(SordelinTargets::generatorDecay(i)));
        envelope.sustain.connect(matrix.producerForTarget(SordelinTargets::generatorSustain(i)));
        envelope.release.connect(matrix.producerForTarget(SordelinTargets::generatorRelease(i)));
        generatorSets[i].threshold.bind(made->trigger.threshold);
        matrix.setSource(SordelinSources::envelopeGenerator(i), &envelope);
        entries.push_back(&envelope);
        generators.push_back(std::move(made));
    }
    generatorSets.numActive.addEntryObjects(std::move(entries));
}

void EnvelopeSources::addFollowers(wave::Environment& environment, ModulationMatrix& matrix,
                                   EFParameterSetList& sets, Peaks peaks)
{
    std::vector<wave::Producer*> entries;
    for (int i = 0; i < sets.count(); ++i) {
        auto made = std::make_unique<Follower>(environment, peaks);
        EnvelopeFollower& envelope = made->envelope;
        envelope.attack.connect(matrix.producerForTarget(SordelinTargets::followerAttack(i)));
        envelope.release.connect(matrix.producerForTarget(SordelinTargets::followerRelease(i)));
        sets[i].input.bind(made->inputChoice);
        matrix.setSource(SordelinSources::envelopeFollower(i), &envelope);
        entries.push_back(&envelope);
        followers.push_back(std::move(made));
    }
    sets.numActive.addEntryObjects(std::move(entries));
}

void EnvelopeSources::noteOn(int key) noexcept
{
    heldNotes = key == 0 ? 0 : heldNotes + 1;
    for (const auto& generator : generators) {
        if (!generator->isPlayedByNotes())
            continue;
        if (key == 0)
            generator->envelope.closeGate();
        else
            generator->envelope.openGate();
    }
}

void EnvelopeSources::noteOff(int key) noexcept
{
    if (heldNotes == 0)
        return;
    heldNotes = key == 0 ? 0 : heldNotes - 1;
    if (heldNotes > 0)
        return;
    for (const auto& generator : generators)
        generator->envelope.closeGate();
}

void EnvelopeSources::parameterApplied(int index) noexcept
{
    for (int i = 0; i < generatorSets.count(); ++i) {
        const auto& triggering = generatorSets[i].triggering;
        if (index != -1 && index != triggering.index())
            continue;
        Generator& generator = *generators[static_cast<std::size_t>(i)];
        generator.trigger.enabled.assign(triggering.value() != Triggering::Midi);
        generator.input.index.assign(triggering.value() == Triggering::SideChain ? sideChain : mainInput);
        generator.envelope.closeGate();
    }
}

float EnvelopeSources::displayValue(int source) noexcept
{
    if (source < SordelinSources::firstFollower)
        return generators[static_cast<std::size_t>(source - SordelinSources::firstGenerator)]
            ->envelope.displayValue();
    return followers[static_cast<std::size_t>(source - SordelinSources::firstFollower)]
        ->envelope.currentValue();
}
