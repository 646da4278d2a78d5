#pragma once

#include "foundation/ErrorResult.h"
#include "foundation/Property.h"
#include "presets/IPresetPlugin.h"

#include <array>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

class GenericParameterOwner;
class SectionTextReader;

/// Reads preset files, binary or text, into parameters, all in one batch. What goes where is the subclass's
/// business. Files come from anywhere: whatever they claim, no more is read than they hold, and a number that
/// is none counts as the default. Parameters that were set before a failure stay set.
///
/// A binary file is, low bytes first and without padding:
///
///   4 bytes  signature
///   int32    version, below 0x10000
///   int32    number of values
///   float32  each value
///   block    custom values, if there are any
///
/// A text file has a section "Preset" with keys "Signature", "Version", and perhaps "Name", "Modified",
/// "Author", "Description" and "Tags"; a section "Parameters" with a number for each key of a parameter; and
/// perhaps a section "Settings" with the other custom values. Thread: main.
class PresetLoader {
public:
    static constexpr int anyVersion = -1;
    static constexpr std::string_view presetSection = "Preset";
    static constexpr std::string_view parameterSection = "Parameters";
    static constexpr std::string_view settingsSection = "Settings";

    enum HeaderField { Name, Author, Description, Tags, HeaderFieldCount };
    /// How a field of the header is called in a text file, and among the custom values.
    struct HeaderNames {
        const char* inText;
        const char* amongCustomValues;
    };
    static const std::array<HeaderNames, HeaderFieldCount> headerNames;

    PresetLoader(const PresetLoader&) = delete;
    PresetLoader& operator=(const PresetLoader&) = delete;
    virtual ~PresetLoader() = default;

    /// Reads a file of either form from the present place of a seekable stream.
    /// @param requiredVersion  `anyVersion` for all that the loader accepts
    /// @param expectedSection  of a text's header; empty means the loader's own
    /// True on success; otherwise `outcome` has one of the messages
    ///
    ///   "Unknown parameter: " and the key; the rest of the text has been read
    ///   "Incorrect file permissions or corrupt preset file."
    ///   "Unknown preset signature (likely intended for another Morvelane plug-in): " and the signature
    ///   "Preset version not supported: " and the version
    ///   "Invalid file format."
    ///   "Invalid preset header."
    bool readPreset(ErrorReporter& outcome, std::istream& stream, int requiredVersion = anyVersion,
                    std::string_view expectedSection = {});

    /// Of the file read last, as far as that came.
    const ErrorResult& lastResult() const noexcept { return result; }
    const std::string& signatureRead() const noexcept { return loadedSignature; }
    bool hasReadHeader() const noexcept { return headerRead; }
    const std::string& headerField(HeaderField field) const noexcept { return headerFields[field]; }

    Property<std::string> section;  // of the text form's header; empty means "Preset"
    std::string fixedSignature;     // if not empty, the only one accepted

protected:
    /// @param presetPlugin  null for a loader of a section: nothing but parameters is touched
    PresetLoader(GenericParameterOwner& parameterOwner, IPresetPlugin* presetPlugin);

    virtual std::string signature(int presetVersion) const;
    virtual bool acceptsSignature(std::string_view fileSignature, int presetVersion) const;
    virtual bool acceptsVersion(int presetVersion);

    // Within the batch: `beginLoad`, then each value once, by its place or by its key, and `finishLoad`.

    virtual void beginLoad(int presetVersion);
    virtual int valueCount(int presetVersion) const = 0;
    virtual void setValue(int index, float value) = 0;
    virtual void setDefault(int index) = 0;
    /// Returns the place of the value, or -1 if there is no such key.
    virtual int setByKey(std::string_view key, float value) = 0;
    virtual void finishLoad(int presetVersion);

    GenericParameterOwner& owner;
    IPresetPlugin* const plugin;

private:
    void readStream(std::istream& stream, int requiredVersion, std::string_view expectedSection);
    bool readHeader(std::istream& stream);
    bool isKnownSignature() const;
    bool reportSignature();
    bool checkVersion(int requiredVersion);
    void readValues(std::istream& stream);
    void readCustomBlock(std::istream& stream);

    void readText(std::istream& stream, int requiredVersion, std::string_view expectedSection);
    void readTextHeader(SectionTextReader& reader);
    void readTextHeaderKey(std::string_view key, const std::string& value);
    void readTextSections(SectionTextReader& reader, std::string_view headerSection);
    void readTextParameters(SectionTextReader& reader, std::vector<char>& isSet);
    void readTextSettings(SectionTextReader& reader);
    void takeHeaderFields(bool hadSettings);

    ErrorResult result;
    std::string loadedSignature;
    bool headerRead = false;
    std::array<std::string, HeaderFieldCount> headerFields;
    bool hasName = false;
    bool modifiedFlag = false;
    int version = 0;
};
