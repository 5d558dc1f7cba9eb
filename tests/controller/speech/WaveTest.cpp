#include "controller/speech/Wave.h"

#include "controller/speech/SpeechError.h"

#include <gtest/gtest.h>

namespace controller {

namespace {

std::string Number(std::uint32_t number) {
    std::string bytes;
    for (int index = 0; index < 4; ++index, number >>= 8U)
        bytes += static_cast<char>(number & 0xffU);
    return bytes;
}

std::string SoundOf(std::size_t bytes) {
    std::string samples;
    for (std::size_t index = 0; index < bytes; ++index)
        samples += static_cast<char>(index * 7);
    return samples;
}

std::string WithLength(std::string file, std::uint32_t length) {
    return file.replace(40, 4, Number(length)).replace(4, 4, Number(length + 36));
}

std::string Refusal(const std::string& file) {
    try {
        (void)wave::Mended(file);
    } catch (const SpeechError& error) {
        return error.what();
    }
    return "";
}

TEST(WaveTest, WhateverLengthAHeaderTellsTheSoundGoesOnToTheEnd) {
    const std::string whole = wave::Of({22050, 2, 1}, SoundOf(5000));
    for (const std::uint32_t length : {0x7ffff000U, 0xffffffffU, 0U, 5000U, 5001U})
        EXPECT_TRUE(wave::Mended(WithLength(whole, length)) == whole) << length;
}

TEST(WaveTest, WhatFollowsAnHonestLengthIsNoSound) {
    const std::string whole = wave::Of({22050, 2, 1}, SoundOf(5000));
    EXPECT_TRUE(wave::Mended(whole + "LIST" + Number(4) + "text") == whole);
}

TEST(WaveTest, AnOddByteAtTheEndIsNoSample) {
    const std::string whole = wave::Of({22050, 2, 2}, SoundOf(4000));
    EXPECT_TRUE(wave::Mended(WithLength(whole + "abc", 0x7ffff000U)) == whole);
}

TEST(WaveTest, WhatIsNoWavFileIsToldInWords) {
    const std::string whole = wave::Of({22050, 2, 1}, SoundOf(5000));
    EXPECT_EQ(Refusal(""), "has said nothing");
    EXPECT_EQ(Refusal("garbage"), "gives what is no WAV file");
    EXPECT_EQ(Refusal(whole.substr(0, 20)), "gives a WAV file without sound");
    EXPECT_EQ(Refusal(whole.substr(0, 44)), "has said nothing");
    EXPECT_EQ(Refusal("RIFF1234WAVEdata" + Number(4) + "abcd"), "gives a WAV file without sound");
    EXPECT_EQ(Refusal("RIFF1234WAVEjunk" + Number(0xffffffff) + "abcd"), "gives a WAV file without sound");
}

TEST(WaveTest, EveryCutOfAFileIsMendedOrRefused) {
    const std::string whole = wave::Of({22050, 2, 1}, SoundOf(50));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const bool isSound = length >= 46;
        EXPECT_EQ(Refusal(whole.substr(0, length)).empty(), isSound) << length;
    }
}

TEST(WaveTest, SoundOfAnyKindBecomesOneOf48KilohertzAndMono) {
    const std::size_t second = 8000;
    EXPECT_EQ(wave::Decode(wave::Of({8000, 2, 1}, SoundOf(second * 2))).size(), 48000U);
    EXPECT_EQ(wave::Decode(wave::Of({44100, 2, 2}, SoundOf(std::size_t{44100} * 4))).size(), 48000U);
    EXPECT_EQ(wave::Decode(wave::Of({16000, 1, 1}, SoundOf(16000))).size(), 48000U);
    EXPECT_THROW((void)wave::Decode(wave::Of({1, 2, 1}, SoundOf(100))), SpeechError);
    EXPECT_THROW((void)wave::DecodeFile("/nowhere/chime.wav"), SpeechError);
}

TEST(WaveTest, ASealedSoundIsTheSameAgain) {
    const wave::Samples samples{1, -2, 32767, -32768, 0, 5};
    std::size_t count = 0;
    EXPECT_TRUE(wave::IsSealed(wave::Sealed(samples), count));
    EXPECT_EQ(count, samples.size());
    EXPECT_EQ(wave::Decode(wave::Sealed(samples)), (wave::Samples{1, -2, 32766, -32767, 0, 5}));
    EXPECT_FALSE(wave::IsSealed("", count));
}

TEST(WaveTest, ASoundOfMoreThanFiveMinutesIsTold) {
    EXPECT_THROW((void)wave::Decode(wave::Of({8000, 1, 1}, std::string(std::size_t{8000} * 301, '\x80'))),
                 SpeechError);
}

} // namespace

} // namespace controller
