#pragma once

#include "parameters/AbstractPluginParameter.h"
#include "parameters/ParameterCollection.h"

#include <algorithm>
#include <string>
#include <vector>

/// Owns parameters as a half of a plug-in does, and writes down what it is told.
class RecordingOwner : public GenericParameterOwner {
public:
    struct Change {
        int index;
        float value;
        int flags;
        bool operator==(const Change&) const = default;
    };

    void beginChange() override { ++openBrackets; }
    void endChange() override
    {
        --openBrackets;
        ++brackets;
    }
    int addParameter(AbstractPluginParameter& parameter) override { return list.add(parameter); }
    void addAlias(AbstractPluginParameter& parameter, std::string_view alias) override
    {
        parameter.aliases.emplace_back(alias);
    }
    int addResponder(ParameterResponder& responder) override
    {
        responders.push_back(&responder);
        return static_cast<int>(responders.size()) - 1;
    }
    int registerGroup(std::string_view group) override
    {
        const auto found = std::find(groups.begin(), groups.end(), group);
        if (found != groups.end())
            return static_cast<int>(found - groups.begin());
        groups.emplace_back(group);
        return static_cast<int>(groups.size()) - 1;
    }
    int parameterCount() const override { return list.count(); }
    AbstractPluginParameter& parameterAt(int i) const override { return list.at(i); }
    int groupIndex() const override { return 0; }
    const std::string& name() const override { return groups.front(); }
    void parameterChanged(int index, float value, int flags) noexcept override
    {
        changes.push_back({index, value, flags});
        changedOutsideBracket = changedOutsideBracket || openBrackets == 0;
    }

    std::string groupOf(const AbstractPluginParameter& parameter) const
    {
        return groups[static_cast<std::size_t>(parameter.owner()->groupIndex())];
    }

    ParameterCollection list;
    std::vector<std::string> groups{""};
    std::vector<ParameterResponder*> responders;
    std::vector<Change> changes;
    int openBrackets = 0;
    int brackets = 0;  // closed ones
    bool changedOutsideBracket = false;
};

/// Keeps what it was assigned.
template <class T>
struct Receiver final : ValueAssignable<T> {
    void assign(T value) noexcept override { values.push_back(value); }
    std::vector<T> values;
};
