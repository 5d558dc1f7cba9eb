#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace controller::audio {

/// A sound that pages can fetch.
struct PageSound {
    std::uint64_t number = 0;
    std::string path; ///< relative to the page
};

/// What becomes of a play on a page.
enum class PageNews {
    Started,
    Late, ///< Started, without its beginning.
    Ended,
    Failed,
    Silenced, ///< Its browser lets it play no more.
    Gone
};

/// The screens' pages as loudspeakers, as the rooms that play on them see them. Driver thread.
class IPageSpeakers {
public:
    using Time = std::chrono::steady_clock::time_point;
    using OnNews = std::function<void(PageNews)>;

    /// Why nothing would be heard on the navigator's page now; empty: it would.
    [[nodiscard]] virtual std::string WhyNot(std::uint32_t navigator) const = 0;

    /// Calls when that may be different, until it is given null.
    virtual void Listen(std::function<void()> onChange) = 0;

    /// The page had better have the sound soon.
    virtual void Prepare(std::uint32_t navigator, const PageSound& sound) = 0;

    /// Plays it, at that moment, with this factor. `onNews` is not called within this call. Gives the number
    /// of the play; 0: nothing would be heard.
    virtual std::uint64_t
    Begin(std::uint32_t navigator, const PageSound& sound, Time at, double gain, OnNews onNews) = 0;
    virtual void SetGain(std::uint64_t play, double gain) = 0;

    /// Fades out what still sounds; no news any more.
    virtual void End(std::uint64_t play) = 0;

protected:
    ~IPageSpeakers() = default;
};

} // namespace controller::audio
