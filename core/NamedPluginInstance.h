#pragma once

#include "core/GenericPluginInstanceList.h"
#include "core/IGenericPluginInstance.h"

/// An instance's name and number among the instances of its process. It goes by the name of its track, or
/// else of its product, with a number where others have that name already, until a user names it. Thread:
/// main.
class NamedPluginInstance : public IGenericPluginInstance {
public:
    // IGenericPluginInstance

    int interfaceVersion() const override { return version; }
    int group() override;
    const std::string& instanceName() const override { return ownName; }
    std::string displayName() const override;
    bool hasGroup(int number) const override { return ownGroup != noGroup && ownGroup == number; }
    void setInstanceName(const std::string& text) override;
    int perTrackIndex() const override { return trackIndex; }
    void setPerTrackIndex(int value) override { trackIndex = value; }

    /// True while the instance isn't named by a user.
    bool hasAutoName() const { return autoName; }
    /// Takes over what a project tells: who named the instance, and the name. The project knows it already.
    void restoreInstanceName(bool automatic, const std::string& text);
    /// -1 if none has been taken.
    int instanceGroup() const { return ownGroup; }
    /// Takes the number that a project tells, unless another instance has it: a copy within the project keeps
    /// its own.
    void restoreGroup(int number);
    /// To be called when the track's name has changed.
    void updateAutoName() { updateInstanceName({}); }

protected:
    /// Makes the instance known to the others, under a name of its own.
    void joinInstances(GenericPluginInstanceList& instanceList);
    void leaveInstances();

    /// Without the version.
    virtual const std::string& baseInstanceName() const = 0;
    /// Empty if it isn't known.
    virtual std::string trackName() const { return {}; }
    virtual void instanceNameChanged() = 0;
    /// The user has changed what a project keeps.
    virtual void instanceStateChanged() = 0;

private:
    static constexpr int noGroup = -1;

    /// True if the name is another one now.
    bool updateInstanceName(const std::string& text);

    // Read by others too, and so changed with the list's lock held.
    std::string ownName;
    int ownGroup = noGroup;

    GenericPluginInstanceList* list = nullptr;
    bool autoName = true;
    int trackIndex = -1;
};
