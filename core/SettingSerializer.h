#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// Carries settings between their properties and a store, in one direction: the same list of calls reads or
/// writes them. Each operation gives back the value in force, which is to be assigned either way: a reader
/// gives what it found, or `fallback`; a writer what it was given. Thread: main.
class SettingSerializer {
public:
    virtual ~SettingSerializer() = default;
    virtual bool isWriter() const = 0;
    /// Comes back empty from a reader that doesn't find it.
    virtual void bytes(const std::string& key, std::vector<std::uint8_t>& buffer) = 0;
    /// As an integer: 1 or 0. Anything but 0 reads as true.
    virtual bool boolValue(const std::string& key, bool value, bool fallback);
    /// As a text of up to 15 digits, with "." in every locale. A text that isn't a finite number gives
    /// `fallback`.
    virtual double floatValue(const std::string& key, double value, double fallback);
    /// As a decimal text, for a store that has nothing but texts.
    virtual std::int32_t intValue(const std::string& key, std::int32_t value, std::int32_t fallback);
    /// UTF-8, up to the first 0.
    virtual std::string stringValue(const std::string& key, const std::string& value,
                                    const std::string& fallback) = 0;
};
