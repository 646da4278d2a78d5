#pragma once

#include "clap_host/BlockRenderer.h"
#include "clap_host/ClapInstance.h"
#include "render/AutomationReader.h"

#include <string>
#include <vector>

/// A parameter as it stands after a setting, in the plug-in's words.
struct AppliedSetting {
    std::string name;
    std::string text;
};

/// The value that `text` means for a parameter: as the plug-in reads it, else, if it is a plain number within
/// the parameter's range, that number. Throws RenderError if it is neither.
double valueFromText(const ClapParameters& parameters, const ClapParameter& parameter,
                     const std::string& text);

/// Carries out "Name=text" on an instance that isn't processing, and tells what became of it.
/// Throws RenderError for a text without "=" or an unreadable value, ClapHostError for an unknown name.
AppliedSetting applySetting(ClapInstance& instance, const std::string& assignment);

/// The points as events at the nearest frame. Throws RenderError that names file and line.
std::vector<TimedEvent> automationEvents(const ClapParameters& parameters,
                                         const std::vector<AutomationPoint>& points, double sampleRate,
                                         const std::string& fileName);
