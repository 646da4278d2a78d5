#include "parameters/AbstractParameterSetList.h"

#include <algorithm>
#include <string>

AbstractParameterSetList::AbstractParameterSetList(GenericParameterOwner& listOwner,
                                                   std::string_view listName)
    : numActive(&listOwner, "Num Active " + std::string(listName)), parent(listOwner)
{}

void AbstractParameterSetList::removeSet(int i)
{
    const int active = numActive.value();
    if (i < 0 || i >= active || active <= numActive.format.minimum)
        return;
    parent.beginChange();
    const int last = active - 1;
    numActive.setValue(static_cast<float>(last), announceChange);
    for (int to = i; to < last; ++to)
        moveUp(to);
    resetSet(last);
    parent.endChange();
}

void AbstractParameterSetList::moveUp(int to)
{
    setAt(to).copyValuesFrom(setAt(to + 1));
    for (AbstractParameterSetList* list : subLists)
        list->setAt(to).copyValuesFrom(list->setAt(to + 1));
}

void AbstractParameterSetList::resetSet(int i)
{
    setAt(i).resetToDefaults();
    for (AbstractParameterSetList* list : subLists)
        list->setAt(i).resetToDefaults();
}

void AbstractParameterSetList::addAllParameters(ParameterCollection& collection)
{
    collection.add(numActive);
    AbstractParameterSetArray::addAllParameters(collection);
}

void AbstractParameterSetList::resetToDefaults()
{
    numActive.setValue(numActive.defaultValue(), announceChange);
    AbstractParameterSetArray::resetToDefaults();
}

int AbstractParameterSetList::firstParameterIndex() const { return numActive.index(); }

bool AbstractParameterSetList::ownsParameter(int index) const
{
    return AbstractParameterSetArray::ownsParameter(index) ||
           std::any_of(subLists.begin(), subLists.end(),
                       [index](const AbstractParameterSetList* list) { return list->ownsParameter(index); });
}
