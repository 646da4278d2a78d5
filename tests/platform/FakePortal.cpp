#include "FakePortal.h"

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

FakePortal::FakePortal(Behaviour how, std::string uri) : behaviour(how), answer(std::move(uri))
{
    StartBus();
    if (bus)
        thread = std::thread([this] { Run(); });
}

FakePortal::~FakePortal()
{
    stopping = true;
    if (thread.joinable())
        thread.join();
    if (bus) {
        dbus_connection_close(bus);
        dbus_connection_unref(bus);
    }
    if (daemon > 0) {
        kill(daemon, SIGKILL);
        waitpid(daemon, nullptr, 0);
    }
    unsetenv("DBUS_SESSION_BUS_ADDRESS");
}

void FakePortal::StartBus()
{
    int ends[2];
    if (pipe(ends) != 0)
        return;
    daemon = fork();
    if (daemon == 0) {
        close(ends[0]);
        const std::string print = "--print-address=" + std::to_string(ends[1]);
        execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--nosyslog", "--nopidfile",
               print.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    close(ends[1]);
    std::string address;
    char c = 0;
    while (read(ends[0], &c, 1) == 1 && c != '\n')
        address += c;
    close(ends[0]);
    setenv("DBUS_SESSION_BUS_ADDRESS", address.c_str(), 1);
    bus = dbus_connection_open_private(address.c_str(), nullptr);
    if (!bus)
        return;
    dbus_connection_set_exit_on_disconnect(bus, false);
    dbus_bus_register(bus, nullptr);
    dbus_bus_request_name(bus, "org.freedesktop.portal.Desktop", 0, nullptr);
}

void FakePortal::Run()
{
    constexpr int turnMs = 10;
    while (!stopping && dbus_connection_read_write(bus, turnMs))
        while (DBusMessage* message = dbus_connection_pop_message(bus)) {
            const char* interface = dbus_message_get_interface(message);
            if (interface && std::strcmp(interface, "org.freedesktop.portal.FileChooser") == 0)
                Answer(message);
            dbus_message_unref(message);
        }
}

void FakePortal::Answer(DBusMessage* call)
{
    method = dbus_message_get_member(call);
    DBusMessageIter arguments;
    const char* text = nullptr;
    dbus_message_iter_init(call, &arguments);
    dbus_message_iter_get_basic(&arguments, &text);
    window = text;
    dbus_message_iter_next(&arguments);
    dbus_message_iter_get_basic(&arguments, &text);
    title = text;
    dbus_message_iter_next(&arguments);
    ReadOptions(arguments);
    if (behaviour == Behaviour::Refuses) {
        DBusMessage* error = dbus_message_new_error(call, DBUS_ERROR_UNKNOWN_METHOD, "no such method");
        dbus_connection_send(bus, error, nullptr);
        dbus_message_unref(error);
        return;
    }
    // A name of its own, as old portals choose.
    const char* handle = "/org/freedesktop/portal/desktop/request/one/two";
    DBusMessage* reply = dbus_message_new_method_return(call);
    dbus_message_append_args(reply, DBUS_TYPE_OBJECT_PATH, &handle, DBUS_TYPE_INVALID);
    dbus_connection_send(bus, reply, nullptr);
    dbus_message_unref(reply);
    dbus_connection_flush(bus);
    if (behaviour == Behaviour::Vanishes) {
        kill(daemon, SIGKILL);
        return;
    }
    DBusMessage* response = dbus_message_new_signal(handle, "org.freedesktop.portal.Request", "Response");
    DBusMessageIter out, results, entry, value, uris;
    const std::uint32_t code = behaviour == Behaviour::Chooses ? 0 : 1;
    const char* key = "uris";
    const char* uri = answer.c_str();
    dbus_message_iter_init_append(response, &out);
    dbus_message_iter_append_basic(&out, DBUS_TYPE_UINT32, &code);
    dbus_message_iter_open_container(&out, DBUS_TYPE_ARRAY, "{sv}", &results);
    if (code == 0) {
        dbus_message_iter_open_container(&results, DBUS_TYPE_DICT_ENTRY, nullptr, &entry);
        dbus_message_iter_append_basic(&entry, DBUS_TYPE_STRING, &key);
        dbus_message_iter_open_container(&entry, DBUS_TYPE_VARIANT, "as", &value);
        dbus_message_iter_open_container(&value, DBUS_TYPE_ARRAY, "s", &uris);
        dbus_message_iter_append_basic(&uris, DBUS_TYPE_STRING, &uri);
        dbus_message_iter_close_container(&value, &uris);
        dbus_message_iter_close_container(&entry, &value);
        dbus_message_iter_close_container(&results, &entry);
    }
    dbus_message_iter_close_container(&out, &results);
    dbus_connection_send(bus, response, nullptr);
    dbus_message_unref(response);
    dbus_connection_flush(bus);
}

void FakePortal::ReadOptions(DBusMessageIter options)
{
    DBusMessageIter each, entry, value, inner;
    for (dbus_message_iter_recurse(&options, &each);
         dbus_message_iter_get_arg_type(&each) == DBUS_TYPE_DICT_ENTRY; dbus_message_iter_next(&each)) {
        const char* key = nullptr;
        dbus_message_iter_recurse(&each, &entry);
        dbus_message_iter_get_basic(&entry, &key);
        dbus_message_iter_next(&entry);
        dbus_message_iter_recurse(&entry, &value);
        const std::string option = key;
        if (option == "current_name") {
            const char* text = nullptr;
            dbus_message_iter_get_basic(&value, &text);
            name = text;
        } else if (option == "directory") {
            dbus_bool_t flag = false;
            dbus_message_iter_get_basic(&value, &flag);
            directory = flag;
        } else if (option == "current_folder") {
            const char* bytes = nullptr;
            int length = 0;
            dbus_message_iter_recurse(&value, &inner);
            dbus_message_iter_get_fixed_array(&inner, &bytes, &length);
            folder.assign(bytes, static_cast<std::size_t>(length));
        } else if (option == "filters") {
            DBusMessageIter filter, patterns, pattern;
            const char* text = nullptr;
            dbus_message_iter_recurse(&value, &inner);
            dbus_message_iter_recurse(&inner, &filter);
            dbus_message_iter_next(&filter);
            dbus_message_iter_recurse(&filter, &patterns);
            dbus_message_iter_recurse(&patterns, &pattern);
            dbus_message_iter_next(&pattern);
            dbus_message_iter_get_basic(&pattern, &text);
            firstPattern = text;
        }
    }
}
