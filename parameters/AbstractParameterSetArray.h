#pragma once

#include "parameters/ParameterCollection.h"
#include "parameters/PluginParameterSet.h"

/// A fixed number of sets of the same class, all in use. Parameter indices are those of the whole plug-in.
/// Thread: main.
class AbstractParameterSetArray {
public:
    AbstractParameterSetArray() = default;
    AbstractParameterSetArray(const AbstractParameterSetArray&) = delete;
    AbstractParameterSetArray& operator=(const AbstractParameterSetArray&) = delete;
    virtual ~AbstractParameterSetArray() = default;

    virtual int count() const = 0;
    /// @param i  0..count() - 1
    virtual PluginParameterSet& setAt(int i) const = 0;

    void initialiseSets();
    virtual void addAllParameters(ParameterCollection& collection);
    virtual void resetToDefaults();

    /// -1 if there are none.
    virtual int firstParameterIndex() const;
    /// True if the parameter belongs here. -1 asks whether any parameter does.
    virtual bool ownsParameter(int index) const;
    /// The set that holds a parameter, -1 if none does.
    int setIndexOf(int parameterIndex) const;

protected:
    /// The index of the first parameter of the first set, -1 if there are no sets.
    int firstSetParameterIndex() const;
    /// One past the index of the last set's last parameter.
    int endParameterIndex() const;
};
