#include "platform/PortalFileChooser.h"

#include "platform/X11Control.h"
#include "platform/X11FileDrop.h"
#include "platform/X11NestedLoop.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace gui {

namespace {

constexpr char portalName[] = "org.freedesktop.portal.Desktop";
constexpr char portalPath[] = "/org/freedesktop/portal/desktop";
constexpr char chooserInterface[] = "org.freedesktop.portal.FileChooser";
constexpr char requestInterface[] = "org.freedesktop.portal.Request";
constexpr char handleToken[] = "mvdialog";
// A portal that has to be started first takes some seconds.
constexpr std::uint32_t patienceMs = 10000;
// The bus itself answers at once, or not at all.
constexpr std::uint32_t busPatienceMs = 1000;

/// The session's bus; empty if there is none. One that would have to be started means starting programs,
/// which a plug-in doesn't.
std::string busAddress()
{
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address && *address)
        return std::strncmp(address, "unix:", 5) == 0 || std::strncmp(address, "tcp:", 4) == 0 ? address : "";
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (!runtime || !*runtime)
        return {};
    const std::string socket = std::string(runtime) + "/bus";
    struct stat status {};
    return stat(socket.c_str(), &status) == 0 ? std::string("unix:path=").append(socket) : std::string();
}

/// The part before any damage: the bus's library ends the program over text that isn't UTF-8, and names of
/// files may be anything.
std::string intact(std::string text)
{
    while (!dbus_validate_utf8(text.c_str(), nullptr))
        text.pop_back();
    return text;
}

std::string hexOf(std::uint32_t number)
{
    std::string text;
    do {
        text.insert(text.begin(), "0123456789abcdef"[number & 15]);
        number >>= 4;
    } while (number);
    return text;
}

/// The options of a call: a list of names with values of any kind.
class OptionWriter {
public:
    explicit OptionWriter(DBusMessageIter& call)
    {
        outer = &call;
        dbus_message_iter_open_container(outer, DBUS_TYPE_ARRAY, "{sv}", &list);
    }
    ~OptionWriter() { dbus_message_iter_close_container(outer, &list); }
    OptionWriter(const OptionWriter&) = delete;
    OptionWriter& operator=(const OptionWriter&) = delete;

    void Text(const char* name, const std::string& text)
    {
        const std::string sent = intact(text);
        const char* value = sent.c_str();
        Add(name, "s",
            [&](DBusMessageIter& in) { dbus_message_iter_append_basic(&in, DBUS_TYPE_STRING, &value); });
    }
    void Flag(const char* name, bool flag)
    {
        const dbus_bool_t value = flag;
        Add(name, "b",
            [&](DBusMessageIter& in) { dbus_message_iter_append_basic(&in, DBUS_TYPE_BOOLEAN, &value); });
    }
    /// With its closing zero.
    void Path(const char* name, const std::string& path)
    {
        Add(name, "ay", [&](DBusMessageIter& in) {
            DBusMessageIter bytes;
            const char* data = path.c_str();
            dbus_message_iter_open_container(&in, DBUS_TYPE_ARRAY, "y", &bytes);
            dbus_message_iter_append_fixed_array(&bytes, DBUS_TYPE_BYTE, &data,
                                                 static_cast<int>(path.size()) + 1);
            dbus_message_iter_close_container(&in, &bytes);
        });
    }
    void Filters(const char* name, const std::vector<FileRequest::Filter>& filters)
    {
        Add(name, "a(sa(us))", [&](DBusMessageIter& in) {
            DBusMessageIter all;
            dbus_message_iter_open_container(&in, DBUS_TYPE_ARRAY, "(sa(us))", &all);
            for (const FileRequest::Filter& filter : filters)
                AddFilter(all, filter);
            dbus_message_iter_close_container(&in, &all);
        });
    }

private:
    template <class Write>
    void Add(const char* name, const char* signature, Write write)
    {
        DBusMessageIter entry, value;
        dbus_message_iter_open_container(&list, DBUS_TYPE_DICT_ENTRY, nullptr, &entry);
        dbus_message_iter_append_basic(&entry, DBUS_TYPE_STRING, &name);
        dbus_message_iter_open_container(&entry, DBUS_TYPE_VARIANT, signature, &value);
        write(value);
        dbus_message_iter_close_container(&entry, &value);
        dbus_message_iter_close_container(&list, &entry);
    }

