#include "convert/PictureFormats.h"
#include "convert/Report.h"
#include "convert/Shrinker.h"

#include <algorithm>
#include <array>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>

// It makes use of what <cstdio> declares, and includes nothing itself.
#include <jpeglib.h>
// Names of warnings, as an enumeration.
#include <jerror.h>

namespace picture_formats {

namespace {

/// What the library says; on an error it comes back to where `back` was set, past functions of its own only.
struct JpegErrors {
    jpeg_error_mgr manager{};
    std::jmp_buf back{};
    std::array<char, JMSG_LENGTH_MAX> text{};
    bool isDamaged = false;

    jpeg_error_mgr* Use() {
        jpeg_std_error(&manager);
        manager.error_exit = &JpegErrors::OnError;
        manager.emit_message = &JpegErrors::OnMessage;
        return &manager;
    }

    static JpegErrors& Of(j_common_ptr file) {
        return *reinterpret_cast<JpegErrors*>(file->err); // NOLINT(*-reinterpret-cast): its first member
    }

    [[noreturn]] static void OnError(j_common_ptr file) {
        JpegErrors& errors = Of(file);
        file->err->format_message(file, errors.text.data());
        std::longjmp(errors.back, 1); // NOLINT(cert-err52-cpp): the library knows no other way
    }

    /// What many a camera writes is none of what is lost.
    static void OnMessage(j_common_ptr file, int level) {
        constexpr int kWarning = -1;
        const int code = file->err->msg_code;
        if (level != kWarning || code == JWRN_EXTRANEOUS_DATA || code == JWRN_ADOBE_XFORM ||
            code == JWRN_JFIF_MAJOR || code == JWRN_BOGUS_ICC)
            return;
        JpegErrors& errors = Of(file);
        if (!errors.isDamaged)
            file->err->format_message(file, errors.text.data());
        errors.isDamaged = true;
    }

    void ThrowWhenDamaged() const {
        if (isDamaged)
            throw report::Refusal(report::kDamaged, std::string("is damaged: ") + text.data());
    }

    /// What `steps` calls holds nothing that an error would leave behind.
    template <class Steps>
    void Guard(Steps steps) {
        if (setjmp(back) == 0) // NOLINT(cert-err52-cpp)
            steps();
        else
            isDamaged = true;
        ThrowWhenDamaged();
    }
};

class JpegReader {
public:
    explicit JpegReader(std::string_view content) {
        m_file.err = m_errors.Use();
        jpeg_create_decompress(&m_file);
        jpeg_mem_src(&m_file, reinterpret_cast<const unsigned char*>(content.data()), // NOLINT(*-cast)
                     content.size());
    }
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;
    ~JpegReader() { jpeg_destroy_decompress(&m_file); }

    Pixels Read(std::uint32_t most) {
        m_errors.Guard([this] { (void)jpeg_read_header(&m_file, TRUE); });
        RequireRoom();
        const picture::Size to = Within({m_file.image_width, m_file.image_height}, most);
        ChooseScale(to);
        m_errors.Guard([this] { (void)jpeg_start_decompress(&m_file); });
        m_shrinker.emplace(picture::Size{m_file.output_width, m_file.output_height}, to);
        m_line.resize(Pixels::kBytes * m_file.output_width);
        m_errors.Guard([this] { ReadLines(); });
        return m_shrinker->Give();
    }

private:
    /// One that comes in several passes is held as a whole, at two bytes a value.
    void RequireRoom() const {
        constexpr std::uint64_t kMost = std::uint64_t{400} << 20U;
        std::uint64_t needed = 0;
        for (int index = 0; index < m_file.num_components; ++index) {
            const jpeg_component_info& one = m_file.comp_info[index];
            needed += std::uint64_t{one.width_in_blocks} * one.height_in_blocks * sizeof(JBLOCK);
        }
        if (jpeg_has_multiple_scans(const_cast<jpeg_decompress_struct*>(&m_file)) !=
                FALSE && // NOLINT(*-cast)
            needed > kMost)
            throw report::Refusal(report::kTooLarge,
                                  "takes too much memory to be decoded, as a progressive JPEG "
                                  "of its size");
    }

