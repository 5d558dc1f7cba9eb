#pragma once

#include "convert/MappedFile.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gst/app/gstappsrc.h>
#include <gst/gst.h>

/// Decodes a sound in any format that this machine's GStreamer knows, to 16 bits at 48 kHz, mono or stereo.
class Decoder {
public:
    static constexpr int kRate = 48000;
    using Deadline = std::chrono::steady_clock::time_point;

    /// Starts GStreamer and loads every plug-in that sounds are decoded with. Throws `std::runtime_error`.
    static void Prepare();

    /// The file is borrowed for life. Begins to decode.
    explicit Decoder(const MappedFile& file);
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;
    ~Decoder();

    struct Piece {
        std::vector<char> samples; ///< interleaved, of little end; empty: that was all
        int channels = 0;
    };

    /// The next ones; nothing when the deadline comes first. Throws `report::Refusal`.
    [[nodiscard]] std::optional<Piece> Read(Deadline deadline);

    /// How long the file says that it is, if it does.
    [[nodiscard]] std::optional<std::chrono::milliseconds> ClaimedLength() const;

private:
    struct Unref {
        void operator()(gpointer object) const { gst_object_unref(object); }
    };
    template <class Object>
    using Pointer = std::unique_ptr<Object, Unref>;

    static void OnNeedData(GstAppSrc* source, guint size, gpointer decoder);
    static gboolean OnSeek(GstAppSrc* source, guint64 place, gpointer decoder);
    [[nodiscard]] GstSample* Pull(Deadline deadline);
    void Feed(GstAppSrc* source, std::size_t size);
    void ThrowOnError() const;
    [[noreturn]] void ThrowStandstill(bool isLost) const;

    const MappedFile& m_file;
    std::size_t m_place = 0;          ///< of what is given next; the source's thread only
    std::atomic<unsigned> m_asked{0}; ///< how often something of the file was wanted
    bool m_hasSound = false;
    Pointer<GstElement> m_pipeline;
    Pointer<GstElement> m_sink;
};
