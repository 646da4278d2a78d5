#pragma once

#include "foundation/Property.h"
#include "parameters/ParameterCollection.h"

#include <map>
#include <string>
#include <string_view>

class GenericParameterOwner;

/// The parameters that one kind of preset file holds, in the file's order, which never changes once there are
/// files. A parameter may stand in many collections. Thread: main.
class PresetParameterCollection : public ParameterCollection {
public:
    explicit PresetParameterCollection(GenericParameterOwner& parameterOwner) : listOwner(parameterOwner) {}

    /// Brackets changes of the parameters.
    GenericParameterOwner& owner() const noexcept { return listOwner; }

    /// The place of the parameter that goes by this key or has it as an alias, or -1.
    int findKey(std::string_view key) const;
    /// The key of a parameter as text files hold it, without the prefix.
    std::string keyOf(const AbstractPluginParameter& parameter, std::string_view prefix) const;
    /// The full key that a key of a text file stands for, if the collection has it; otherwise empty.
    std::string fullKey(std::string_view key, std::string_view prefix) const;
    /// The longest start that all keys share, so that a file fits every collection of its kind. The numbers
    /// of active entries, which put their own words in front, don't count here.
    std::string commonPrefix() const;

    Property<std::string> section;  // that of the header of text files; empty means "Preset"
    std::string signature;          // of files; four characters

private:
    GenericParameterOwner& listOwner;
    mutable std::map<std::string, int, std::less<>> keys;
    mutable int keyedCount = 0;  // parameters that `keys` covers
};
