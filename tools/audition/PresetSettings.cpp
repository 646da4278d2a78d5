#include "audition/PresetSettings.h"

#include "clap_host/NearestNames.h"
#include "clap_host/QuotedText.h"
#include "pack/ShownText.h"
#include "render/AutomationReader.h"
#include "render/RenderError.h"

#include <algorithm>

namespace {

constexpr std::string_view activeWords = "Num Active ";

[[noreturn]] void fail(const FactorySource& source, const FactorySetting& setting, const std::string& reason)
{
    throw RenderError(linePrefix(source.file.string(), setting.line) + reason);
}

[[noreturn]] void failUnknown(const ClapParameters& parameters, const FactorySource& source,
                              const FactorySetting& setting)
{
    std::vector<std::string> names;
    for (const ClapParameter& parameter : parameters.list())
        names.push_back(parameter.name);
    std::string reason = "there is no parameter " + inQuotes(setting.name);
    for (const std::string& name : nearestNames(setting.name, names, 3))
        reason += ", but " + inQuotes(name);
    fail(source, setting, reason);
}

double settingValue(const ClapParameters& parameters, const ClapParameter& parameter,
                    const FactorySource& source, const FactorySetting& setting)
{
    const auto value = parameters.fromText(parameter.id, setting.text);
    if (!value)
        fail(source, setting, inQuotes(parameter.name) + " can't be " + inQuotes(setting.text));
    const std::string shown = parameters.toText(parameter.id, *value);
    if (!showsWhatWasWritten(setting.text, shown))
        fail(source, setting,
             inQuotes(parameter.name) + " shows " + inQuotes(shown) + " for " + inQuotes(setting.text));
    return *value;
}

}  // namespace

const ClapParameter* findSectionParameter(const ClapParameters& parameters, const std::string& section,
                                          const std::string& name)
{
    const auto exact = [&](const std::string& full) -> const ClapParameter* {
        const ClapParameter* found = parameters.find(full);
        return found != nullptr && found->name == full ? found : nullptr;
    };
    if (section.empty())
        return exact(name);
    if (const ClapParameter* found = exact(section + " " + name))
        return found;
    if (name.starts_with(activeWords))
        return exact(std::string(activeWords) + section + " " + name.substr(activeWords.size()));
    return exact(section + name);  // "EF 1Input" alone
}

std::vector<ClapEvent> defaultEvents(const ClapParameters& parameters)
{
    std::vector<ClapEvent> events;
    for (const ClapParameter& parameter : parameters.list())
        events.push_back(parameterEvent(0, parameter.id, parameter.defaultValue));
    return events;
}

void applySource(std::vector<ClapEvent>& events, const ClapParameters& parameters,
                 const FactorySource& source)
{
    for (const FactorySetting& setting : source.settings) {
        const ClapParameter* parameter = findSectionParameter(parameters, source.section, setting.name);
        if (parameter == nullptr)
            failUnknown(parameters, source, setting);
        const auto event = std::ranges::find(events, parameter->id,
                                             [](const ClapEvent& one) { return one.parameter.param_id; });
        event->parameter.value = settingValue(parameters, *parameter, source, setting);
    }
}
