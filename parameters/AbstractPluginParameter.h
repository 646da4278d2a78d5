#pragma once

#include "parameters/GenericParameterOwner.h"
#include "parameters/ParameterListener.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// How owners announce a change. Parameters only pass it on.
enum ParameterChangeFlags : int {
    announceChange = 0,
    noEcho = 1,  // the host knows already: its automation, or a reload of stored state
};

/// A value that a host, a preset, the editor or a controller can change.
///
/// A value has up to four forms. The parameter value, between a minimum and a maximum, is what hosts, presets
/// and undo store; the normalised value is the same on 0..1. The signal is what the engine gets. The display
/// value is what the user reads.
///
/// Parameters are built once, in one fixed order; their place in it is their index. What describes a
/// parameter is set right after, on the main thread, and stays. Its value is set and read by any thread.
class AbstractPluginParameter {
public:
    /// @param parameterOwner  null for a parameter that is in no list; its index is -1
    AbstractPluginParameter(GenericParameterOwner* parameterOwner, std::string identifyingName);
    AbstractPluginParameter(const AbstractPluginParameter&) = delete;
    AbstractPluginParameter& operator=(const AbstractPluginParameter&) = delete;
    virtual ~AbstractPluginParameter() = default;

    int index() const noexcept REALTIME { return listIndex; }
    GenericParameterOwner* owner() const noexcept REALTIME { return parent; }
    /// What hosts show and presets look for. It never changes.
    const std::string& displayName() const noexcept { return identifier; }

    /// All threads see all values of all parameters change in one order.
    virtual float currentValue() const noexcept REALTIME = 0;
    /// Takes a value, brought into the range, and tells the owner. A value that is no change is dropped.
    /// @param flags  ParameterChangeFlags
    virtual void setValue(float value, int flags) noexcept REALTIME = 0;
    /// Hands a value, which needn't be the current one, to the engine: to listeners and to what is bound.
    /// Thread: audio, for the parameters of the audio half.
    virtual void deliverValue(float value) noexcept REALTIME = 0;
    /// Listeners are called in the order in which they were added. Not owned. Thread: main, before values are
    /// delivered.
    void addListener(ParameterListener& listener) { listeners.push_back(&listener); }

    virtual float minimumValue() const noexcept REALTIME = 0;
    virtual float maximumValue() const noexcept REALTIME = 0;
    virtual float defaultValue() const noexcept REALTIME = 0;

    virtual float valueToSignal(float value) const noexcept REALTIME { return value; }
    virtual float signalToValue(float signal) const noexcept REALTIME { return signal; }
    virtual float valueToDisplay(float value) const noexcept REALTIME { return value; }
    virtual float displayToValue(float display) const noexcept REALTIME { return display; }
    virtual float valueToNormal(float value) const noexcept REALTIME = 0;
    virtual float normalToValue(float normal) const noexcept REALTIME = 0;

    /// The value that stands to `value` as `newReference` stands to `oldReference`, by what the user reads.
    /// `value` itself if the old reference reads 0.
    float rescale(float value, float oldReference, float newReference) const noexcept REALTIME;

    /// What the user reads for a value. Parsing it gives a value with the same text. Thread: any but audio.
    virtual std::string valueText(float value) const = 0;
    /// The same in at most `maxChars` bytes.
    virtual std::string shortText(float value, std::size_t maxChars) const;
    /// The value that a typed text means. None if it can't be read. Thread: any but audio.
    virtual std::optional<float> parseText(std::string_view text) const = 0;
    /// True if values are named, as the items of a list are.
    virtual bool hasItemNames() const noexcept { return false; }
    /// True if values read as numbers.
    virtual bool isNumeric() const noexcept = 0;

    /// Normalised values as presets of an older version hold them, from when a list had fewer items. None if
    /// that version didn't have the value.
    virtual float valueToNormalForVersion(float value, int version) const noexcept;
    virtual std::optional<float> normalToValueForVersion(float normal, int version) const noexcept;
    /// The highest value of exactly that version, -1 if the range didn't change with it.
    virtual int limitForVersion(int version) const noexcept;

    std::string name;  // what the editor shows; at first the display name
    std::string_view helpText;
    std::vector<std::string> aliases;
    bool automatable = true;
    bool stepped = false;

protected:
    void announce(float value, int flags) noexcept REALTIME;
    void tellListeners(float signalOrRaw) noexcept REALTIME;

private:
    GenericParameterOwner* const parent;
    const std::string identifier;
    int listIndex = -1;
    std::vector<ParameterListener*> listeners;
};