    /// The library decodes to eighths of the size, which is much faster than to decode all.
    void ChooseScale(picture::Size to) {
        constexpr unsigned kWhole = 8;
        m_file.scale_denom = kWhole;
        for (m_file.scale_num = 1; m_file.scale_num < kWhole; ++m_file.scale_num) {
            jpeg_calc_output_dimensions(&m_file);
            if (m_file.output_width >= to.width && m_file.output_height >= to.height)
                break;
        }
        m_isInk = m_file.jpeg_color_space == JCS_CMYK || m_file.jpeg_color_space == JCS_YCCK;
        m_file.out_color_space = m_isInk ? JCS_CMYK : JCS_EXT_RGBA;
    }

    void ReadLines() {
        JSAMPROW line = m_line.data();
        while (m_file.output_scanline < m_file.output_height) {
            (void)jpeg_read_scanlines(&m_file, &line, 1);
            if (m_isInk)
                InkToLight();
            m_shrinker->Take(m_line.data());
        }
        (void)jpeg_finish_decompress(&m_file);
    }

    /// Without regard to how inks look; programs that write such files turn them over.
    void InkToLight() {
        constexpr unsigned kMost = 255;
        for (std::size_t place = 0; place < m_line.size(); place += Pixels::kBytes) {
            const bool isTurned = m_file.saw_Adobe_marker != FALSE;
            const unsigned black = isTurned ? m_line[place + 3] : kMost - m_line[place + 3];
            for (std::size_t ink = place; ink < place + 3; ++ink)
                m_line[ink] =
                    static_cast<std::uint8_t>((isTurned ? m_line[ink] : kMost - m_line[ink]) * black / kMost);
            m_line[place + 3] = kMost;
        }
    }

    JpegErrors m_errors;
    jpeg_decompress_struct m_file{};
    std::optional<Shrinker> m_shrinker;
    std::vector<std::uint8_t> m_line;
    bool m_isInk = false;
};

class JpegWriter {
public:
    JpegWriter() {
        m_file.err = m_errors.Use();
        jpeg_create_compress(&m_file);
        jpeg_mem_dest(&m_file, &m_made, &m_size);
    }
    JpegWriter(const JpegWriter&) = delete;
    JpegWriter& operator=(const JpegWriter&) = delete;
    ~JpegWriter() {
        jpeg_destroy_compress(&m_file);
        std::free(m_made); // NOLINT(*-no-malloc): the library's own
    }

    std::string Write(const Pixels& pixels, const std::vector<picture::Block>& profile) {
        m_errors.Guard([&] { WriteAll(pixels, profile); });
        return {reinterpret_cast<const char*>(m_made), m_size}; // NOLINT(*-reinterpret-cast)
    }

private:
    void WriteAll(const Pixels& pixels, const std::vector<picture::Block>& profile) {
        constexpr int kQuality = 85;
        constexpr int kProfile = JPEG_APP0 + 2;
        m_file.image_width = pixels.size.width;
        m_file.image_height = pixels.size.height;
        m_file.input_components = Pixels::kBytes;
        m_file.in_color_space = JCS_EXT_RGBX;
        jpeg_set_defaults(&m_file);
        jpeg_set_quality(&m_file, kQuality, TRUE);
        m_file.optimize_coding = TRUE;
        jpeg_start_compress(&m_file, TRUE);
        for (const picture::Block& part : profile)
            jpeg_write_marker(&m_file, kProfile,
                              reinterpret_cast<const JOCTET*>(part.body.data()), // NOLINT(*-reinterpret-cast)
                              static_cast<unsigned>(part.body.size()));
        while (m_file.next_scanline < m_file.image_height) {
            auto* line = const_cast<JSAMPLE*>(pixels.Line(m_file.next_scanline)); // NOLINT(*-const-cast)
            (void)jpeg_write_scanlines(&m_file, &line, 1);
        }
        jpeg_finish_compress(&m_file);
    }

    JpegErrors m_errors;
    jpeg_compress_struct m_file{};
    unsigned char* m_made = nullptr;
    unsigned long m_size = 0;
};

} // namespace

Pixels ReadJpeg(std::string_view content, std::uint32_t most) {
    return JpegReader(content).Read(most);
}

std::string WriteJpeg(const Pixels& pixels, const std::vector<picture::Block>& profile) {
    return JpegWriter().Write(pixels, profile);
}

} // namespace picture_formats
