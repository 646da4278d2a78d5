#include "presets/PresetLoader.h"

#include "foundation/BinaryDataReader.h"
#include "parameters/GenericParameterOwner.h"
#include "parameters/NumberText.h"
#include "presets/SectionTextReader.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t signatureLength = 4;
// A text begins with "[Preset]": what would be its version reads as a number far above.
constexpr int firstTextVersion = 0x10000;

constexpr const char* corruptFile = "Incorrect file permissions or corrupt preset file.";
constexpr const char* invalidFormat = "Invalid file format.";
constexpr const char* invalidHeader = "Invalid preset header.";
constexpr const char* unknownSignature =
    "Unknown preset signature (likely intended for another Morvelane plug-in): ";
constexpr const char* unknownVersion = "Preset version not supported: ";
constexpr const char* unknownParameter = "Unknown parameter: ";

/// Bytes of a file as they can be shown.
std::string printable(std::string_view bytes)
{
    std::string text(bytes);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, '?');
    return text;
}

int wholeNumberOr(std::string_view text, int otherwise)
{
    const auto number = readWholeNumber(text);
    return number && number->rest.empty() ? static_cast<int>(number->value) : otherwise;
}

float numberOrZero(std::string_view text)
{
    const auto number = readNumber(text);
    return number && number->rest.empty() ? static_cast<float>(number->value) : 0.0f;
}

/// Brackets a load for the owner of the parameters.
class Batch {
public:
    explicit Batch(GenericParameterOwner& parameterOwner) : owner(parameterOwner) { owner.beginChange(); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;
    ~Batch() { owner.endChange(); }

private:
    GenericParameterOwner& owner;
};

}  // namespace

const std::array<PresetLoader::HeaderNames, PresetLoader::HeaderFieldCount> PresetLoader::headerNames{
    {{"Name", "NAME"}, {"Author", "AUTHOR"}, {"Description", "DESCRIPTION"}, {"Tags", "TAGS"}}};

PresetLoader::PresetLoader(GenericParameterOwner& parameterOwner, IPresetPlugin* presetPlugin)
    : owner(parameterOwner), plugin(presetPlugin)
{}

std::string PresetLoader::signature(int) const { return plugin ? plugin->presetSignature() : fixedSignature; }

bool PresetLoader::acceptsSignature(std::string_view fileSignature, int presetVersion) const
{
    return fileSignature == signature(presetVersion);
}

bool PresetLoader::acceptsVersion(int) { return true; }

void PresetLoader::beginLoad(int) {}

void PresetLoader::finishLoad(int) {}

bool PresetLoader::readPreset(ErrorReporter& outcome, std::istream& stream, int requiredVersion,
                              std::string_view expectedSection)
{
    result = ErrorResult();
    readStream(stream, requiredVersion, expectedSection);
    if (!result.succeeded())
        outcome.reportError(result.code(), result.message());
    return result.succeeded();
}

void PresetLoader::readStream(std::istream& stream, int requiredVersion, std::string_view expectedSection)
{
    const auto begin = stream.tellg();
    if (!readHeader(stream))
        return result.reportError(ErrorReporter::failure, corruptFile);
    headerRead = true;
    if (!isKnownSignature()) {
        if (version < firstTextVersion) {
            reportSignature();
            return;
        }
        stream.seekg(begin);
        return readText(stream, requiredVersion, expectedSection);
    }
    if (!checkVersion(requiredVersion))
        return;
    const Batch batch(owner);
    beginLoad(version);
    readValues(stream);
    if (plugin)
        readCustomBlock(stream);
    finishLoad(version);
    if (!stream.good())
        result.reportError(ErrorReporter::failure, invalidFormat);
}

/// False if there is no whole header.
bool PresetLoader::readHeader(std::istream& stream)
{
    BinaryDataReader reader(stream);
    loadedSignature.assign(signatureLength, '\0');
    reader.read(loadedSignature.data(), signatureLength);
    version = reader.readInt();
    return reader.good();
}

bool PresetLoader::isKnownSignature() const
{
    return fixedSignature.empty() ? acceptsSignature(loadedSignature, version)
                                  : loadedSignature == fixedSignature;
}

/// Always false.
bool PresetLoader::reportSignature()
{
    if (loadedSignature.empty())
        result.reportError(ErrorReporter::failure, corruptFile);
    else
        result.reportError(ErrorReporter::failure,
                           std::string(unknownSignature).append(printable(loadedSignature)));
    return false;
}

