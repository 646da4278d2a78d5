#include "parameters/AbstractParameterSetArray.h"

#include "parameters/AbstractPluginParameter.h"

void AbstractParameterSetArray::initialiseSets()
{
    for (int i = 0; i < count(); ++i)
        setAt(i).initialise();
}

void AbstractParameterSetArray::addAllParameters(ParameterCollection& collection)
{
    for (int i = 0; i < count(); ++i)
        for (int k = 0; k < setAt(i).parameterCount(); ++k)
            collection.add(setAt(i).parameterAt(k));
}

void AbstractParameterSetArray::resetToDefaults()
{
    for (int i = 0; i < count(); ++i)
        setAt(i).resetToDefaults();
}

int AbstractParameterSetArray::firstParameterIndex() const { return firstSetParameterIndex(); }

bool AbstractParameterSetArray::ownsParameter(int index) const
{
    const int first = firstParameterIndex();
    if (index < 0)
        return first >= 0;
    return first >= 0 && index >= first && index < endParameterIndex();
}

int AbstractParameterSetArray::setIndexOf(int parameterIndex) const
{
    const int first = firstSetParameterIndex();
    if (first < 0 || parameterIndex < first)
        return -1;
    const int set = (parameterIndex - first) / setAt(0).parameterCount();
    return set < count() ? set : -1;
}

int AbstractParameterSetArray::firstSetParameterIndex() const
{
    return count() > 0 && setAt(0).parameterCount() > 0 ? setAt(0).parameterAt(0).index() : -1;
}

int AbstractParameterSetArray::endParameterIndex() const
{
    if (firstSetParameterIndex() < 0)
        return firstParameterIndex() + 1;
    const PluginParameterSet& last = setAt(count() - 1);
    return last.parameterAt(last.parameterCount() - 1).index() + 1;
}
