// A media player that plays nothing: it is on the session's bus as others are, says what it is told, and does
// it.
//   media-player NAME
#include <iostream>
#include <string>

#include <gio/gio.h>

namespace {

constexpr const char* kInterface =
    "<node><interface name='org.mpris.MediaPlayer2.Player'><method name='Play'/><method name='Pause'/>"
    "<property name='PlaybackStatus' type='s' access='read'/><property name='CanPause' type='b' "
    "access='read'/>"
    "</interface></node>";

struct Player {
    std::string status = "Playing";

    void Say() const {
        std::cout << status << std::endl;
    } // NOLINT(performance-avoid-endl): whoever reads waits for it
};

// NOLINTNEXTLINE(readability-function-size): the parameters are GDBus's
void OnCall(GDBusConnection* /*bus*/,
            const gchar* /*sender*/,
            const gchar* /*object*/,
            const gchar* /*interface*/,
            const gchar* method,
            GVariant* /*parameters*/,
            GDBusMethodInvocation* call,
            gpointer data) {
    Player& player = *static_cast<Player*>(data);
    player.status = std::string(method) == "Play" ? "Playing" : "Paused";
    g_dbus_method_invocation_return_value(call, nullptr);
    player.Say();
}

// NOLINTNEXTLINE(readability-function-size): the parameters are GDBus's
GVariant* OnGet(GDBusConnection* /*bus*/,
                const gchar* /*sender*/,
                const gchar* /*object*/,
                const gchar* /*interface*/,
                const gchar* property,
                GError** /*error*/,
                gpointer data) {
    if (std::string(property) == "CanPause")
        return g_variant_new_boolean(TRUE);
    return g_variant_new_string(static_cast<Player*>(data)->status.c_str());
}

void OnBus(GDBusConnection* bus, const gchar* /*name*/, gpointer data) {
    static const GDBusInterfaceVTable calls{&OnCall, &OnGet, nullptr, {}};
    GDBusNodeInfo* const node = g_dbus_node_info_new_for_xml(kInterface, nullptr);
    g_dbus_connection_register_object(bus, "/org/mpris/MediaPlayer2", node->interfaces[0], &calls, data,
                                      nullptr, nullptr);
    g_dbus_node_info_unref(node);
}

void OnName(GDBusConnection* /*bus*/, const gchar* /*name*/, gpointer data) {
    static_cast<Player*>(data)->Say();
}

} // namespace

int main(int argc, char** argv) {
    Player player;
    const std::string name = std::string("org.mpris.MediaPlayer2.") + (argc > 1 ? argv[1] : "test");
    GMainLoop* const loop = g_main_loop_new(nullptr, FALSE);
    g_bus_own_name(G_BUS_TYPE_SESSION, name.c_str(), G_BUS_NAME_OWNER_FLAGS_NONE, &OnBus, &OnName, nullptr,
                   &player, nullptr);
    g_main_loop_run(loop);
}