bool PresetLoader::checkVersion(int requiredVersion)
{
    if (requiredVersion == anyVersion ? acceptsVersion(version) : version == requiredVersion)
        return true;
    result.reportError(ErrorReporter::failure, std::string(unknownVersion).append(std::to_string(version)));
    return false;
}

void PresetLoader::readValues(std::istream& stream)
{
    BinaryDataReader reader(stream);
    const int expected = valueCount(version);
    const int stored = std::min(reader.readInt(), expected);
    for (int index = 0; index < expected; ++index) {
        const float value = index < stored ? reader.readFloat() : NAN;
        if (std::isnan(value) || !reader.good())
            setDefault(index);
        else
            setValue(index, value);
    }
}

void PresetLoader::readCustomBlock(std::istream& stream)
{
    CustomValues values;
    if (!readCustomValues(stream, values))
        stream.setstate(std::ios_base::failbit);
    plugin->setCustomValues(std::move(values));
    plugin->customValuesChanged();
}

// The text form.

void PresetLoader::readText(std::istream& stream, int requiredVersion, std::string_view expectedSection)
{
    if (expectedSection.empty())
        expectedSection = section.value().empty() ? presetSection : std::string_view(section.value());
    SectionTextReader reader(stream);
    if (!reader.nextSection() || reader.section() != expectedSection)
        return result.reportError(ErrorReporter::failure, invalidHeader);
    readTextHeader(reader);
    if (reader.hasSyntaxError())
        return result.reportError(ErrorReporter::failure, invalidFormat);
    if (!(isKnownSignature() || reportSignature()) || !checkVersion(requiredVersion))
        return;
    const Batch batch(owner);
    beginLoad(version);
    readTextSections(reader, expectedSection);
    finishLoad(version);
    if (reader.hasSyntaxError())
        result.reportError(ErrorReporter::failure, invalidFormat);
    if (plugin && hasName && result.succeeded())
        plugin->takePresetName(headerFields[Name], modifiedFlag);
}

void PresetLoader::readTextHeader(SectionTextReader& reader)
{
    loadedSignature.clear();
    version = 0;
    hasName = false;
    modifiedFlag = false;
    for (std::string& field : headerFields)
        field.clear();
    while (reader.nextKey())
        readTextHeaderKey(reader.key(), reader.value());
}

void PresetLoader::readTextHeaderKey(std::string_view key, const std::string& value)
{
    if (key == "Signature")
        loadedSignature = value;
    else if (key == "Version")
        version = wholeNumberOr(value, 0);
    else if (key == "Modified")
        modifiedFlag = wholeNumberOr(value, 1) != 0;
    for (std::size_t field = 0; field < HeaderFieldCount; ++field)
        if (key == headerNames[field].inText) {
            headerFields[field] = value;
            hasName = hasName || field == Name;
        }
}

void PresetLoader::readTextSections(SectionTextReader& reader, std::string_view headerSection)
{
    std::vector<char> isSet(static_cast<std::size_t>(std::max(valueCount(version), 0)), 0);
    bool hadSettings = false;
    while (reader.nextSection() && reader.section() != headerSection) {
        if (reader.section() == parameterSection) {
            readTextParameters(reader, isSet);
        } else if (reader.section() == settingsSection && plugin) {
            readTextSettings(reader);
            hadSettings = true;
        }
    }
    for (std::size_t index = 0; index < isSet.size(); ++index)
        if (!isSet[index])
            setDefault(static_cast<int>(index));
    if (plugin)
        takeHeaderFields(hadSettings);
}

void PresetLoader::readTextParameters(SectionTextReader& reader, std::vector<char>& isSet)
{
    while (reader.nextKey()) {
        const int index = setByKey(reader.key(), numberOrZero(reader.value()));
        if (index >= 0)
            isSet[static_cast<std::size_t>(index)] = 1;
        else
            result.reportError(ErrorReporter::failure, std::string(unknownParameter).append(reader.key()));
    }
}

void PresetLoader::readTextSettings(SectionTextReader& reader)
{
    CustomValues values;
    while (reader.nextKey())
        values[reader.key()] = reader.value();
    const bool hasAny = !values.empty();
    plugin->setCustomValues(std::move(values));
    if (hasAny)
        plugin->customValuesChanged();
}

void PresetLoader::takeHeaderFields(bool hadSettings)
{
    CustomValues values = hadSettings ? plugin->customValues() : CustomValues();
    if (!hadSettings)
        plugin->setCustomValues(values);
    for (const std::size_t field : {Author, Description, Tags}) {
        if (headerFields[field].empty())
            continue;
        values[headerNames[field].amongCustomValues] = headerFields[field];
        plugin->setCustomValues(values);
        plugin->hostStateChanged();
    }
}
