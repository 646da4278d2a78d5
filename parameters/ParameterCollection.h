#pragma once

#include <span>
#include <vector>

class AbstractPluginParameter;

/// A flat list of parameters, in the order in which they were added. It owns none of them. Thread: main.
class ParameterCollection {
public:
    ParameterCollection() = default;
    ParameterCollection(const ParameterCollection&) = delete;
    ParameterCollection& operator=(const ParameterCollection&) = delete;
    virtual ~ParameterCollection() = default;

    /// Returns the place of the parameter.
    int add(AbstractPluginParameter& parameter);
    int count() const noexcept { return static_cast<int>(parameters.size()); }
    AbstractPluginParameter& at(int i) const { return *parameters[static_cast<std::size_t>(i)]; }

    /// Replaces the contents of `values` by the current value of each parameter.
    void readValues(std::vector<float>& values) const;
    /// Sets as many parameters as there are values, announcing the changes.
    void writeValues(std::span<const float> values) const;

private:
    std::vector<AbstractPluginParameter*> parameters;
};
