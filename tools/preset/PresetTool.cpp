#include "preset/PresetTool.h"

#include "pack_factory/ParameterTree.h"
#include "presets/CollectionPresetLoader.h"
#include "presets/CustomPresetLoader.h"
#include "presets/PresetFile.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <vector>

namespace {

constexpr const char* wholeExtension = ".mvp";
constexpr int wholeVersion = 5;

/// What stands in for the plug-in whose preset it is.
class Bystander : public IPresetPlugin {
public:
    const std::string& presetSignature() const override { return signature; }
    bool presetsHoldCustomValues() const override { return !values.empty(); }
    const CustomValues& customValues() const override { return values; }
    void setCustomValues(CustomValues newValues) override { values = std::move(newValues); }
    void customValuesChanged() override {}
    void hostStateChanged() override {}
    const std::string& presetName() const override { return name; }
    bool isPresetModified() const override { return false; }
    void takePresetName(std::string_view newName, bool) override { name = newName; }

    /// Empty if the file doesn't name it.
    std::string valueOf(const char* key) const
    {
        const auto found = values.find(key);
        return found == values.end() ? std::string() : found->second;
    }

private:
    std::string signature = sordelinInfo().code;
    std::string name;
    CustomValues values;
};

/// One preset of either kind in the product's parameters.
class LoadedPreset {
public:
    /// Throws PresetToolError.
    explicit LoadedPreset(const std::filesystem::path& presetFile) : file(presetFile), kind(kindOf(file))
    {
        const PresetFile onDisk(file.string());
        ErrorResult result;
        if (kind.group < 0) {
            CustomPresetLoader loader(tree.whole, plugin);
            loader.currentVersion = wholeVersion;
            onDisk.read(loader, result);
        } else {
            CollectionPresetLoader loader(*kind.collection);
            onDisk.read(loader, result, kind.version);
        }
        if (!result.succeeded())
            throw PresetToolError(file.string() + ": " + result.message());
    }

    void write(const std::filesystem::path& to, PresetForm form) const
    {
        if (kindOf(to).group != kind.group)
            throw PresetToolError(to.string() + ": the extension stands for another kind of preset");
        ErrorResult result;
        const PresetWriter writer(*kind.collection, kind.group < 0 ? &plugin : nullptr);
        PresetFile(to.string())
            .write(writer, result, kind.version,
                   form == PresetForm::Text ? PresetFile::Form::Text : PresetFile::Form::Binary);
        if (!result.succeeded())
            throw PresetToolError(to.string() + ": " + result.message());
    }

    void show(std::ostream& out) const
    {
        out << file.stem().string() << "\n  " << (isText() ? "text" : "binary") << ", version "
            << kind.version << ", " << kind.collection->count() << " values\n";
        for (const char* key : {"AUTHOR", "DESCRIPTION", "TAGS"}) {
            if (const std::string value = plugin.valueOf(key); !value.empty())
                out << "  " << value << '\n';
        }
        for (int i = 0; i < kind.collection->count(); ++i) {
            const AbstractPluginParameter& parameter = kind.collection->at(i);
            const float value = parameter.currentValue();
            if (value != parameter.defaultValue())
                out << "    " << parameter.displayName() << ": " << parameter.valueText(value) << '\n';
        }
    }

    static bool isPreset(const std::filesystem::path& path)
    {
        const ParameterTree known;
        return groupOf(known, path).has_value();
    }

private:
    struct Kind {
        int group;  // of section presets, or -1
        const PresetParameterCollection* collection;
        int version;
    };

    static std::optional<int> groupOf(const ParameterTree& known, const std::filesystem::path& path)
    {
        if (path.extension() == wholeExtension)
            return -1;
        for (int group = 0; group < known.sections.groupCount(); ++group) {
            if (path.extension() == known.sections.extension(group))
                return group;
        }
        return std::nullopt;
    }

    Kind kindOf(const std::filesystem::path& path) const
    {
        const auto group = groupOf(tree, path);
        if (!group)
            throw PresetToolError(path.string() + ": no kind of preset has this extension");
        if (*group < 0)
            return {*group, &tree.whole, wholeVersion};
        return {*group, &tree.sections.section(*group, 0), ComponentPresets::formatVersion};
    }

    /// A text begins with a section where a binary file has its signature.
    bool isText() const
    {
        std::ifstream stream(file, std::ios::binary);
        return stream.get() == '[' || stream.peek() == ';';
    }

    std::filesystem::path file;
    ParameterTree tree;
    Bystander plugin;
    Kind kind;
};

}  // namespace

void showPreset(const std::filesystem::path& file, std::ostream& out) { LoadedPreset(file).show(out); }

void convertPreset(const std::filesystem::path& from, const std::filesystem::path& to, PresetForm form)
{
    LoadedPreset(from).write(to, form);
}

int checkPresets(const std::filesystem::path& folder, std::ostream& out)
{
    std::error_code failure;
    const std::filesystem::recursive_directory_iterator entries(folder, failure);
    if (failure)
        throw PresetToolError(folder.string() + ": " + failure.message());
    std::vector<std::filesystem::path> files;
    for (const auto& entry : entries) {
        if (entry.is_regular_file() && LoadedPreset::isPreset(entry.path()))
            files.push_back(entry.path());
    }
    std::ranges::sort(files);
    int damaged = 0;
    for (const auto& file : files) {
        try {
            LoadedPreset preset(file);
        } catch (const PresetToolError& error) {
            out << error.what() << '\n';
            ++damaged;
        }
    }
    out << files.size() << " presets, " << damaged << " of them don't load\n";
    return damaged;
}
