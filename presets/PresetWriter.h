#pragma once

#include "presets/IPresetPlugin.h"
#include "presets/PresetParameterCollection.h"

#include <iostream>

class SectionTextWriter;

/// Writes preset files, as PresetLoader reads them. Thread: main.
class PresetWriter {
public:
    enum class TextOptions { None, WithName };

    /// @param presetPlugin  null for a section of a plug-in: nothing but parameters is written
    PresetWriter(const PresetParameterCollection& parameters, const IPresetPlugin* presetPlugin)
        : collection(parameters), plugin(presetPlugin)
    {}

    /// Writes a whole file in binary form. True if the stream took it all.
    bool writePreset(std::ostream& stream, int version) const;
    /// Puts the values of those parameters in place whose index in the whole plug-in is one of the `count`
    /// from `firstIndex` on, and leaves all else. False, with the stream's contents as they were, unless they
    /// are a preset of the collection's signature and of this version that holds these values.
    bool writePreset(std::iostream& stream, int version, int firstIndex, int count) const;
    /// Writes a whole file in text form.
    /// @param options  WithName adds the name of the preset, and whether it is modified
    bool writeText(std::ostream& stream, int version, TextOptions options = TextOptions::None) const;

private:
    void writeTextHeader(SectionTextWriter& writer, int version, TextOptions options) const;
    void writeTextSettings(SectionTextWriter& writer) const;

    const PresetParameterCollection& collection;
    const IPresetPlugin* const plugin;
};
