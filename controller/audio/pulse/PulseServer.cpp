#include "controller/audio/pulse/PulseServer.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include <pulse/pulseaudio.h>
#include <unistd.h>

namespace controller::audio {

namespace {

constexpr const char* kRole = "announcement";
/// So long the end waits for the last commands to be taken.
constexpr std::chrono::milliseconds kGoodbye{300};

class Locked {
public:
    explicit Locked(pa_threaded_mainloop* loop) : m_loop(loop) { pa_threaded_mainloop_lock(m_loop); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    ~Locked() { pa_threaded_mainloop_unlock(m_loop); }

private:
    pa_threaded_mainloop* m_loop;
};

void Forget(pa_operation* operation) {
    if (operation != nullptr)
        pa_operation_unref(operation);
}

/// What the servers remember a stream's volume by.
std::string ProgramOf(const pa_proplist* properties) {
    for (const char* key :
         {PA_PROP_MEDIA_ROLE, PA_PROP_APPLICATION_ID, PA_PROP_APPLICATION_NAME, PA_PROP_MEDIA_NAME})
        if (const char* const value = pa_proplist_gets(properties, key))
            return std::string(key) + " " + value;
    return "unknown";
}

bool Has(const pa_proplist* properties, const char* key, const std::string& value) {
    const char* const found = pa_proplist_gets(properties, key);
    return found != nullptr && value == found;
}

PulseStream StreamOf(const pa_sink_input_info& info) {
    PulseStream stream;
    stream.index = info.index;
    stream.sink = info.sink;
    stream.program = ProgramOf(info.proplist);
    stream.volume.assign(info.volume.values, info.volume.values + info.volume.channels);
    stream.isOurs = Has(info.proplist, PA_PROP_MEDIA_ROLE, kRole) ||
                    Has(info.proplist, PA_PROP_APPLICATION_PROCESS_ID, std::to_string(getpid()));
    stream.isPaused = info.corked != 0;
    return stream;
}

} // namespace

struct PulseServer::Calls {
    static PulseServer& Of(void* server) { return *static_cast<PulseServer*>(server); }