    static void AddFilter(DBusMessageIter& all, const FileRequest::Filter& filter)
    {
        constexpr std::uint32_t glob = 0;
        DBusMessageIter one, patterns, pattern;
        const std::string shown = intact(filter.name);
        const char* name = shown.c_str();
        dbus_message_iter_open_container(&all, DBUS_TYPE_STRUCT, nullptr, &one);
        dbus_message_iter_append_basic(&one, DBUS_TYPE_STRING, &name);
        dbus_message_iter_open_container(&one, DBUS_TYPE_ARRAY, "(us)", &patterns);
        for (const std::string& each : filter.patterns) {
            // Here a name needs no dot to be any name.
            const std::string sent = each == "*.*" ? "*" : intact(each);
            const char* text = sent.c_str();
            dbus_message_iter_open_container(&patterns, DBUS_TYPE_STRUCT, nullptr, &pattern);
            dbus_message_iter_append_basic(&pattern, DBUS_TYPE_UINT32, &glob);
            dbus_message_iter_append_basic(&pattern, DBUS_TYPE_STRING, &text);
            dbus_message_iter_close_container(&patterns, &pattern);
        }
        dbus_message_iter_close_container(&one, &patterns);
        dbus_message_iter_close_container(&all, &one);
    }

    DBusMessageIter* outer;
    DBusMessageIter list;
};

}  // namespace

PortalFileChooser::PortalFileChooser(X11Interface& editor) : owner(editor) {}

PortalFileChooser::~PortalFileChooser()
{
    if (!bus)
        return;
    dbus_connection_close(bus);
    dbus_connection_unref(bus);
}

PortalFileChooser::Result PortalFileChooser::Run(const FileRequest& fileRequest, std::string& path)
{
    request = &fileRequest;
    if (!Connect())
        return Result::Unavailable;
    const std::shared_ptr<const bool> alive = owner.Liveness();
    const TickMs clock = owner.Clock();
    const std::uint32_t start = clock();
    {
        const X11InputBlock block(nullptr);
        const RootControl::Suspension suspension(owner.Window());
        X11NestedLoop::Run(owner, [&] {
            Poll();
            return answered || (!isShown && clock() - start > (callSerial ? patienceMs : busPatienceMs));
        });
    }
    if (!answered)
        Withdraw();
    if (result == Result::Chosen) {
        path = X11FileDrop::FirstFile(uri);
        return path.empty() ? Result::Cancelled : Result::Chosen;
    }
    return *alive && !owner.IsWindowLost() ? result : Result::Cancelled;
}

bool PortalFileChooser::Connect()
{
    const std::string address = busAddress();
    if (address.empty())
        return false;
    bus = dbus_connection_open_private(address.c_str(), nullptr);
    if (!bus)
        return false;
    dbus_connection_set_exit_on_disconnect(bus, false);
    // The library's own way to say hello waits for the answer, and the editor with it.
    const Message hello(
        dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, "Hello"));
    return hello && dbus_connection_send(bus, hello.get(), &helloSerial);
}

void PortalFileChooser::Greeted(const char* name)
{
    dbus_bus_set_unique_name(bus, name);
    // Before the call: a quick answer may overtake its reply.
    const std::string rule = std::string("type='signal',interface='").append(requestInterface).append("'");
    dbus_bus_add_match(bus, rule.c_str(), nullptr);
    answered = !Ask();
}

bool PortalFileChooser::Ask()
{
    const bool saves = request->kind == FileRequest::Kind::SaveFile;
    const Message call(dbus_message_new_method_call(portalName, portalPath, chooserInterface,
                                                    saves ? "SaveFile" : "OpenFile"));
    if (!call)
        return false;
    std::string sender = dbus_bus_get_unique_name(bus) + 1;
    std::replace(sender.begin(), sender.end(), '.', '_');
    handle = std::string(portalPath).append("/request/").append(sender).append("/").append(handleToken);
    const std::string window = std::string("x11:").append(hexOf(owner.Window().TopLevel()));
    const char* windowText = window.c_str();
    const std::string shownTitle = intact(request->title);
    const char* title = shownTitle.c_str();
    DBusMessageIter arguments;
    dbus_message_iter_init_append(call.get(), &arguments);
    dbus_message_iter_append_basic(&arguments, DBUS_TYPE_STRING, &windowText);
    dbus_message_iter_append_basic(&arguments, DBUS_TYPE_STRING, &title);
    {
        OptionWriter options(arguments);
        options.Text("handle_token", handleToken);
        options.Flag("modal", true);
        if (request->kind == FileRequest::Kind::SelectFolder)
            options.Flag("directory", true);
        if (const std::string name = intact(request->name); saves && !name.empty())
            options.Text("current_name", name);
        if (!request->folder.empty())
            options.Path("current_folder", request->folder);
        if (!request->filters.empty())
            options.Filters("filters", request->filters);
    }
    return dbus_connection_send(bus, call.get(), &callSerial);
}

