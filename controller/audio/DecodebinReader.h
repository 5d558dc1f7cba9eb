#pragma once

#include "controller/audio/ClipReader.h"
#include "controller/audio/Gst.h"

#include <string>
#include <vector>

namespace controller::audio {

/// Reads files in formats that only GStreamer's decoder plug-ins know.
class DecodebinReader final : public IClipReader {
public:
    /// Returns when the first sound has been decoded.
    /// @throws SoundFileError when no plug-in can decode the file.
    explicit DecodebinReader(const std::string& path);
    ~DecodebinReader() override;

    DecodebinReader(const DecodebinReader&) = delete;
    DecodebinReader& operator=(const DecodebinReader&) = delete;

    [[nodiscard]] std::vector<float> Read() override;

private:
    [[nodiscard]] std::vector<float> Pull();
    void ThrowOnError(bool isTooLate) const;

    std::string m_name;
    GstPtr<GstElement> m_pipeline;
    GstPtr<GstElement> m_sink;
    std::vector<float> m_first;
};

} // namespace controller::audio
