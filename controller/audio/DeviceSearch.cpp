#include "controller/audio/DeviceSearch.h"

#include <utility>

namespace controller::audio {

namespace {

constexpr const char* kClass = "Audio/Sink";

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

/// Of those that play; microphones stand in the same list.
GstPtr<GstDevice> Choose(GList* devices) {
    GstDevice* chosen = nullptr;
    for (const GList* item = devices; item; item = item->next) {
        GstDevice* const device = GST_DEVICE(item->data);
        if (!gst_device_has_classes(device, kClass))
            continue;
        if (IsDefault(device))
            return GstPtr<GstDevice>(GST_DEVICE(gst_object_ref(device)));
        chosen = chosen ? chosen : device;
    }
    return GstPtr<GstDevice>(chosen ? GST_DEVICE(gst_object_ref(chosen)) : nullptr);
}

/// The devices of one provider. A sound server is one that is started for as long as it is asked: where no
/// server answers that is told at once, and nothing is left behind, as asking without starting would.
DeviceList DevicesOf(GstDeviceProvider* provider) {
    const bool isServer = gst_device_provider_can_monitor(provider) == TRUE;
    if (isServer && !gst_device_provider_start(provider))
        return nullptr;
    DeviceList devices(gst_device_provider_get_devices(provider));
    if (isServer)
        gst_device_provider_stop(provider);
    return devices;
}

/// The most important provider that has a device: a sound server has the cards that others name too.
GstPtr<GstDevice> AskMachine() {
    const std::unique_ptr<GList, void (*)(GList*)> providers(
        gst_device_provider_factory_list_get_device_providers(GST_RANK_MARGINAL),
        gst_plugin_feature_list_free);
    for (const GList* item = providers.get(); item; item = item->next) {
        auto* const factory = GST_DEVICE_PROVIDER_FACTORY(item->data);
        if (!gst_device_provider_factory_has_classes(factory, kClass))
            continue;
        const GstPtr<GstDeviceProvider> provider(gst_device_provider_factory_get(factory));
        const DeviceList devices = provider ? DevicesOf(provider.get()) : nullptr;
        if (auto device = Choose(devices.get()))
            return device;
    }
    return nullptr;
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

bool DeviceSearch::HasDevice() {
    // One after the other: who looks at a card keeps others from opening it.
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_ask() != nullptr;
}

} // namespace controller::audio
