#pragma once

#include "controller/driver/DriverOnly.h"
#include "controller/driver/IScheduler.h"
#include "controller/speech/Speech.h"

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace controller {

/// The sounds of the media library that are spoken: each a name and a recipe, rendered when it is stored and
/// whenever one of its variables changes. What is played is the rendering of the recipe with the values of
/// now, or its chime alone. Driver thread only.
class SpokenSounds {
public:
    using Time = std::chrono::system_clock::time_point;
    using WriteDone = std::function<void(const std::string& error)>;
    using Done = std::function<void(const RenderedSpeech& rendered, const std::string& notWritten)>;
    /// Told the file, or why there is none.
    using Found = std::function<void(const std::string& file, const std::string& error)>;

    /// A voice that has just failed is not asked again while an announcement holds the rooms for it.
    static constexpr std::chrono::seconds kRemembered{30};
    /// As many there may be.
    static constexpr std::size_t kMost = 1000;

    struct Sound {
        SpeechRecipe recipe;
        RenderedSpeech rendered; ///< what became of it last; without a text before that
        Time modified;
    };
    using Recipes = std::map<std::string, SpeechRecipe>;

    struct Parts {
        Speech& speech;     ///< borrowed for life
        IScheduler& driver; ///< borrowed for life
        std::function<Speech::Values()> variables;
        /// Keeps a recipe; one without a text goes.
        std::function<void(const std::string& name, const SpeechRecipe& recipe, WriteDone done)> write;
        /// The sound is another, or gone, or in another trouble.
        std::function<void(const std::string& name)> changed;
        std::function<void(const std::string& line)> warn;
    };

    /// By name, as files of the media folder are named: "post.wav".
    SpokenSounds(const Recipes& recipes, Parts parts);
    SpokenSounds(const SpokenSounds&) = delete;
    SpokenSounds& operator=(const SpokenSounds&) = delete;
    ~SpokenSounds() = default;

    /// Renders, and keeps the recipe unless it is refused.
    void Put(const std::string& name, const SpeechRecipe& recipe, Done done);

    /// False when there is none.
    bool Remove(const std::string& name, WriteDone done);

    /// Null when there is none.
    [[nodiscard]] const Sound* Get(const std::string& name) const;
    [[nodiscard]] const std::map<std::string, Sound>& All() const noexcept { return m_sounds; }

    /// Makes the sound that announcements name like this ready to be played, and calls back when it is, or
    /// when it will not be. False when it is none of these sounds: then nothing is to be waited for.
    bool Prepare(const std::string& sound, std::function<void()> done);

    /// Finds the file behind the name that the agent gives; false when it is none of these sounds. Tells
    /// never within the call.
    bool Find(const std::string& path, const Found& found);

    /// The variable of this name has another value.
    void VariableChanged(const std::string& variable);

private:
    struct Entry {
        std::uint64_t version = 0; ///< another one for another recipe
        bool isRendering = false;
        bool isLate = false; ///< values have changed meanwhile
        IScheduler::Duration renderedAt{};
    };

    void Keep(const std::string& name, const SpeechRecipe& recipe, const RenderedSpeech& rendered);
    void Refresh(const std::string& name);
    void Render(const std::string& name, std::function<void(const RenderedSpeech&)> done);
    void Take(const std::string& name, const RenderedSpeech& rendered);
    [[nodiscard]] bool IsKnownToFail(const std::string& name) const;
    void Tell(const RenderedSpeech& rendered, const Found& found);

    const Parts m_parts;
    std::map<std::string, Sound> m_sounds;
    std::map<std::string, Entry> m_entries;
    std::uint64_t m_lastVersion = 0;
    DriverOnly m_driverOnly;
};

} // namespace controller
