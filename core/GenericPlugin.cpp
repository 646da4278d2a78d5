#include "core/GenericPlugin.h"

#include "core/PresetFolderSetting.h"
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

constexpr const char* controllerMapName = "MidiControllerMap.mvm";

}  // namespace

GenericPlugin::~GenericPlugin()
{
    if (!shared)
        return;
    const std::lock_guard lock(SharedPluginData::lock());
    shared->controllerMapping.mapChanged.removeHandler(
        *NotifyEvent::handler(*this, &GenericPlugin::controllerMapWasChanged));
    SharedPluginData::leave();
}

void GenericPlugin::joinProcess()
{
    const std::lock_guard lock(SharedPluginData::lock());
    bool first = false;
    shared = &SharedPluginData::join(first);
    if (first)
        initialiseProcessWideData();
    choosePresetFolder(
        presetFolderSetting(GenericPluginInfo::name, version().major, presetFolder(versionedName)));
    if (first)
        fillPresetFolders();
    shared->controllerMapping.mapChanged.addHandler(
        NotifyEvent::handler(*this, &GenericPlugin::controllerMapWasChanged));
    collectParameters();
}

// The controller map.

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
    if (pending == BatchPending::ForHost && adapter)
        adapter->parameterChanged(reset);
    tellListener(Listener::ParameterChanged, -1);
}

void GenericPlugin::requestSoftReset()
{
    if (pendingReset != WithHardReset)
        pendingReset = WithSoftReset;
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
    if (echo && adapter)
        adapter->parameterChanged(index);
    tellListener(Listener::ParameterChanged, index);
}

void GenericPlugin::setTrackContext(const TrackContext& context)
{
    if (!hasFlag(WantsTrackInfo) || context == track)
        return;
    track = context;
    tellListener(Listener::TrackContextChanged, 0);
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