void PortalFileChooser::Poll()
{
    const bool connected = dbus_connection_read_write(bus, 0);
    while (const Message message{dbus_connection_pop_message(bus)})
        Take(message.get());
    if (!connected && !answered) {
        answered = true;
        result = isShown ? Result::Cancelled : Result::Unavailable;
    }
}

void PortalFileChooser::Take(DBusMessage* message)
{
    const int type = dbus_message_get_type(message);
    const std::uint32_t serial = dbus_message_get_reply_serial(message);  // 0: answers nothing
    const bool isAnswer = serial && (serial == helloSerial || serial == callSerial);
    if (isAnswer && type == DBUS_MESSAGE_TYPE_ERROR) {
        answered = true;
        result = Result::Unavailable;
    } else if (isAnswer && serial == helloSerial) {
        const char* name = nullptr;
        if (dbus_message_get_args(message, nullptr, DBUS_TYPE_STRING, &name, DBUS_TYPE_INVALID))
            Greeted(name);
    } else if (isAnswer) {
        const char* path = nullptr;
        // Older portals choose a name of their own.
        if (dbus_message_get_args(message, nullptr, DBUS_TYPE_OBJECT_PATH, &path, DBUS_TYPE_INVALID))
            handle = path;
        isShown = true;
    } else if (dbus_message_is_signal(message, requestInterface, "Response") &&
               dbus_message_has_path(message, handle.c_str())) {
        TakeResponse(message);
    }
}

void PortalFileChooser::TakeResponse(DBusMessage* message)
{
    answered = true;
    result = Result::Cancelled;
    DBusMessageIter arguments, results;
    std::uint32_t response = 1;
    if (!dbus_message_iter_init(message, &arguments) ||
        dbus_message_iter_get_arg_type(&arguments) != DBUS_TYPE_UINT32)
        return;
    dbus_message_iter_get_basic(&arguments, &response);
    if (response != 0 || !dbus_message_iter_next(&arguments) ||
        dbus_message_iter_get_arg_type(&arguments) != DBUS_TYPE_ARRAY)
        return;
    dbus_message_iter_recurse(&arguments, &results);
    for (; dbus_message_iter_get_arg_type(&results) == DBUS_TYPE_DICT_ENTRY;
         dbus_message_iter_next(&results)) {
        DBusMessageIter entry, value, uris;
        const char* name = nullptr;
        dbus_message_iter_recurse(&results, &entry);
        dbus_message_iter_get_basic(&entry, &name);
        if (std::strcmp(name, "uris") != 0 || !dbus_message_iter_next(&entry))
            continue;
        dbus_message_iter_recurse(&entry, &value);
        if (dbus_message_iter_get_arg_type(&value) != DBUS_TYPE_ARRAY ||
            dbus_message_iter_get_element_type(&value) != DBUS_TYPE_STRING)
            continue;
        dbus_message_iter_recurse(&value, &uris);
        if (dbus_message_iter_get_arg_type(&uris) != DBUS_TYPE_STRING)
            continue;
        const char* first = nullptr;
        dbus_message_iter_get_basic(&uris, &first);
        uri = first;
        result = Result::Chosen;
    }
}

// Nobody waits for the dialog any more.
void PortalFileChooser::Withdraw()
{
    if (!isShown)
        return;
    const Message close(dbus_message_new_method_call(portalName, handle.c_str(), requestInterface, "Close"));
    // What the bus doesn't take at once isn't waited for.
    if (close && dbus_connection_send(bus, close.get(), nullptr))
        dbus_connection_read_write(bus, 0);
}

}  // namespace gui
