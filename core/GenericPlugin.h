#pragma once

#include "core/ComponentPresets.h"
#include "core/GenericPluginBase.h"
#include "core/PresetState.h"
#include "core/SharedPluginData.h"
#include "core/TrackContext.h"
#include "core/VersionInfo.h"
#include "foundation/ErrorResult.h"
#include "presets/FactoryArchive.h"
#include "presets/IPresetPlugin.h"
#include "presets/PresetInfo.h"
#include "presets/PresetManager.h"
#include "presets/PresetParameterCollection.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

class BinaryDataReader;
class BinaryDataWriter;
class CustomPresetLoader;

/// The main-thread half of a plug-in: the parameters as the user sees them. It reaches the audio half only
/// through its adapter.
class GenericPlugin : public GenericPluginBase, public IPresetPlugin {
public:
    /// What of the state has changed, besides parameters.
    enum class StateChange { Preset = 0, Other = 1 };

    /// How this half reaches the host and the other half. Thread: main.
    class Adapter {
    public:
        virtual ~Adapter() = default;
        /// The host is told of the value, as of a move by the user.
        virtual void sendParameterValue(int index, float value) = 0;
        virtual void beginParameterGesture(int index) = 0;
        virtual void endParameterGesture(int index) = 0;
        virtual void latencyChanged() = 0;
        /// Brings a parameter's value to the other half and to the host; a negative index brings all of them,
        /// with a reset by its number.
        virtual void parameterChanged(int index) = 0;
        /// Brings the controller map to the other half.
        virtual void controllerMapChanged() = 0;
        /// Has the other half's display data read. @param withModulation  also asks the other half to go on
        /// gathering where modulation stands, which ends a quarter of a second after the last time
        virtual void pullDisplayData(bool withModulation) = 0;
        /// The plug-in's state isn't what the host has saved any more.
        virtual void stateChanged(StateChange) {}
    };

    /// Stands for all parameters in `Adapter::parameterChanged`.
    enum AllParameters { WithoutReset = -1, WithSoftReset = -2, WithHardReset = -3 };

    /// Hears of changes. It must stand calls from the audio thread.
    class Listener {
    public:
        enum Code {
            ParameterChanged = -1025,
            PresetChanged = -1026,  // its name, its path, or whether it is modified
            ControllerMoved = -1027,
            ControllerMapChanged = -1029,
            LayoutChanged = -1030,
            CustomValuesChanged = -1032,
            TrackContextChanged = -1033,
        };
        virtual ~Listener() = default;
        virtual void message(int messageCode, int argument) noexcept = 0;
    };

    ~GenericPlugin() override;

    void setAdapter(Adapter* pluginAdapter) { adapter = pluginAdapter; }
    /// Waits for calls to the listener before. Thread: main.
    void setListener(Listener* newListener);
    void tellListener(int messageCode, int argument) noexcept;

    /// Where the host says that the instance stands. Only a product that asks for it takes it.
    void setTrackContext(const TrackContext& context);
    const TrackContext& trackContext() const { return track; }

    float sampleRate() const { return rate; }  // Hz; 44100 until the host activates
    void setSampleRate(float newRate) { rate = newRate; }

    // The map of MIDI controllers, which all instances of the process share: what is learnt in one holds for
    // all. An assignment lasts when it has been saved.

    ControllerMapping& controllerMapping() { return shared->controllerMapping; }
    /// Empties the map, or takes the one that the program carries.
    virtual void loadDefaultControllerMap();
    /// Takes the user's map. False, and the map is as it was, if there is none that can be read.
    virtual bool loadControllerMap();
    /// Keeps the map for the user, or says why it couldn't.
    virtual ErrorResult saveControllerMap();

    // Presets. Thread: main.

    PresetState presetState;
    PresetParameterCollection storedParameters{*this};    // what presets hold
    PresetParameterCollection unstoredParameters{*this};  // what keeps its value when a preset is loaded
    ComponentPresets componentPresets{*this};             // presets of single sections
    std::string instanceName;
    bool autoName = false;  // the instance goes by the name of its track

    /// Takes all values at one block boundary, and leaves the delays' memory alone. On failure the name of
    /// the preset stays; parameters that were read before stay too, and the result has one of PresetLoader's
    /// messages.
    ErrorResult loadPreset(const PresetInfo& preset);
    /// Replaces the file as a whole or not at all, and goes by its name. Creates no folders.
    virtual ErrorResult savePreset(const PresetInfo& preset);
    /// The same for the preset that the user has made the default. @param preset  null if there is none; then
    /// only the parameters that no preset holds are set
    ErrorResult loadDefaultPreset(const PresetInfo* preset);
    virtual std::string defaultPresetName() const;
    virtual int presetFormatVersion() const { return 1; }
    /// In place of the length of a preset's name.
    enum NameLength { WholeName = -1, WholeNameForHost = -2 };
    /// Goes by a name that came from elsewhere; its path is that of the preset called so, if there is one.
    /// @param length  how much of `newName` counts, or a NameLength; with WholeNameForHost the host hears of
    /// it
    void setPresetName(std::string_view newName, int length = WholeName);
    /// True if a stream from the host holds just the present state: the parameters, the names, and whether
    /// the preset is modified.
    bool presetEqualsState(std::istream& stream) const;
    /// The part of the host's state that holds the parameters: "MVBS", version 1, their number, each value.
    void writeParameterState(BinaryDataWriter& writer) const;

    // The parameters that no preset holds are kept in a file of the user, where every new instance finds
    // them.

