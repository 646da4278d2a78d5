#include "clap_host/ClapInstance.h"

#include "clap_host/ClapHostError.h"
#include "clap_host/NumberText.h"

#include <poll.h>

#include <string>

namespace {

const clap_plugin_t* create(const ClapModule& module, const ClapHost& host)
{
    const clap_plugin_factory_t& factory = module.pluginFactory();
    const clap_plugin_t* plugin = factory.create_plugin(&factory, host.record(), module.descriptor().id);
    if (!plugin)
        throw ClapHostError("the module refused to create its plug-in");
    return plugin;
}

}  // namespace

ClapInstance::ClapInstance(const ClapModule& module, std::uint32_t hostExtensions)
    : hostSide(hostExtensions), created(create(module, hostSide)), noEvents(0), dropped(64)
{
    hostSide.enter(ClapHost::Stage::Ready);
    if (!created->init(created.get()))
        throw ClapHostError("the plug-in refused to initialise");
    paramsExtension = extension<clap_plugin_params_t>(CLAP_EXT_PARAMS);
}

ClapInstance::~ClapInstance()
{
    if (currentState == State::Processing)
        stopProcessing();
    if (currentState == State::Active)
        deactivate();
}

const ClapParameters& ClapInstance::parameters()
{
    if (!parameterList)
        parameterList.emplace(*created);
    return *parameterList;
}

std::uint32_t ClapInstance::latency() const
{
    const auto* table = extension<clap_plugin_latency_t>(CLAP_EXT_LATENCY);
    return table ? table->get(created.get()) : 0;
}

std::uint32_t ClapInstance::tail() const
{
    const auto* table = extension<clap_plugin_tail_t>(CLAP_EXT_TAIL);
    return table ? table->get(created.get()) : 0;
}

void ClapInstance::activate(double sampleRate, std::uint32_t minFrames, std::uint32_t maxFrames)
{
    require(State::Inactive, "activate");
    hostSide.enter(ClapHost::Stage::Activating);
    const bool accepted = created->activate(created.get(), sampleRate, minFrames, maxFrames);
    hostSide.enter(ClapHost::Stage::Ready);
    if (!accepted)
        throw ClapHostError("the plug-in refused to run at " + fixedText(sampleRate, 1) + " Hz");
    maxBlockFrames = maxFrames;
    currentState = State::Active;
}

void ClapInstance::deactivate()
{
    require(State::Active, "deactivate");
    created->deactivate(created.get());
    currentState = State::Inactive;
}

void ClapInstance::runMainThread()
{
    const int requested = hostSide.calls.callbackRequests;
    if (requested != callbacksServed) {
        callbacksServed = requested;
        created->on_main_thread(created.get());
    }
    hostSide.enter(ClapHost::Stage::InLoop);
    serveDescriptors();
    serveTimers();
    hostSide.enter(ClapHost::Stage::Ready);
}

void ClapInstance::serveDescriptors()
{
    const auto* table = extension<clap_plugin_posix_fd_support_t>(CLAP_EXT_POSIX_FD_SUPPORT);
    for (const int descriptor : hostSide.descriptors()) {
        pollfd watched{descriptor, POLLIN, 0};
        if (table && poll(&watched, 1, 0) == 1)
            table->on_fd(created.get(), descriptor, CLAP_POSIX_FD_READ);
    }
}

void ClapInstance::serveTimers()
{
    const auto* table = extension<clap_plugin_timer_support_t>(CLAP_EXT_TIMER_SUPPORT);
    for (const clap_id timer : hostSide.timers()) {
        if (table)
            table->on_timer(created.get(), timer);
    }
}

void ClapInstance::startProcessing()
{
    require(State::Active, "start_processing");
    const ClapHost::AudioScope audio(hostSide);
    if (!created->start_processing(created.get()))
        throw ClapHostError("the plug-in refused to start processing");
    currentState = State::Processing;
}

void ClapInstance::stopProcessing()
{
    require(State::Processing, "stop_processing");
    const ClapHost::AudioScope audio(hostSide);
    created->stop_processing(created.get());
    currentState = State::Active;
}

void ClapInstance::reset()
{
    if (currentState == State::Inactive)
        throw ClapHostError("reset: the plug-in is not active");
    const ClapHost::AudioScope audio(hostSide);
    created->reset(created.get());
}

clap_process_status ClapInstance::process(const ClapBlock& block)
{
    require(State::Processing, "process");
    if (block.frames > maxBlockFrames)
        throw ClapHostError("process: the block is longer than activate announced");
    dropped.clear();

    clap_process_t arguments{};
    arguments.steady_time = block.steadyTime;
    arguments.frames_count = block.frames;
    arguments.transport = block.transport;
    arguments.audio_inputs = block.inputs.data();
    arguments.audio_outputs = block.outputs.data();
    arguments.audio_inputs_count = static_cast<std::uint32_t>(block.inputs.size());
    arguments.audio_outputs_count = static_cast<std::uint32_t>(block.outputs.size());
    arguments.in_events = (block.events ? block.events : &noEvents)->record();
    arguments.out_events = (block.output ? block.output : &dropped)->record();

    const ClapHost::AudioScope audio(hostSide);
    return created->process(created.get(), &arguments);
}

void ClapInstance::flush(const EventList& events, EventOutput* output)
{
    if (!paramsExtension)
        throw ClapHostError("flush: the plug-in has no parameters");
    dropped.clear();
    const clap_output_events_t* out = (output ? output : &dropped)->record();
    if (currentState == State::Inactive)
        return paramsExtension->flush(created.get(), events.record(), out);
    const ClapHost::AudioScope audio(hostSide);
    paramsExtension->flush(created.get(), events.record(), out);
}

std::vector<clap_audio_port_info_t> ClapInstance::ports(bool input) const
{
    std::vector<clap_audio_port_info_t> result;
    const auto* table = extension<clap_plugin_audio_ports_t>(CLAP_EXT_AUDIO_PORTS);
    const std::uint32_t count = table ? table->count(created.get(), input) : 0;
    for (std::uint32_t index = 0; index < count; ++index) {
        clap_audio_port_info_t info{};
        if (!table->get(created.get(), index, input, &info))
            throw ClapHostError("the plug-in doesn't describe audio port number " + std::to_string(index));
        result.push_back(info);
    }
    return result;
}

void ClapInstance::require(State expected, const char* operation) const
{
    if (currentState != expected)
        throw ClapHostError(std::string(operation) + ": not allowed in the present state of the plug-in");
}
