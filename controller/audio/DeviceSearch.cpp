#include "controller/audio/DeviceSearch.h"

#include <cstdlib>
#include <filesystem>
#include <set>
#include <system_error>

namespace controller::audio {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::minutes kAskAgain{10};

struct ListFree {
    void operator()(GList* list) const { g_list_free_full(list, gst_object_unref); }
};
using DeviceList = std::unique_ptr<GList, ListFree>;

bool IsDefault(GstDevice* device) {
    GstStructure* properties = gst_device_get_properties(device);
    gboolean isDefault = FALSE;
    if (properties) {
        (void)gst_structure_get_boolean(properties, "is-default", &isDefault); // Absent is no default.
        gst_structure_free(properties);
    }
    return isDefault == TRUE;
}

GstPtr<GstDevice> Choose(GList* devices) {
    GList* chosen = devices;
    for (GList* item = devices; item; item = item->next)
        if (IsDefault(GST_DEVICE(item->data))) {
            chosen = item;
            break;
        }
    return GstPtr<GstDevice>(chosen ? GST_DEVICE(gst_object_ref(chosen->data)) : nullptr);
}

GstPtr<GstDevice> Ask() {
    const GstPtr<GstDeviceMonitor> monitor(gst_device_monitor_new());
    gst_device_monitor_add_filter(monitor.get(), "Audio/Sink", nullptr);
    const DeviceList devices(gst_device_monitor_get_devices(monitor.get()));
    return Choose(devices.get());
}

std::string Environment(const char* name) {
    const char* value = std::getenv(name); // NOLINT(concurrency-mt-unsafe): nothing here sets variables.
    return value ? value : "";
}

/// What a new card or a sound server that has started changes.
std::string Hints() {
    std::error_code ignored; // What cannot be read hints at nothing.
    std::set<std::string> entries;
    for (fs::directory_iterator entry("/dev/snd", ignored); entry != fs::directory_iterator();
         entry.increment(ignored))
        entries.insert(entry->path().filename().string());
    for (const std::string& server :
         {Environment("XDG_RUNTIME_DIR") + "/pulse/native", Environment("PULSE_RUNTIME_PATH") + "/native",
          std::string("/run/pulse/native")})
        if (fs::exists(server, ignored))
            entries.insert(server);
    std::string hints = Environment("PULSE_SERVER");
    for (const std::string& entry : entries)
        hints += "\n" + entry;
    return hints;
}

} // namespace

bool DeviceSearch::IsStillNone(const std::string& hints) const {
    return m_foundNone && hints == m_hints && Clock::now() < *m_foundNone + kAskAgain;
}

GstPtr<GstDevice> DeviceSearch::FindDefault() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::string hints = Hints();
    if (IsStillNone(hints))
        return nullptr;
    GstPtr<GstDevice> device = Ask();
    m_foundNone = device ? std::nullopt : std::optional<Clock::time_point>(Clock::now());
    m_hints = std::move(hints);
    return device;
}

} // namespace controller::audio
