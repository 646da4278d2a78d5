#pragma once

#include "core/CompareStates.h"
#include "core/ComponentPresets.h"
#include "core/ControllerMapping.h"
#include "core/GenericPluginBase.h"
#include "core/NamedPluginInstance.h"
#include "core/PluginMessageQueue.h"
#include "core/PluginSettings.h"
#include "core/PresetState.h"
#include "core/SharedSettings.h"
#include "core/TrackContext.h"
#include "core/UndoHistory.h"
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
#include <thread>

class BinaryDataReader;
class BinaryDataWriter;
class CustomPresetLoader;
class SharedPluginData;

/// The main-thread half of a plug-in: the parameters as the user sees them. It reaches the audio half only
/// through its adapter.
class GenericPlugin : public GenericPluginBase,
                      public NamedPluginInstance,
                      public IPresetPlugin,
                      public SnapshotOwner,
                      private PluginMessageQueue::Receiver {
public:
    using SettingsBase = ::SettingsBase;
    using Settings = ::PluginSettings;
    using SharedSettings = ::SharedSettings;
    using SnapshotList = ::SnapshotList;
    using UndoHistory = ::UndoHistory;
    using CompareStates = ::CompareStates;

    /// What of a project's state has changed, besides parameters.
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
        /// What a project keeps has changed, other than by a parameter.
        virtual void stateChanged(StateChange change) = 0;
        /// Brings the controller map to the other half.
        virtual void controllerMapChanged() = 0;
        /// Has the other half's display data read. @param withModulation  also asks the other half to go on
        /// gathering where modulation stands, which ends a quarter of a second after the last time
        virtual void pullDisplayData(bool withModulation) = 0;
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
            InterfaceStateRestored = -1028,
            ControllerMapChanged = -1029,
            LayoutChanged = -1030,
            InstanceRenamed = -1031,
            CustomValuesChanged = -1032,
            TrackContextChanged = -1033,
        };
        virtual ~Listener() = default;
        virtual void message(int messageCode, int argument) noexcept = 0;
    };

    ~GenericPlugin() override;

    void setAdapter(Adapter* pluginAdapter) { adapter = pluginAdapter; }
    /// Waits for calls to the listener before. The thread that brings a listener is the main thread from here
    /// on. Thread: main.
    void setListener(Listener* newListener);
    void tellListener(int messageCode, int argument) noexcept;

    /// Where the host says that the instance stands. Only a product that asks for it takes it.
    void setTrackContext(const TrackContext& context);
    const TrackContext& trackContext() const { return track; }

    float sampleRate() const { return rate; }  // Hz; 44100 until the host activates
    void setSampleRate(float newRate) { rate = newRate; }

    /// Messages to the main thread, for whoever delivers them there.
    DeferredEventQueue& asyncQueue() { return messages.events(); }
    /// True on the thread to which messages are brought. Thread: any.
    bool isMainThread() const noexcept { return std::this_thread::get_id() == creatingThread.load(); }
    /// A MIDI program change, which selects a preset where a user has asked for it. Thread: audio.
    /// @param bank  0..16383  @param program  0..127
    void requestProgramChange(int bank, int program) noexcept REALTIME;
    /// Has the adapter hear of a new latency. Thread: any.
    void postLatencyChange() noexcept REALTIME { messages.postLatencyChange(); }

    // What the user's machine remembers, apart from presets and projects. Thread: main.

    PluginSettings& settings() { return *instanceSettings; }
    ::SharedSettings& sharedSettings();
    /// How the interfaces of all instances are drawn. Thread: any.
    GraphicsAccelerationMode graphicsMode() const;
    /// The scale that a user has set; 0.0 follows the platform. Thread: any.
    float interfaceScale() const;

    /// Takes all settings out of a reader, or into a writer, with what follows from them.
    virtual void serializeSettings(SettingSerializer& serializer);
    void readSettings();
    void writeSettings();

    virtual VersionInfo version() const { return {}; }
    virtual bool canResizeInterface() const { return false; }
    virtual int interfaceLayoutCount() const { return 0; }
    virtual int interfacePanelCount() const { return 0; }
    virtual int interfaceMinimumHeight() const { return 0; }  // logical units, as all of these
    virtual int interfaceMinimumWidth() const { return 0; }
    virtual int defaultInterfaceHeight() { return 0; }
    virtual int defaultInterfaceWidth() { return 0; }

    // The map of MIDI controllers, which all instances of the process share: what is learnt in one holds for
    // all. An assignment lasts when it has been saved.

    ControllerMapping& controllerMapping();
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
    /// The part of the host's state that holds the parameters.
    void writeParameterState(BinaryDataWriter& writer) const;
    /// All that a project keeps of the plug-in. False if the stream didn't take it.
    bool saveState(std::ostream& stream) const;
    /// Takes a project's state in one batch; the host knows it already. Parameters that an older project
    /// lacks take their defaults. False for what isn't a state, or is damaged; what was read before stays.
    /// @param stream  seekable
    bool loadState(std::istream& stream);

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
    ErrorResult saveComponentPreset(const PresetInfo& preset, int version, int group, int sectionNumber);
    /// Makes the section's settings the default of its kind.
    ErrorResult saveDefaultComponentPreset(int group, int sectionNumber);

    // SnapshotOwner. Undo and compare leave the parameters alone that no preset holds. Thread: main.

    UndoHistory& undoHistory() override { return history; }
    CompareStates& compareStates() override { return states; }
    std::vector<float> storedValues() const override;
    void restoreStoredValues(const std::vector<float>& values) override;
    PresetIdentity presetIdentity() const override;
    void restorePresetIdentity(const PresetIdentity& identity, bool pathChanged) override;
    InterfaceState interfaceState() const override { return viewState; }
    void restoreInterfaceState(const InterfaceState& state) override;
    void restoreCustomValues(const CustomValues& values) override;

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

    // IGenericPluginInstance

    const std::string& productName() const override { return versionedName; }
    int channelLayout() const override { return layoutIndex(); }
    std::uint32_t pluginCode() const override;
    std::uint32_t modificationCount() const override { return modifications.load(); }

