#pragma once

#include "parameters/AbstractParameterSetArray.h"
#include "parameters/NumActiveParameter.h"

#include <string_view>
#include <vector>

/// A fixed maximum of sets of which the first few are in use, as many as the parameter `numActive` says.
/// Hosts see the parameters of all of them at all times; adding an entry only raises `numActive`. Thread:
/// main.
class AbstractParameterSetList : public AbstractParameterSetArray {
public:
    NumActiveParameter numActive;

    /// Takes entry `i` out: the ones behind it move up, and the last one goes back to its defaults. Nothing
    /// happens if the entry isn't in use, or if the list is as short as it may be.
    virtual void removeSet(int i);

    /// Adds a list whose entry i belongs to this one's entry i, and moves along with it. Not owned.
    void addSubList(AbstractParameterSetList& list) { subLists.push_back(&list); }

    void addAllParameters(ParameterCollection& collection) override;
    void resetToDefaults() override;
    /// That of `numActive`.
    int firstParameterIndex() const override;
    /// Also true for parameters of the lists that belong to this one.
    bool ownsParameter(int index) const override;

protected:
    /// @param listOwner  owns `numActive`, and brackets what the list changes
    AbstractParameterSetList(GenericParameterOwner& listOwner, std::string_view listName);

private:
    void moveUp(int to);
    void resetSet(int i);

    GenericParameterOwner& parent;
    std::vector<AbstractParameterSetList*> subLists;
};
