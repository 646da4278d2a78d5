#pragma once

#include "foundation/Lock.h"

#include <string>

class IGenericPluginInstance;

/// The instances of the process. Who walks through them by `instanceAt` and `count` holds the lock all the
/// way. Thread: any main thread.
class IGenericPluginInstanceList : public ILock {
public:
    virtual void add(IGenericPluginInstance& instance) = 0;
    /// By its exact name; null if there is none.
    virtual IGenericPluginInstance* find(const std::string& name) = 0;
    virtual IGenericPluginInstance* instanceAt(int index) const = 0;
    virtual int count() const = 0;
    /// A number that no instance has.
    virtual int newGroup() = 0;
    /// False if an instance has this number, or nobody can have it; otherwise no other will be given it.
    virtual bool claimGroup(int number) = 0;
    /// To be called when a name has changed: the list is in the order of names.
    virtual void sort() = 0;
    virtual void remove(IGenericPluginInstance& instance) = 0;
};
