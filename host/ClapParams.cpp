// The parameters of an instance as the host sees them: the table it queries, and the events it is sent.
#include "host/ClapPluginAdapter.h"
#include "host/ClapText.h"

#include <algorithm>

const clap_plugin_params_t ClapPluginAdapter::paramsTable{
    .count =
        [](const clap_plugin_t* p) {
            return static_cast<uint32_t>(onMainThread(p).plugin->parameterCount());
        },
    .get_info = [](const clap_plugin_t* p, uint32_t index, clap_param_info_t* info) -> bool {
        const AbstractPluginParameter* parameter = of(p).parameterOf(index);
        if (!parameter || !info)
            return false;
        *info = {};
        info->id = index;
        info->flags = (parameter->automatable ? uint32_t{CLAP_PARAM_IS_AUTOMATABLE} : 0) |
                      (parameter->stepped ? uint32_t{CLAP_PARAM_IS_STEPPED} : 0);
        copyText(info->name, sizeof info->name, parameter->displayName());
        const auto group = static_cast<std::size_t>(parameter->owner()->groupIndex());
        copyText(info->module, sizeof info->module, of(p).plugin->groupNames()[group]);
        info->default_value = static_cast<double>(parameter->defaultValue());
        info->min_value = static_cast<double>(parameter->minimumValue());
        info->max_value = static_cast<double>(parameter->maximumValue());
        return true;
    },
    .get_value = [](const clap_plugin_t* p, clap_id id, double* value) -> bool {
        const AbstractPluginParameter* parameter = onMainThread(p).parameterOf(id);
        if (!parameter || !value)
            return false;
        *value = static_cast<double>(parameter->currentValue());
        return true;
    },
    .value_to_text = [](const clap_plugin_t* p, clap_id id, double value, char* out,
                        uint32_t capacity) -> bool {
        const AbstractPluginParameter* parameter = of(p).parameterOf(id);
        if (!parameter || !out || capacity == 0)
            return false;
        const float limited =
            std::clamp(static_cast<float>(value), parameter->minimumValue(), parameter->maximumValue());
        copyText(out, capacity,
                 parameter->valueText(limited == limited ? limited : parameter->defaultValue()));
        return true;
    },
    .text_to_value = [](const clap_plugin_t* p, clap_id id, const char* text, double* value) -> bool {
        const AbstractPluginParameter* parameter = of(p).parameterOf(id);
        const auto parsed = parameter && text ? parameter->parseText(text) : std::nullopt;
        if (!parsed || !value)
            return false;
        *value = static_cast<double>(*parsed);
        return true;
    },
    .flush = [](const clap_plugin_t* p, const clap_input_events_t* in,
                const clap_output_events_t* out) { of(p).flush(in, out); },
};

AbstractPluginParameter* ClapPluginAdapter::parameterOf(clap_id id) const noexcept
{
    return id < static_cast<clap_id>(plugin->parameterCount()) ? &plugin->parameter(static_cast<int>(id))
                                                               : nullptr;
}

void ClapPluginAdapter::flush(const clap_input_events_t* in, const clap_output_events_t* out) noexcept
{
    if (active) {
        const GenericPluginProcessor::AudioCall call(*processor);
        ClapEventScan(in, *this).applyAll();
    } else {
        flushAtRest(in);
    }
    drainOutEvents(out);
}

void ClapPluginAdapter::flushAtRest(const clap_input_events_t* in) noexcept
{
    deliverPending();
    ClapEventScan(in, *this).applyAll();
    // At rest nobody drains the queue, and it would overflow in a host that flushes much.
    processor->applyQueuedChanges();
}

void ClapPluginAdapter::drainOutEvents(const clap_output_events_t* out) noexcept
{
    if (!out)
        return;
    OutEvent event;
    while (refusedEvent || outEvents.pop(event)) {
        if (refusedEvent)
            event = *refusedEvent;
        refusedEvent.reset();
        if (!out->try_push(out, &event.header)) {
            refusedEvent = event;
            return;
        }
    }
}

void ClapPluginAdapter::queueOutEvent(const OutEvent& event) noexcept
{
    if (processor->isAudioCall())
        outEvents.pushWithin(event);
    else
        outEvents.push(event);
}

void ClapPluginAdapter::setParameter(int index, float value) noexcept
{
    automate(index, value);
    OutEvent event{};
    event.value.header = {sizeof event.value, 0, CLAP_CORE_EVENT_SPACE_ID, CLAP_EVENT_PARAM_VALUE, 0};
    event.value.param_id = static_cast<clap_id>(index);
    event.value.note_id = -1;
    event.value.port_index = -1;
    event.value.channel = -1;
    event.value.key = -1;
    event.value.value = static_cast<double>(value);
    queueOutEvent(event);
}

void ClapPluginAdapter::queueGesture(int index, std::uint16_t type)
{
    OutEvent event{};
    event.gesture.header = {sizeof event.gesture, 0, CLAP_CORE_EVENT_SPACE_ID, type, 0};
    event.gesture.param_id = static_cast<clap_id>(index);
    queueOutEvent(event);
    if (hostExtensions.params)
        hostExtensions.params->request_flush(&host);
}

void ClapPluginAdapter::beginParameterGesture(int index)
{
    queueGesture(index, CLAP_EVENT_PARAM_GESTURE_BEGIN);
}

void ClapPluginAdapter::endParameterGesture(int index) { queueGesture(index, CLAP_EVENT_PARAM_GESTURE_END); }

void ClapPluginAdapter::parameterChanged(int index)
{
    UnifiedPluginAdapter::parameterChanged(index);
    // A host without parameters has nobody to tell; the sound follows all the same.
    if (!hostExtensions.params)
        return;
    if (index < 0)
        hostExtensions.params->rescan(&host, CLAP_PARAM_RESCAN_VALUES);
    hostExtensions.params->request_flush(&host);
}
