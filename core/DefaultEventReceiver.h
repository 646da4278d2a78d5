#pragma once

#include "core/AbstractMusicEventReceiver.h"
#include "foundation/Property.h"

/// Has one channel receiver, which listens to all channels until it is given a single one.
class DefaultEventReceiver : public AbstractMusicEventReceiver, public PropertyOwner {
public:
    explicit DefaultEventReceiver(std::unique_ptr<AbstractChannelEventReceiver> receiver);

    /// The one there is, wherever it listens.
    AbstractChannelEventReceiver& channelReceiver() const noexcept REALTIME { return *channel(present); }

    /// Moves the receiver. Thread: audio.
    void propertyChanged(AbstractProperty& property) override;

    LimitedProperty<int> entry{allChannels, 0, entryCount - 1, this};

private:
    int present = allChannels;  // where the receiver is
};