protected:
    /// Takes part in what the instances of the process share. Called once, by the product's constructor, when
    /// the parameters stand and the product has its name.
    void joinProcess();
    /// Ends that. Called by the product's destructor, while others may still ask the instance for its name.
    void leaveProcess();
    /// Makes what the first instance of the process makes for all.
    virtual void initialiseProcessWideData();
    virtual std::unique_ptr<PluginSettings> createSettings();
    virtual std::unique_ptr<::SharedSettings> createSharedSettings();

    /// Under which the product's settings are stored.
    std::string storeKey() const;
    InterfaceLimits interfaceLimits() const;

    /// The folder of the presets that all instances use.
    std::string presetRoot() const;

    // NamedPluginInstance

    const std::string& baseInstanceName() const override { return GenericPluginInfo::name; }
    std::string trackName() const override { return track.trackName; }
    void instanceNameChanged() override { tellListener(Listener::InstanceRenamed, 0); }
    void instanceStateChanged() override;

    /// Whether presets hold a parameter. Asked once, when the parameters stand.
    virtual bool isStored(const AbstractPluginParameter&) const { return true; }
    /// For files of any version that the product knows.
    virtual std::unique_ptr<CustomPresetLoader> createPresetLoader();
    /// Reads a file within the batch that `loadPreset` opens.
    virtual void loadPresetFile(ErrorResult& result, const PresetInfo& preset);
    /// The default preset is being loaded.
    bool isLoadingDefault() const noexcept { return loadingDefaultPreset; }

    // Where the tree of preset files is known.

    /// The path of the preset called so; empty if there is none.
    virtual std::string findPresetPath(std::string_view name);
    /// A file has been written.
    virtual void presetWasSaved(const PresetInfo& preset);
    /// The first preset called so among the presets of a section.
    virtual std::optional<PresetInfo> findComponentPreset(int group, std::string_view name);

private:
    bool readParameterState(BinaryDataReader& reader);
    bool readStateExtension(std::istream& stream, BinaryDataReader& reader);
    void collectParameters();
    void componentPresetWasSaved(int group);
    void makePresetFolders();
    void fillPresetFolders();
    void markModified() noexcept;
    void goBy(const PresetInfo& preset);
    void tellHost(StateChange change);
    PresetInfo defaultComponentPreset(int group) const;
    std::string interfaceDefaultsPath() const;

    void controllerMapWasChanged(void*);
    /// @param index  of a parameter, or a number of AllParameters
    void forward(int index) noexcept;

    // PluginMessageQueue::Receiver

    void latencyMessage() override;
    void presetMessage(int bank, int program) override;
    void parameterMessage(int index) override;

    enum class BatchPending { Nothing, ForHost, NotForHost };

    Adapter* adapter = nullptr;
    SharedPluginData* shared = nullptr;
    PluginMessageQueue messages{*this};
    std::atomic<std::thread::id> creatingThread{std::this_thread::get_id()};
    std::unique_ptr<PluginSettings> instanceSettings;
    std::atomic<std::uint32_t> modifications{0};
    std::atomic<Listener*> listener{nullptr};
    std::atomic<int> listenerCalls{0};  // in flight
    std::atomic<int> batchDepth{0};
    std::atomic<BatchPending> batchPending{BatchPending::Nothing};
    int pendingReset = WithoutReset;  // goes out with the batch
    CustomValues valuesByKey;
    InterfaceState viewState;
    UndoHistory history{*this};
    CompareStates states{*this};
    bool loadingDefaultPreset = false;
    float rate = 44100.0f;
    TrackContext track;
    float displayTempo = 120.0f;
    std::array<std::uint64_t, 4> playTimestamps{};
};
