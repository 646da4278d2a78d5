#pragma once

#include "core/CompareStates.h"
#include "core/ControllerMapping.h"
#include "core/GenericPluginBase.h"
#include "core/NamedPluginInstance.h"
#include "core/PluginMessageQueue.h"
#include "core/PluginSettings.h"
#include "core/SharedSettings.h"
#include "core/UndoHistory.h"
#include "core/VersionInfo.h"
#include "foundation/ErrorResult.h"

#include <atomic>
#include <memory>
#include <string>
#include <thread>

class SharedPluginData;

/// The main-thread half of a plug-in: the parameters as the user sees them. It reaches the audio half only
/// through its adapter.
class GenericPlugin : public GenericPluginBase,
                      public NamedPluginInstance,
                      private PluginMessageQueue::Receiver {
public:
    using SettingsBase = ::SettingsBase;
    using Settings = ::PluginSettings;
    using SharedSettings = ::SharedSettings;
    using SnapshotList = ::SnapshotList;
    using UndoHistory = ::UndoHistory;
    using CompareStates = ::CompareStates;

    enum StateChange { PresetLoaded = 0, InstanceNameChanged = 1 };

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
    };

    /// Stands for all parameters in `Adapter::parameterChanged`.
    enum AllParameters { WithoutReset = -1, WithSoftReset = -2, WithHardReset = -3 };

    /// Hears of changes. It must stand calls from the audio thread.
    class Listener {
    public:
        enum Code {
            ParameterChanged = -1025,
            ControllerMoved = -1027,
            ControllerMapChanged = -1029,
            LayoutChanged = -1030,
            InstanceRenamed = -1031,
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

    // Presets, as far as settings and MIDI reach them.

    /// The folder of the presets that all instances use.
    virtual std::string presetRoot() const;
    virtual void setPresetRoot(const std::string& path);
    /// @param number  in the order of the presets; there needn't be one
    virtual void selectPreset(int) {}

    // NamedPluginInstance

    const std::string& baseInstanceName() const override { return GenericPluginInfo::name; }
    void instanceNameChanged() override { tellListener(Listener::InstanceRenamed, 0); }
    void instanceStateChanged() override;

private:
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
    float rate = 44100.0f;
};
