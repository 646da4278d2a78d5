#pragma once

#include "core/IGenericPluginInstanceList.h"

#include <memory>
#include <vector>

/// The list of the instances of one module.
class GenericPluginInstanceList : public IGenericPluginInstanceList {
public:
    void lock() override { criticalSection->lock(); }
    void unlock() override { criticalSection->unlock(); }

    void add(IGenericPluginInstance& instance) override;
    IGenericPluginInstance* find(const std::string& name) override;
    IGenericPluginInstance* instanceAt(int index) const override
    {
        return instances[static_cast<std::size_t>(index)];
    }
    int count() const override { return static_cast<int>(instances.size()); }
    int newGroup() override;
    bool claimGroup(int number) override;
    void sort() override;
    void remove(IGenericPluginInstance& instance) override;

    /// `base`, or the first of "base (2)", "base (3)" and so on that no other instance has. The caller holds
    /// the lock until it has taken the name.
    std::string freeName(const std::string& base, const IGenericPluginInstance& asking) const;

private:
    bool isGroupTaken(int number) const;

    std::unique_ptr<CriticalSection> criticalSection = CriticalSection::create();
    std::vector<IGenericPluginInstance*> instances;  // not owned; by name
    int nextGroup = 0;
};
