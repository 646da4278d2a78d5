#pragma once

#include "platform/FileRequest.h"

#include <dbus/dbus.h>

#include <cstdint>
#include <memory>
#include <string>

namespace gui {

class X11Interface;

/// The desktop's own file dialog, asked for over a private connection to the session's bus. Thread: main.
class PortalFileChooser {
public:
    enum class Result { Chosen, Cancelled, Unavailable };

    explicit PortalFileChooser(X11Interface& editor);
    ~PortalFileChooser();
    PortalFileChooser(const PortalFileChooser&) = delete;
    PortalFileChooser& operator=(const PortalFileChooser&) = delete;

    /// Runs until it is answered, with the root's lock freed.
    /// @param path  the choice
    Result Run(const FileRequest& fileRequest, std::string& path);

private:
    struct Unref {
        void operator()(DBusMessage* message) const { dbus_message_unref(message); }
    };
    using Message = std::unique_ptr<DBusMessage, Unref>;

    bool Connect();
    void Greeted(const char* name);
    bool Ask();
    void Poll();
    void Take(DBusMessage* message);
    void TakeResponse(DBusMessage* message);
    void Withdraw();

    X11Interface& owner;
    const FileRequest* request = nullptr;
    DBusConnection* bus = nullptr;
    std::uint32_t helloSerial = 0;
    std::uint32_t callSerial = 0;  // 0 until the bus has answered
    std::string handle;            // of the running dialog, as the portal names it
    bool answered = false;
    bool isShown = false;
    Result result = Result::Unavailable;
    std::string uri;
};

}  // namespace gui
