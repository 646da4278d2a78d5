#include "gallery/PollLoop.h"

#include <algorithm>

#include <poll.h>

namespace gallery {

bool PollLoop::Watch(int descriptor, Client& client)
{
    watched.push_back({descriptor, &client});
    return true;
}

void PollLoop::Unwatch(int descriptor)
{
    std::erase_if(watched, [descriptor](const Watched& one) { return one.descriptor == descriptor; });
}

void PollLoop::Forget(Client& client)
{
    std::erase_if(watched, [&client](const Watched& one) { return one.client == &client; });
}

void PollLoop::Run()
{
    for (running = true; running && !watched.empty();) {
        std::vector<pollfd> polled;
        for (const Watched& one : watched)
            polled.push_back({one.descriptor, POLLIN, 0});
        poll(polled.data(), polled.size(), -1);
        for (const pollfd& ready : polled) {
            // A call may have changed the list.
            const auto found = std::find_if(watched.begin(), watched.end(), [&ready](const Watched& one) {
                return one.descriptor == ready.fd;
            });
            if (ready.revents != 0 && found != watched.end())
                found->client->LoopCalled();
        }
    }
}

}  // namespace gallery
