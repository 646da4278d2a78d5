#pragma once

#include "foundation/Realtime.h"

/// Anything that takes a value of type `T`.
template <class T>
class ValueAssignable {
public:
    virtual ~ValueAssignable() = default;
    virtual void assign(T value) noexcept REALTIME = 0;
};

/// Hands a value on to a target of another type by a plain conversion.
template <class From, class To>
class ValueAssignableConverter : public ValueAssignable<From> {
public:
    explicit ValueAssignableConverter(ValueAssignable<To>& receiver) : target(receiver) {}
    void assign(From value) noexcept REALTIME override { target.assign(static_cast<To>(value)); }

private:
    ValueAssignable<To>& target;
};
