#include "render/ParameterSettings.h"

#include "clap_host/ClapHostError.h"
#include "clap_host/NumberText.h"
#include "clap_host/QuotedText.h"
#include "render/RenderError.h"

#include <cmath>

namespace {

AppliedSetting present(const ClapParameters& parameters, const ClapParameter& parameter)
{
    return {parameter.name, parameters.toText(parameter.id, parameters.value(parameter.id))};
}

TimedEvent eventFor(const ClapParameters& parameters, const AutomationPoint& point, double sampleRate)
{
    const ClapParameter& parameter = parameters.require(point.parameter);
    const double value = valueFromText(parameters, parameter, point.value);
    return {std::llround(point.seconds * sampleRate), parameterEvent(0, parameter.id, value)};
}

}  // namespace

double valueFromText(const ClapParameters& parameters, const ClapParameter& parameter,
                     const std::string& text)
{
    if (const auto value = parameters.fromText(parameter.id, text))
        return *value;
    const auto number = parseNumber(text);
    if (number && *number >= parameter.minimum && *number <= parameter.maximum)
        return *number;
    throw RenderError(inQuotes(parameter.name) + " can't be set to " + inQuotes(text) + "; it goes from " +
                      inQuotes(parameters.toText(parameter.id, parameter.minimum)) + " to " +
                      inQuotes(parameters.toText(parameter.id, parameter.maximum)));
}

AppliedSetting applySetting(ClapInstance& instance, const std::string& assignment)
{
    const auto sign = assignment.find('=');
    if (sign == std::string::npos)
        throw RenderError("--set needs \"Name=value\", not " + inQuotes(assignment));
    const ClapParameters& parameters = instance.parameters();
    const ClapParameter& parameter =
        parameters.require(trimmed(std::string_view(assignment).substr(0, sign)));
    const std::string text(trimmed(std::string_view(assignment).substr(sign + 1)));

    EventList events(1);
    events.add(parameterEvent(0, parameter.id, valueFromText(parameters, parameter, text)));
    instance.flush(events);
    return present(parameters, parameter);
}

std::vector<TimedEvent> automationEvents(const ClapParameters& parameters,
                                         const std::vector<AutomationPoint>& points, double sampleRate,
                                         const std::string& fileName)
{
    std::vector<TimedEvent> events;
    events.reserve(points.size());
    for (const AutomationPoint& point : points) {
        try {
            events.push_back(eventFor(parameters, point, sampleRate));
        } catch (const std::runtime_error& error) {
            throw RenderError(linePrefix(fileName, point.line) + error.what());
        }
    }
    return events;
}
