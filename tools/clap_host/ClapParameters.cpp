#include "clap_host/ClapParameters.h"

#include "clap_host/ClapHostError.h"
#include "clap_host/NearestNames.h"
#include "clap_host/QuotedText.h"

#include <algorithm>
#include <array>

namespace {

const clap_plugin_params_t* parametersOf(const clap_plugin_t& plugin)
{
    const void* found = plugin.get_extension(&plugin, CLAP_EXT_PARAMS);
    if (!found)
        throw ClapHostError("the plug-in has no parameters");
    return static_cast<const clap_plugin_params_t*>(found);
}

std::string unknownNameMessage(std::string_view name, const std::vector<ClapParameter>& parameters)
{
    std::vector<std::string> names;
    names.reserve(parameters.size());
    for (const ClapParameter& parameter : parameters)
        names.push_back(parameter.name);
    return "unknown parameter " + inQuotes(name) + didYouMean(name, names);
}

}  // namespace

ClapParameters::ClapParameters(const clap_plugin_t& instance)
    : plugin(instance), extension(parametersOf(instance))
{
    const std::uint32_t count = extension->count(&plugin);
    parameters.reserve(count);
    for (std::uint32_t index = 0; index < count; ++index) {
        clap_param_info_t info{};
        if (!extension->get_info(&plugin, index, &info))
            throw ClapHostError("the plug-in doesn't describe its parameter number " + std::to_string(index));
        parameters.push_back({info.id, info.name, info.module, info.min_value, info.max_value,
                              info.default_value, info.flags});
    }
}

const ClapParameter* ClapParameters::find(std::string_view name) const noexcept
{
    auto found = std::ranges::find(parameters, name, &ClapParameter::name);
    if (found == parameters.end()) {
        const auto matches = [name](const ClapParameter& p) { return equalsIgnoringCase(p.name, name); };
        found = std::ranges::find_if(parameters, matches);
    }
    return found != parameters.end() ? &*found : nullptr;
}

const ClapParameter& ClapParameters::require(std::string_view name) const
{
    const ClapParameter* found = find(name);
    if (!found)
        throw ClapHostError(unknownNameMessage(name, parameters));
    return *found;
}

double ClapParameters::value(clap_id id) const
{
    double result = 0.0;
    if (!extension->get_value(&plugin, id, &result))
        throw ClapHostError("the plug-in gives no value for parameter " + std::to_string(id));
    return result;
}

std::string ClapParameters::toText(clap_id id, double value) const
{
    std::array<char, 256> text{};
    if (!extension->value_to_text(&plugin, id, value, text.data(), text.size()))
        throw ClapHostError("the plug-in gives no text for parameter " + std::to_string(id));
    return text.data();
}

std::optional<double> ClapParameters::fromText(clap_id id, const std::string& text) const
{
    double result = 0.0;
    if (!extension->text_to_value(&plugin, id, text.c_str(), &result))
        return std::nullopt;
    return result;
}
