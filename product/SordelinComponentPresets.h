#pragma once

#include <string>

class ComponentPresets;
class SordelinParameters;

/// Adds the product's kinds of section presets. The order of groups and parameters never changes: files go by
/// it. Thread: main.
/// @param signature  of the files
void addSordelinComponentPresets(ComponentPresets& presets, SordelinParameters& parameters,
                                 const std::string& signature);
