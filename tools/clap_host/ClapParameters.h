#pragma once

#include "abi/Clap.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a plug-in tells about one parameter. Values are in the parameter's own range.
struct ClapParameter {
    clap_id id = CLAP_INVALID_ID;
    std::string name;
    std::string module;  // group, "/" between levels
    double minimum = 0.0;
    double maximum = 0.0;
    double defaultValue = 0.0;
    clap_param_info_flags flags = 0;
};

/// The parameters of an instance, read once, and its own conversions between values and text. Thread: main.
class ClapParameters {
public:
    /// `plugin` has passed its `init` and outlives this object. Throws ClapHostError if it has no parameters
    /// extension or fails to describe one of the parameters that it counted.
    explicit ClapParameters(const clap_plugin_t& plugin);

    /// In the plug-in's order.
    const std::vector<ClapParameter>& list() const noexcept { return parameters; }
    /// The parameter of exactly this name, else the first that differs in case only, else null.
    const ClapParameter* find(std::string_view name) const noexcept;
    /// As find(), but an unknown name throws ClapHostError and suggests the nearest ones.
    const ClapParameter& require(std::string_view name) const;

    /// The value that the plug-in holds now. Throws ClapHostError if it refuses.
    double value(clap_id id) const;
    /// Throws ClapHostError if the plug-in refuses.
    std::string toText(clap_id id, double value) const;
    /// Nothing if the plug-in can't read the text. A plug-in may read a bare number by its present value.
    std::optional<double> fromText(clap_id id, const std::string& text) const;

private:
    const clap_plugin_t& plugin;
    const clap_plugin_params_t* extension;
    std::vector<ClapParameter> parameters;
};