    void loadInterfaceDefaults();
    /// Keeps one of them as it is now.
    ErrorResult saveInterfaceDefaults(const AbstractPluginParameter& parameter);

    // Presets of one section each. They lie in a folder for each kind.

    std::string componentPresetFolder(int group) const;
    ErrorResult loadComponentPreset(const PresetInfo& preset, int version, int group, int sectionNumber);
    /// "Default component preset not found." if the user has made none.
    ErrorResult loadDefaultComponentPreset(int group, int sectionNumber);
    /// Creates no folders.
    ErrorResult saveComponentPreset(const PresetInfo& preset, int version, int group,
                                    int sectionNumber) const;
    /// Makes the section's settings the default of its kind.
    ErrorResult saveDefaultComponentPreset(int group, int sectionNumber) const;

    // The trees of preset files, which all instances of the process share. A scan by one makes the entries
    // anew for all: what is kept of a preset is its name and path.

    static constexpr int wholePresets = -1;
    /// @param group  of section presets, or `wholePresets`
    virtual PresetManager& presetManager(int group = wholePresets);
    /// Knows what presets say about themselves, and the favourites; null unless the product has one.
    PresetCache* presetCache();
    /// Of presets of the whole plug-in, with its ".".
    virtual std::string presetExtension() const { return ".mvp"; }
    /// Makes another folder the one where presets lie. What isn't a folder gives the usual place of presets.
    void choosePresetFolder(const std::string& path);
    /// Loads the preset that MIDI program changes know by this number; nothing if there is none.
    virtual void selectPreset(int number);
    /// The preset called so, and where several are, the first one.
    std::optional<PresetInfo> findPreset(std::string_view name);
    /// Fills the folders of presets, those of sections too, with what the program carries. False if there is
    /// nothing, or if not all of the whole presets could be written.
    bool unpackFactoryContent(FactoryArchive::Existing existing);

    // IPresetPlugin

    const std::string& presetSignature() const override { return code; }
    bool presetsHoldCustomValues() const override { return customValuesSetting > 0; }
    const CustomValues& customValues() const override { return valuesByKey; }
    void setCustomValues(CustomValues values) override { valuesByKey = std::move(values); }
    void customValuesChanged() override { tellListener(Listener::CustomValuesChanged, 0); }
    void hostStateChanged() override { tellHost(StateChange::Other); }
    const std::string& presetName() const override { return presetState.name.value(); }
    bool isPresetModified() const override { return presetState.modified.value(); }
    void takePresetName(std::string_view name, bool modified) override;

    /// Counts the changes of parameters. Thread: any.
    std::uint32_t modificationCount() const noexcept { return modifications.load(); }

    // What an editor shows of the other half, as it was when `pullDisplayData` was called last. Thread: main.

    virtual void pullDisplayData(bool withModulation);
    /// Reads what the other half wrote.
    virtual void readDisplayData(BinaryDataReader& reader);
    float shownTempo() const { return displayTempo; }  // beats per minute
    /// When the last four blocks were played, all ones where none was since the song stopped.
    const std::array<std::uint64_t, 4>& shownPlayTimestamps() const { return playTimestamps; }

    // GenericPluginBase

    void beginParameterBatch() override;
    void endParameterBatch() override;
    void parameterValueChanged(int index, float value, int changeFlags) noexcept override;
    void requestSoftReset() override;
    void requestHardReset() override { pendingReset = WithHardReset; }

protected:
    /// Takes part in what the instances of the process share. Called once, by the product's constructor, when
    /// the parameters stand and the product has its name.
    void joinProcess();

    /// Whether presets hold a parameter. Asked once, when the parameters stand.
    virtual bool isStored(const AbstractPluginParameter&) const { return true; }
    /// For files of any version that the product knows.
    virtual std::unique_ptr<CustomPresetLoader> createPresetLoader();
    /// Reads a file within the batch that `loadPreset` opens.
    virtual void loadPresetFile(ErrorResult& result, const PresetInfo& preset);
    /// The default preset is being loaded.
    bool isLoadingDefault() const noexcept { return loadingDefaultPreset; }

    virtual VersionInfo version() const { return {}; }
    /// Makes what all instances share. Called for the first one of the process, with the process lock held.
    virtual void initialiseProcessWideData();

    /// The path of the preset called so; empty if there is none.
    virtual std::string findPresetPath(std::string_view name);
    /// A file has been written.
    virtual void presetWasSaved(const PresetInfo& preset);
    /// The first preset called so among the presets of a section.
    virtual std::optional<PresetInfo> findComponentPreset(int group, std::string_view name);

private:
    void collectParameters();
    void fillPresetFolders();
    void markModified() noexcept;
    void tellHost(StateChange change);
    PresetInfo defaultComponentPreset(int group) const;
    std::string interfaceDefaultsPath() const;

    void controllerMapWasChanged(void*);

    enum class BatchPending { Nothing, ForHost, NotForHost };

    Adapter* adapter = nullptr;
    SharedPluginData* shared = nullptr;
    std::atomic<Listener*> listener{nullptr};
    std::atomic<int> listenerCalls{0};  // in flight
    std::atomic<int> batchDepth{0};
    std::atomic<BatchPending> batchPending{BatchPending::Nothing};
    int pendingReset = WithoutReset;  // goes out with the batch
    std::atomic<std::uint32_t> modifications{0};
    CustomValues valuesByKey;
    bool loadingDefaultPreset = false;
    float rate = 44100.0f;
    TrackContext track;
    float displayTempo = 120.0f;
    std::array<std::uint64_t, 4> playTimestamps{};
};
