#pragma once

#include "support/TemporaryFolder.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Sets variables of the environment, and puts them back at the end of the test.
class ScopedEnvironment {
public:
    ScopedEnvironment() = default;
    ~ScopedEnvironment()
    {
        for (auto place = before.rbegin(); place != before.rend(); ++place)
            put(place->first, place->second);
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

    /// No value takes the variable away.
    void set(const std::string& name, const std::optional<std::string>& value)
    {
        const char* present = std::getenv(name.c_str());
        before.emplace_back(name, present ? std::optional<std::string>(present) : std::nullopt);
        put(name, value);
    }

private:
    static void put(const std::string& name, const std::optional<std::string>& value)
    {
        if (value)
            setenv(name.c_str(), value->c_str(), 1);
        else
            unsetenv(name.c_str());
    }

    std::vector<std::pair<std::string, std::optional<std::string>>> before;
};

/// An empty home of a user: whatever a plug-in keeps for its user is kept here meanwhile.
class TemporaryHome {
public:
    TemporaryHome()
    {
        environment.set("HOME", folder / "");
        environment.set("XDG_DATA_HOME", folder / "data");
        environment.set("XDG_CONFIG_HOME", folder / "config");
        environment.set("XDG_STATE_HOME", folder / "state");
        environment.set("XDG_CACHE_HOME", folder / "cache");
    }

    /// "Sordelin 2"'s own files. They needn't exist.
    std::filesystem::path productData() const { return folder / "data/Morvelane/Sordelin 2"; }

    TemporaryFolder folder;

private:
    ScopedEnvironment environment;
};