    static void OnContext(pa_context* /*context*/, void* server) { Of(server).OnContext(); }
    static void OnEvent(pa_context* /*context*/,
                        pa_subscription_event_type_t /*type*/,
                        std::uint32_t /*index*/,
                        void* server) {
        Of(server).Begin();
    }
    static void OnServer(pa_context* /*context*/, const pa_server_info* info, void* server) {
        if (info != nullptr && info->default_sink_name != nullptr)
            Of(server).m_looking.defaultSink = info->default_sink_name;
        Of(server).Answered();
    }
    static void OnSink(pa_context* /*context*/, const pa_sink_info* info, int end, void* server) {
        if (end != 0)
            Of(server).Answered();
        else {
            Of(server).m_looking.sinks[info->name] = info->index;
            Of(server).m_looking.names[info->name] =
                info->description != nullptr ? info->description : info->name;
        }
    }
    static void OnStream(pa_context* /*context*/, const pa_sink_input_info* info, int end, void* server) {
        if (end != 0)
            Of(server).Answered();
        else if (info->has_volume != 0 && info->volume_writable != 0)
            Of(server).m_looking.streams.push_back(StreamOf(*info));
    }
};

PulseServer::PulseServer(OnState onState)
    : m_onState(std::move(onState))
    , m_loop(pa_threaded_mainloop_new()) {
    if (m_loop != nullptr && pa_threaded_mainloop_start(m_loop) == 0)
        return;
    if (m_loop != nullptr)
        pa_threaded_mainloop_free(m_loop);
    throw std::runtime_error("there is no thread for the sound server");
}

PulseServer::~PulseServer() {
    {
        const Locked locked(m_loop);
        if (m_context != nullptr) {
            pa_context_set_state_callback(m_context, nullptr, nullptr);
            pa_context_set_subscribe_callback(m_context, nullptr, nullptr);
            pa_context_disconnect(m_context);
            pa_context_unref(m_context);
        }
    }
    pa_threaded_mainloop_stop(m_loop);
    pa_threaded_mainloop_free(m_loop);
}

void PulseServer::Flush() {
    // An answer says that what was sent before has been taken.
    if (IsReady())
        (void)Wait(kGoodbye);
}

bool PulseServer::IsReady() {
    const Locked locked(m_loop);
    return m_isReady;
}

void PulseServer::Look() {
    const Locked locked(m_loop);
    if (m_context == nullptr)
        Connect();
    else
        Begin();
}

void PulseServer::Connect() {
    m_context = pa_context_new(pa_threaded_mainloop_get_api(m_loop), "announcement-controller");
    pa_context_set_state_callback(m_context, &Calls::OnContext, this);
    pa_context_set_subscribe_callback(m_context, &Calls::OnEvent, this);
    if (pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0 && m_context != nullptr)
        Fail();
}

void PulseServer::OnContext() {
    const pa_context_state_t state = pa_context_get_state(m_context);
    if (!PA_CONTEXT_IS_GOOD(state)) {
        Fail();
        return;
    }
    if (state != PA_CONTEXT_READY)
        return;
    m_isReady = true;
    constexpr auto kAll = static_cast<pa_subscription_mask_t>(
        PA_SUBSCRIPTION_MASK_SINK_INPUT | PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SERVER);
    Forget(pa_context_subscribe(m_context, kAll, nullptr, nullptr));
    Begin();
}

void PulseServer::Fail() {
    m_looking = {};
    m_looking.reason = std::string("no sound server answers: ") + pa_strerror(pa_context_errno(m_context));
    pa_context_set_state_callback(m_context, nullptr, nullptr);
    pa_context_set_subscribe_callback(m_context, nullptr, nullptr);
    pa_context_unref(m_context);
    m_context = nullptr;
    m_isReady = false;
    m_missing = 0;
    m_isDue = false;
    Publish();
}

/// Asks for everything at once; what changes while the answers come is asked for again.
void PulseServer::Begin() {
    if (!m_isReady)
        return;
    if (m_missing > 0) {
        m_isDue = true;
        return;
    }
    constexpr int kQuestions = 3;
    m_missing = kQuestions;
    m_looking = {};
    m_looking.isThere = true;
    Forget(pa_context_get_server_info(m_context, &Calls::OnServer, this));
    Forget(pa_context_get_sink_info_list(m_context, &Calls::OnSink, this));
    Forget(pa_context_get_sink_input_info_list(m_context, &Calls::OnStream, this));
}

void PulseServer::Answered() {
    if (m_missing == 0 || --m_missing > 0)
        return;
    Publish();
    if (m_isDue) {
        m_isDue = false;
        Begin();
    }
}

void PulseServer::Publish() {
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_state = m_looking;
        ++m_looks;
        m_changed.notify_all();
    }
    m_onState(m_looking);
}

void PulseServer::SetVolume(std::uint32_t stream, const PulseVolume& volume) {
    const Locked locked(m_loop);
    if (!m_isReady)
        return;
    pa_cvolume wanted{};
    wanted.channels = static_cast<std::uint8_t>(std::min<std::size_t>(volume.size(), PA_CHANNELS_MAX));
    std::copy_n(volume.begin(), wanted.channels, wanted.values);
    // A stream that is gone takes no volume, and no other one gets it.
    Forget(pa_context_set_sink_input_volume(m_context, stream, &wanted, nullptr, nullptr));
}

std::optional<PulseState> PulseServer::Wait(std::chrono::milliseconds limit) {
    std::unique_lock<std::mutex> lock(m_mutex);
    const unsigned before = m_looks;
    lock.unlock();
    Look();
    lock.lock();
    if (!m_changed.wait_for(lock, limit, [&] { return m_looks != before; }))
        return std::nullopt;
    return m_state;
}

} // namespace controller::audio
