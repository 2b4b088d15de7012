#include "Daemon.h"

#include <stdexcept>

namespace tv {

namespace {

constexpr const char* kPath = "/com/norvale/orbis/tessel/daemon";
constexpr const char* kUiPath = "/com/norvale/orbis/tessel/ui";
constexpr int kReplyLimitMs = static_cast<int>(kLimit.count());

constexpr const char* kDescription = R"(<node>
  <interface name="com.norvale.orbis.tessel.daemon">
    <method name="ServerStarted">
      <arg name="started" type="b" direction="in"/><arg name="result" type="i" direction="out"/>
    </method>
    <method name="StopTessel">
      <arg name="user" type="b" direction="in"/><arg name="later" type="b" direction="in"/>
      <arg name="result" type="i" direction="out"/>
    </method>
  </interface>
</node>)";

std::string printed(GVariant* value, bool withTypes)
{
    const base::GStr text(g_variant_print(value, withTypes));
    return text.get();
}

/// "StopTessel" and "(true, false)" as they would be written in a program.
std::string callText(const std::string& method, GVariant* parameters)
{
    std::string arguments = printed(parameters, false);
    const size_t comma = arguments.rfind(",)");
    if (comma != std::string::npos)
        arguments.erase(comma, 1);
    return method + arguments;
}

GVariant* tupleOf(const std::vector<std::string>& texts)
{
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_TUPLE);
    for (const std::string& text : texts)
        g_variant_builder_add(&builder, "s", text.c_str());
    return g_variant_builder_end(&builder);
}

/// Answers past GDBus, which would not let a value of another type than the described one through.
void answerWithText(GDBusMethodInvocation* invocation)
{
    const base::CHandle<GDBusMessage, g_object_unref> reply(
        g_dbus_message_new_method_reply(g_dbus_method_invocation_get_message(invocation)));
    g_dbus_message_set_body(reply.get(), g_variant_new("(s)", "zero"));
    g_dbus_connection_send_message(g_dbus_method_invocation_get_connection(invocation), reply.get(),
        G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
    g_object_unref(invocation);
}

} // namespace

Daemon::Daemon(const std::string& busAddress, const char* name)
    : m_busAddress(busAddress)
{
    const auto flags = static_cast<GDBusConnectionFlags>(
        G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    GError* raw = nullptr;
    m_connection.reset(
        g_dbus_connection_new_for_address_sync(busAddress.c_str(), flags, nullptr, nullptr, &raw));
    const base::ErrorPtr error(raw);
    if (!m_connection)
        throw std::runtime_error(error->message);
    m_description.reset(g_dbus_node_info_new_for_xml(kDescription, nullptr));
    static const GDBusInterfaceVTable s_table {on_call, nullptr, nullptr, {}};
    m_registration = g_dbus_connection_register_object(
        m_connection.get(), kPath, m_description->interfaces[0], &s_table, this, nullptr, nullptr);
    constexpr guint kDoNotQueue = 4;
    const base::VariantPtr owned(busCall("RequestName", g_variant_new("(su)", name, kDoNotQueue)));
    if (!m_registration || !owned || printed(owned.get(), false) != "(1,)")
        throw std::runtime_error("the recorded daemon cannot own its name");
}

Daemon::~Daemon()
{
    g_dbus_connection_unregister_object(m_connection.get(), m_registration);
    for (GDBusMethodInvocation* held : m_held)
        g_object_unref(held);
    g_dbus_connection_close_sync(m_connection.get(), nullptr, nullptr);
    // Closing answers what is still pending with an error; those callbacks know this object.
    waitUntil([this] { return m_pending == 0; });
}

void Daemon::on_call(GDBusConnection* /*connection*/, const gchar* /*sender*/, const gchar* /*path*/,
    const gchar* /*interface*/, const gchar* method, GVariant* parameters, GDBusMethodInvocation* invocation,
    gpointer self)
{
    auto* daemon = static_cast<Daemon*>(self);
    daemon->m_calls.push_back(callText(method, parameters));
    for (size_t i = 0; method == daemon->m_calledBackAt && i < daemon->m_callsBack; ++i)
        daemon->send("HidePopup");
    daemon->answerCall(daemon->m_answers[method], invocation);
}

void Daemon::answerCall(Answer how, GDBusMethodInvocation* invocation)
{
    switch (how) {
    case Answer::Zero:
        g_dbus_method_invocation_return_value(invocation, g_variant_new("(i)", 0));
        break;
    case Answer::Held:
        m_held.push_back(invocation);
        break;
    case Answer::Refusal:
        g_dbus_method_invocation_return_dbus_error(
            invocation, "com.norvale.orbis.tessel.daemon.Refused", "not now");
        break;
    case Answer::WrongType:
        answerWithText(invocation);
        break;
    case Answer::Vanish:
        m_held.push_back(invocation);
        g_dbus_connection_close_sync(m_connection.get(), nullptr, nullptr);
        break;
    }
}

void Daemon::release()
{
    for (GDBusMethodInvocation* held : std::exchange(m_held, {}))
        g_dbus_method_invocation_return_value(held, g_variant_new("(i)", 0));
}

GVariant* Daemon::busCall(const char* method, GVariant* parameters) const
{
    return g_dbus_connection_call_sync(m_connection.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
        "org.freedesktop.DBus", method, parameters, nullptr, G_DBUS_CALL_FLAGS_NONE, kReplyLimitMs, nullptr,
        nullptr);
}

bool Daemon::findsUi(int pid) const
{
    const base::VariantPtr owner(busCall("GetConnectionUnixProcessID", g_variant_new("(s)", kUiName)));
    guint32 found = 0;
    if (owner)
        g_variant_get(owner.get(), "(u)", &found);
    return owner && found == static_cast<guint32>(pid);
}

void Daemon::send(const std::string& method, const std::vector<std::string>& texts, Milliseconds limit)
{
    ++m_pending;
    g_dbus_connection_call(m_connection.get(), kUiName, kUiPath, kUiName, method.c_str(), tupleOf(texts),
        nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, static_cast<int>(limit.count()), nullptr, on_reply, this);
}

void Daemon::on_reply(GObject* source, GAsyncResult* result, gpointer self)
{
    auto* daemon = static_cast<Daemon*>(self);
    GError* raw = nullptr;
    const base::VariantPtr value(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &raw));
    const base::ErrorPtr error(raw);
    --daemon->m_pending;
    daemon->m_replies.push_back(
        {value ? printed(value.get(), true) : std::string(), error ? error->message : std::string()});
}

Reply Daemon::request(const std::string& method, const std::vector<std::string>& texts)
{
    const size_t before = m_replies.size();
    send(method, texts);
    if (!waitUntil([&] { return m_replies.size() > before; }, kLimit + Milliseconds(1000)))
        return {{}, "no answer at all"};
    return m_replies.back();
}

} // namespace tv
