#pragma once

#include <cstdint>
#include <string>

/// What the instances of a process see of one another. Thread: main, with the list's lock held where it is
/// another's instance.
class IGenericPluginInstance {
public:
    /// Of this class.
    static constexpr int version = 16;

    virtual ~IGenericPluginInstance() = default;
    virtual int interfaceVersion() const = 0;
    /// With its major version, as "Sordelin 2".
    virtual const std::string& productName() const = 0;
    /// The number of its channel layout.
    virtual int channelLayout() const = 0;
    /// The number by which a project tells this instance from others; the first call takes a new one.
    virtual int group() = 0;
    /// The four characters of the product's code, the first one in the high byte.
    virtual std::uint32_t pluginCode() const = 0;
    virtual const std::string& instanceName() const = 0;
    /// Goes up with every change of a parameter.
    virtual std::uint32_t modificationCount() const = 0;
    /// The track's name, if the instance goes by it and there is one; otherwise the instance's.
    virtual std::string displayName() const = 0;
    /// True if the instance has taken a number, and it is this one.
    virtual bool hasGroup(int number) const = 0;
    /// A name of the user's, which needn't be the only one of its kind. An empty one has the instance name
    /// itself again, by its track or its product.
    virtual void setInstanceName(const std::string& text) = 0;
    /// -1 for none.
    virtual int perTrackIndex() const = 0;
    virtual void setPerTrackIndex(int value) = 0;
};
