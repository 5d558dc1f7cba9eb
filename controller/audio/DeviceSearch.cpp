#include "controller/audio/DeviceSearch.h"

#include <utility>

namespace controller::audio {

namespace {

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

GstPtr<GstDevice> AskMachine() {
    const GstPtr<GstDeviceMonitor> monitor(gst_device_monitor_new());
    gst_device_monitor_add_filter(monitor.get(), "Audio/Sink", nullptr);
    const DeviceList devices(gst_device_monitor_get_devices(monitor.get()));
    return Choose(devices.get());
}

} // namespace

DeviceSearch::DeviceSearch(Ask ask) : m_ask(ask ? std::move(ask) : AskMachine) {}

GstPtr<GstDevice> DeviceSearch::FindDefault(unsigned take) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (take != m_take) {
        m_answer = m_ask();
        m_take = take;
    }
    return GstPtr<GstDevice>(m_answer ? GST_DEVICE(gst_object_ref(m_answer.get())) : nullptr);
}

} // namespace controller::audio
