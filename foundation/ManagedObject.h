#pragma once

/// The root of polymorphic objects that a container owns.
class ManagedObject {
public:
    ManagedObject() = default;
    ManagedObject(const ManagedObject&) = delete;
    ManagedObject& operator=(const ManagedObject&) = delete;
    virtual ~ManagedObject() = default;
};
