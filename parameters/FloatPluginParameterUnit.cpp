#include "parameters/FloatPluginParameterUnit.h"

#include "parameters/Abbreviation.h"

std::optional<double> FloatPluginParameterUnit::convert(double number, std::string_view suffix) const
{
    for (const Entry& entry : entries) {
        if (compareIgnoringCase(entry.label, suffix) != 0)
            continue;
        const double scaled = number * entry.factor;
        return entry.conversion == unchanged ? scaled : entry.conversion(static_cast<float>(scaled));
    }
    return std::nullopt;
}
