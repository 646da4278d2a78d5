#pragma once

#include "foundation/Tolerance.h"
#include "foundation/UpdatedObject.h"
#include "foundation/ValueAssignable.h"

#include <algorithm>
#include <type_traits>
#include <utility>

class AbstractProperty;

/// Hears of the changes of its properties. It can batch its own report through `UpdatedObject`.
class PropertyOwner : public UpdatedObject {
public:
    virtual void propertyChanged(AbstractProperty& property) = 0;
};

/// What all properties share: the owner, which may be null. A property belongs to one thread at a time.
class AbstractProperty {
public:
    explicit AbstractProperty(PropertyOwner* propertyOwner = nullptr) : owner(propertyOwner) {}
    AbstractProperty(const AbstractProperty&) = delete;
    AbstractProperty& operator=(const AbstractProperty&) = delete;

    virtual ~AbstractProperty() = default;

protected:
    void notifyOwner()
    {
        if (owner)
            owner->propertyChanged(*this);
    }

private:
    PropertyOwner* owner;
};

/// A value that tells its owner when it changes. Assigning an equal value tells nobody.
template <class T>
class Property : public AbstractProperty, public ValueAssignable<T> {
public:
    explicit Property(T initial = T(), PropertyOwner* propertyOwner = nullptr)
        : AbstractProperty(propertyOwner), current(std::move(initial))
    {}

    /// No-throw where `T` copies without allocating, which is all that the audio thread uses.
    void assign(T newValue) noexcept override
    {
        if (isSameValue(current, newValue))
            return;
        current = std::move(newValue);
        notifyOwner();
    }
    const T& value() const noexcept { return current; }

private:
    T current;
};

/// A property held within [minimum, maximum].
template <class T>
class LimitedProperty : public Property<T> {
public:
    LimitedProperty(T initial, T lowest, T highest, PropertyOwner* propertyOwner = nullptr)
        : Property<T>(std::clamp(initial, lowest, highest), propertyOwner), maximum(highest), minimum(lowest)
    {}

    void assign(T newValue) noexcept override { Property<T>::assign(std::clamp(newValue, minimum, maximum)); }

    /// Also brings the present value within the new limits, which the owner hears of if it moves.
    void setLimits(T lowest, T highest) noexcept
    {
        minimum = lowest;
        maximum = highest;
        assign(this->value());
    }

private:
    T maximum;
    T minimum;
};

/// A property without a value of its own: `Target` has `T value() const` and `void assign(T)`.
template <class T, class Target>
class DelegatingProperty : public AbstractProperty, public ValueAssignable<T> {
public:
    explicit DelegatingProperty(Target& delegate, PropertyOwner* propertyOwner = nullptr)
        : AbstractProperty(propertyOwner), target(delegate)
    {}

    void assign(T newValue) noexcept override
    {
        if (isSameValue(static_cast<T>(target.value()), newValue))
            return;
        target.assign(std::move(newValue));
        notifyOwner();
    }
    T value() const { return target.value(); }

private:
    Target& target;
};
