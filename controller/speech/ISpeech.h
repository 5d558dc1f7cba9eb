#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

namespace controller {

/// What is to be said, and how.
struct SpeechRecipe {
    /// The longest text, in bytes, before and after variables are filled in.
    static constexpr std::size_t kMaxText = 2000;
    static constexpr unsigned kSlowest = 50;
    static constexpr unsigned kFastest = 200;

    std::string text;     ///< `{Name}` stands for the value of the variable of the house with this name
    std::string voice;    ///< a name of `voices` of the house file; empty: the house's default
    unsigned speed = 100; ///< percent of the voice's own
    std::string
        chime; ///< a sound of the media folder that is heard before, as announcements name it; or empty

    friend bool operator==(const SpeechRecipe& one, const SpeechRecipe& other) {
        return one.text == other.text && one.voice == other.voice && one.speed == other.speed &&
               one.chime == other.chime;
    }
    friend bool operator!=(const SpeechRecipe& one, const SpeechRecipe& other) { return !(one == other); }
};

/// What a recipe has become.
struct RenderedSpeech {
    enum class Outcome {
        Spoken,  ///< chime and text, as asked for
        Refused, ///< the recipe cannot be spoken by any means: an unknown voice, chime or variable, too long
        Failed   ///< the engine has failed; the chime alone is left
    };
    Outcome outcome = Outcome::Spoken;
    /// The name by which an announcement plays it, as its `audio.file`; of the chime alone where the text is
    /// not spoken. Empty: nothing is to be heard.
    std::string sound;
    std::filesystem::path file;            ///< of the sound; empty with it
    std::chrono::milliseconds duration{0}; ///< of the speech also when it was refused for being too long
    std::string text;                      ///< with the values that variables had
    std::string error;                     ///< why the text is not spoken; empty when it is
    std::string right;                     ///< what would be right instead, where somebody can know
};

/// Text to sound. Driver thread only; nothing blocks.
class ISpeech {
public:
    using Done = std::function<void(const RenderedSpeech&)>;

    /// Makes a sound file of the recipe with the values that variables have now, or finds the one that was
    /// made of the same. `done` is told once, never within this call, and not at all once the object is gone.
    /// The file stays for as long as it is used again and again; the sound's name makes it stay findable.
    virtual void Render(const SpeechRecipe& recipe, Done done) = 0;

protected:
    ~ISpeech() = default;
};

} // namespace controller
