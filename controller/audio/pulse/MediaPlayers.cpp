#include "controller/audio/pulse/MediaPlayers.h"

#include "controller/audio/Workers.h"

#include <functional>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

#include <gio/gio.h>

namespace controller::audio {

namespace {

constexpr const char* kPrefix = "org.mpris.MediaPlayer2.";
constexpr const char* kObject = "/org/mpris/MediaPlayer2";
constexpr const char* kPlayer = "org.mpris.MediaPlayer2.Player";
constexpr int kAnswerMs = 500;

struct ObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
struct VariantUnref {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
struct MemoryFree {
    void operator()(gpointer memory) const { g_free(memory); }
};
using Variant = std::unique_ptr<GVariant, VariantUnref>;

/// The session's bus; what fails there is passed over, for music goes on then and nothing else is lost.
class SessionBus {
public:
    SessionBus() {
        const std::unique_ptr<char, MemoryFree> address(
            g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
        constexpr auto kFlags = static_cast<GDBusConnectionFlags>(
            G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        if (address)
            m_bus.reset(
                g_dbus_connection_new_for_address_sync(address.get(), kFlags, nullptr, nullptr, nullptr));
    }

    /// Takes `parameters`. Null when nothing of use comes back.
    [[nodiscard]] Variant Call(const std::string& name,
                               const char* object,
                               const char* interface,
                               const char* method,
                               GVariant* parameters) const {
        const Variant sunk(parameters != nullptr ? g_variant_ref_sink(parameters) : nullptr);
        if (!m_bus)
            return nullptr;
        return Variant(g_dbus_connection_call_sync(m_bus.get(), name.c_str(), object, interface, method,
                                                   sunk.get(), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                                   kAnswerMs, nullptr, nullptr));
    }

    /// A property of a player; null when it has none.
    [[nodiscard]] Variant Get(const std::string& player, const char* property) const {
        const Variant reply = Call(player, kObject, "org.freedesktop.DBus.Properties", "Get",
                                   g_variant_new("(ss)", kPlayer, property)); // NOLINT(*-vararg)
        if (!reply || !g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(v)")))
            return nullptr;
        const Variant boxed(g_variant_get_child_value(reply.get(), 0));
        return Variant(g_variant_get_variant(boxed.get()));
    }

    [[nodiscard]] bool Is(const std::string& player, const char* status) const {
        const Variant found = Get(player, "PlaybackStatus");
        return found && g_variant_is_of_type(found.get(), G_VARIANT_TYPE_STRING) &&
               std::string(g_variant_get_string(found.get(), nullptr)) == status;
    }

    [[nodiscard]] bool CanPause(const std::string& player) const {
        const Variant found = Get(player, "CanPause");
        return found && g_variant_is_of_type(found.get(), G_VARIANT_TYPE_BOOLEAN) &&
               g_variant_get_boolean(found.get()) != FALSE;
    }

    [[nodiscard]] Pausing::Names Players() const {
        Pausing::Names players;
        const Variant reply = Call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                   "ListNames", nullptr);
        if (!reply || !g_variant_is_of_type(reply.get(), G_VARIANT_TYPE("(as)")))
            return players;
        const Variant names(g_variant_get_child_value(reply.get(), 0));
        for (std::size_t index = 0; index < g_variant_n_children(names.get()); ++index) {
            const Variant name(g_variant_get_child_value(names.get(), index));
            const std::string text = g_variant_get_string(name.get(), nullptr);
            if (text.rfind(kPrefix, 0) == 0)
                players.push_back(text);
        }
        return players;
    }

    void Tell(const std::string& player, const char* method) const {
        (void)Call(player, kObject, kPlayer, method, nullptr); // one that refuses goes on as it is
    }

private:
    std::unique_ptr<GDBusConnection, ObjectUnref> m_bus;
};

Pausing::Names PlayingOnes() {
    const SessionBus bus;
    Pausing::Names playing;
    for (const std::string& player : bus.Players())
        if (bus.Is(player, "Playing") && bus.CanPause(player))
            playing.push_back(player);
    return playing;
}

void TellThose(const Pausing::Names& players, const char* status, const char* method) {
    const SessionBus bus;
    for (const std::string& player : players)
        if (bus.Is(player, status))
            bus.Tell(player, method);
}

/// Without a thread nothing is asked, and the answer is that of nobody.
void OnItsOwn(const std::function<void()>& task, const std::function<void()>& otherwise) {
    try {
        Workers().Start(task);
    } catch (const std::system_error&) {
        otherwise();
    }
}

using Tell = std::function<void(const Pausing::Names& players, std::function<void()> done)>;

/// Those that are in this state are told that.
Tell TellOn(const std::shared_ptr<Mailbox>& mailbox, const char* status, const char* method) {
    return [=](const Pausing::Names& players, const std::function<void()>& done) {
        const auto task = [=] {
            TellThose(players, status, method);
            mailbox->Post(done);
        };
        OnItsOwn(task, [=] { mailbox->Post(done); });
    };
}

using ListDone = std::function<void(const Pausing::Names& playing)>;

void Answer(const std::shared_ptr<Mailbox>& mailbox, const ListDone& done, const Pausing::Names& playing) {
    mailbox->Post([done, playing] { done(playing); });
}

} // namespace

Pausing::Players MediaPlayersOfSession(const std::shared_ptr<Mailbox>& mailbox) {
    const auto list = [mailbox](const ListDone& done) {
        OnItsOwn([mailbox, done] { Answer(mailbox, done, PlayingOnes()); },
                 [mailbox, done] { Answer(mailbox, done, {}); });
    };
    return {list, TellOn(mailbox, "Playing", "Pause"), TellOn(mailbox, "Paused", "Play")};
}

} // namespace controller::audio
