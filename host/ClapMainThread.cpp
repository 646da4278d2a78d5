// How the host's main loop serves an instance: descriptors, timers and callbacks.
#include "host/ClapPluginAdapter.h"

const clap_plugin_posix_fd_support_t ClapPluginAdapter::descriptorTable{
    .on_fd =
        [](const clap_plugin_t* p, int fd, clap_posix_fd_flags_t) {
            if (of(p).delivery)
                of(p).delivery->onDescriptor(fd);
        },
};

const clap_plugin_timer_support_t ClapPluginAdapter::timerTable{
    .on_timer =
        [](const clap_plugin_t* p, clap_id id) {
            if (of(p).delivery)
                of(p).delivery->onTimer(id);
        },
};

void ClapPluginAdapter::deliverPending()
{
    DeferredEventQueue& queue = plugin->asyncQueue();
    if (queue.isAwaited() && plugin->isMainThread())
        queue.deliver();
}
