#pragma once

#include "foundation/UpdatedObject.h"

#include <cstdint>
#include <memory>
#include <vector>

/// Keeps calls back until the end of an update and then makes each once.
class EventForwarderList : public UpdatedObject {
public:
    class Target {
    public:
        virtual ~Target() = default;
        virtual void forward(std::int64_t argument) = 0;
    };

    /// One call: of `target` with `argument`, at most once per update.
    struct Forwarder {
        Target* target;
        std::int64_t argument;
        bool pending = false;
    };

    /// Makes a forwarder, owned by the list.
    Forwarder& add(Target& target, std::int64_t argument);
    /// Marks `forwarder` for the next update, or makes the call now if none is open.
    void raise(Forwarder& forwarder);

protected:
    void update() override;

private:
    std::vector<std::unique_ptr<Forwarder>> forwarders;
    std::vector<Forwarder*> pendingForwarders;
};
