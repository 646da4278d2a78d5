#pragma once

#include "core/GenericPluginBase.h"
#include "core/SharedPluginData.h"
#include "foundation/ErrorResult.h"

#include <array>
#include <atomic>
#include <cstdint>

class BinaryDataReader;

/// The main-thread half of a plug-in: the parameters as the user sees them. It reaches the audio half only
/// through its adapter.
class GenericPlugin : public GenericPluginBase {
public:
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
        };
        virtual ~Listener() = default;
        virtual void message(int messageCode, int argument) noexcept = 0;
    };

    ~GenericPlugin() override;

    void setAdapter(Adapter* pluginAdapter) { adapter = pluginAdapter; }
    /// Waits for calls to the listener before. Thread: main.
    void setListener(Listener* newListener);
    void tellListener(int messageCode, int argument) noexcept;

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

private:
    void controllerMapWasChanged(void*);

    enum class BatchPending { Nothing, ForHost, NotForHost };

    Adapter* adapter = nullptr;
    SharedPluginData* shared = nullptr;
    std::atomic<Listener*> listener{nullptr};
    std::atomic<int> listenerCalls{0};  // in flight
    std::atomic<int> batchDepth{0};
    std::atomic<BatchPending> batchPending{BatchPending::Nothing};
    int pendingReset = WithoutReset;  // goes out with the batch
    float rate = 44100.0f;
    float displayTempo = 120.0f;
    std::array<std::uint64_t, 4> playTimestamps{};
};
