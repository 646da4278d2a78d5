#include "core/GenericPlugin.h"

#include "core/SharedPluginData.h"
#include "foundation/AtomicFile.h"
#include "foundation/BinaryDataWriter.h"
#include "foundation/BinaryFileReader.h"
#include "foundation/BinaryResourceReader.h"
#include "foundation/Paths.h"
#include "foundation/Resources.h"
#include "foundation/UserFolders.h"

#include <chrono>
#include <thread>
#include <utility>

namespace {

constexpr int presetsPerBank = 128;
constexpr const char* controllerMapName = "MidiControllerMap.mvm";

}  // namespace

GenericPlugin::~GenericPlugin() { leaveProcess(); }

void GenericPlugin::joinProcess()
{
    const std::lock_guard lock(SharedPluginData::lock());
    bool first = false;
    shared = &SharedPluginData::join(first);
    joinInstances(shared->instances);
    if (first)
        initialiseProcessWideData();
    instanceSettings = createSettings();
    readSettings();
    if (first)
        fillPresetFolders();
    instanceSettings->loaded.assign(true);
    sharedSettings().loaded.assign(true);
    shared->controllerMapping.mapChanged.addHandler(
        NotifyEvent::handler(*this, &GenericPlugin::controllerMapWasChanged));
    collectParameters();
}

void GenericPlugin::initialiseProcessWideData()
{
    shared->settings = createSharedSettings();
    if (!loadControllerMap())
        loadDefaultControllerMap();
    makePresetFolders();
}

void GenericPlugin::leaveProcess()
{
    if (!shared)
        return;
    const std::lock_guard lock(SharedPluginData::lock());
    shared->controllerMapping.mapChanged.removeHandler(
        *NotifyEvent::handler(*this, &GenericPlugin::controllerMapWasChanged));
    leaveInstances();
    shared = nullptr;
    SharedPluginData::leave();
}

std::uint32_t GenericPlugin::pluginCode() const
{
    std::uint32_t result = 0;
    for (const char letter : code)
        result = result << 8 | static_cast<unsigned char>(letter);
    return result;
}

void GenericPlugin::instanceStateChanged()
{
    if (adapter)
        adapter->stateChanged(StateChange::Other);
}

// Messages from other threads.

void GenericPlugin::requestProgramChange(int bank, int program) noexcept
{
    if (shared->settings->takesProgramChanges())
        messages.postPreset(bank, program);
}

void GenericPlugin::latencyMessage()
{
    if (adapter)
        adapter->latencyChanged();
}

void GenericPlugin::presetMessage(int bank, int program) { selectPreset(bank * presetsPerBank + program); }

void GenericPlugin::parameterMessage(int index)
{
    if (adapter && index < parameterCount())
        adapter->parameterChanged(index);
}

// The controller map.

ControllerMapping& GenericPlugin::controllerMapping() { return shared->controllerMapping; }

void GenericPlugin::controllerMapWasChanged(void*)
{
    if (adapter)
        adapter->controllerMapChanged();
    tellListener(Listener::ControllerMapChanged, 0);
}

void GenericPlugin::loadDefaultControllerMap()
{
    ControllerMapping& mapping = controllerMapping();
    const ScopedUpdate bracket(mapping);
    mapping.reset();
    if (!resourceExists(controllerMapName))
        return;
    BinaryResourceReader reader(controllerMapName);
    mapping.read(reader);
}

bool GenericPlugin::loadControllerMap()
{
    const std::string folder = productDataFolder(versionedName);
    if (folder.empty())
        return false;
    BinaryFileReader reader(folder + controllerMapName);
    return controllerMapping().read(reader);
}

ErrorResult GenericPlugin::saveControllerMap()
{
    ErrorResult result;
    const std::string folder = productDataFolder(versionedName);
    if (folder.empty()) {
        result.reportError(ErrorReporter::failure, "There is no folder to keep the controller map in");
        return result;
    }
    createFolders(folder);  // what fails here, the writing says
    AtomicFile file(folder + controllerMapName);
    BinaryDataWriter writer(file.stream());
    controllerMapping().write(writer);
    file.commit(result);
    return result;
}

// Changes and who hears of them.

void GenericPlugin::setListener(Listener* newListener)
{
    if (newListener)
        creatingThread.store(std::this_thread::get_id());
    listener.store(newListener);
    while (listenerCalls.load() != 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void GenericPlugin::tellListener(int messageCode, int argument) noexcept
{
    listenerCalls.fetch_add(1);
    if (Listener* present = listener.load())
        present->message(messageCode, argument);
    listenerCalls.fetch_sub(1);
}

void GenericPlugin::beginParameterBatch() { batchDepth.fetch_add(1); }

void GenericPlugin::endParameterBatch()
{
    if (batchDepth.fetch_sub(1) != 1)
        return;
    const BatchPending pending = batchPending.exchange(BatchPending::Nothing);
    const int reset = std::exchange(pendingReset, static_cast<int>(WithoutReset));
    if (pending == BatchPending::Nothing)
        return;
    if (pending == BatchPending::ForHost)
        forward(reset);
    tellListener(Listener::ParameterChanged, -1);
}

void GenericPlugin::requestSoftReset()
{
    if (pendingReset != WithHardReset)
        pendingReset = WithSoftReset;
}

void GenericPlugin::forward(int index) noexcept
{
    if (!adapter)
        return;
    if (isMainThread())
        adapter->parameterChanged(index);
    else
        messages.postParameterChange(index);
}

void GenericPlugin::parameterValueChanged(int index, float value, int changeFlags) noexcept
{
    parameter(index).deliverValue(value);
    markModified();
    const bool echo = (changeFlags & noEcho) == 0;
    if (batchDepth.load() != 0) {
        // What must reach the host stays so, whatever follows in the same batch.
        auto nothing = BatchPending::Nothing;
        if (echo)
            batchPending.store(BatchPending::ForHost);
        else
            batchPending.compare_exchange_strong(nothing, BatchPending::NotForHost);
        if (batchDepth.load() != 0)
            return;
    }
    if (echo)
        forward(index);
    tellListener(Listener::ParameterChanged, index);
}

void GenericPlugin::setTrackContext(const TrackContext& context)
{
    if (!hasFlag(WantsTrackInfo) || context == track)
        return;
    track = context;
    tellListener(Listener::TrackContextChanged, 0);
    updateAutoName();
}

// What an editor shows.

void GenericPlugin::pullDisplayData(bool withModulation)
{
    if (adapter)
        adapter->pullDisplayData(withModulation);
}

void GenericPlugin::readDisplayData(BinaryDataReader& reader)
{
    displayTempo = reader.readFloat();
    for (std::uint64_t& timestamp : playTimestamps)
        timestamp = reader.readUInt64();
}
