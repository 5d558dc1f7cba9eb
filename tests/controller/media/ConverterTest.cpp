#include "controller/media/Converter.h"

#include "controller/media/MediaError.h"
#include "controller/media/MediaShelf.h"
#include "controller/media/WavHeader.h"
#include "tests/controller/media/Encoded.h"
#include "tests/controller/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>

namespace controller {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::Encoded;

namespace {

std::string RandomBytes(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

class ConverterTest : public testing::Test {
protected:
    /// What is said against the file.
    MediaError ErrorOf(const std::string& name, const std::string& content, const SoundSpan& span = {}) {
        try {
            (void)m_shelf->Store(name, content, span);
        } catch (const MediaError& error) {
            EXPECT_EQ(FilesInFolder(), 0U) << "nothing is left over";
            return error;
        }
        ADD_FAILURE() << name << " was taken";
        return {MediaError::Kind::Missing, ""};
    }

    std::size_t FilesInFolder() {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(m_folder.Path()), fs::directory_iterator()));
    }

    void UseProgram(const std::string& script, std::chrono::milliseconds limit = 60s) {
        const auto program = m_programs.Write("convert", "#!/bin/sh\n" + script + "\n");
        fs::permissions(program, fs::perms::owner_all);
        m_shelf.emplace(m_folder.Path(), Converter({program, limit}));
    }

    /// What the file became, by its description and by its content.
    void ExpectSound(const std::string& given,
                     const std::string& name,
                     const std::string& content,
                     std::chrono::milliseconds length,
                     const SoundSpan& span = {}) {
        const auto stored = m_shelf->Store(given, content, span);
        EXPECT_TRUE(stored.isNew);
        EXPECT_EQ(stored.description.name, name);
        EXPECT_EQ(stored.description.trouble, "");
        EXPECT_EQ(stored.description.isConverted, true);
        ASSERT_TRUE(stored.description.sound);
        EXPECT_EQ(stored.description.sound->rate, 48000);
        // Encoders add some silence of their own.
        EXPECT_NEAR(static_cast<double>(stored.description.sound->duration.count()),
                    static_cast<double>(length.count()), 80);
        const auto header = ReadWavHeader(*m_shelf->Read(name).content);
        ASSERT_TRUE(header);
        EXPECT_TRUE(header->IsPlain());
        EXPECT_EQ(header->promised, header->there);
        m_shelf->Remove(name);
    }

    /// Whatever it is, it becomes a sound that can be played, or is refused by a code.
    void ExpectTakenOrRefused(const std::string& content) {
        try {
            const auto stored = m_shelf->Store("broken.mp3", content);
            EXPECT_EQ(stored.description.trouble, "");
            m_shelf->Remove(stored.description.name);
        } catch (const MediaError& error) {
            EXPECT_NE(error.Code(), "") << error.what();
        }
    }

    TemporaryFolder m_folder;
    TemporaryFolder m_programs;
    std::optional<MediaShelf> m_shelf{std::in_place, m_folder.Path()};
};

} // namespace

TEST_F(ConverterTest, WhatPhonesAndProgramsMakeBecomesAPlainWavWhateverItIsCalled) {
    const std::pair<const char*, const char*> formats[] = {
        {"mp3", "lamemp3enc"},
        {"m4a", "voaacenc ! mp4mux"},
        {"aac", "voaacenc ! audio/mpeg,stream-format=adts"},
        {"ogg", "vorbisenc ! oggmux"},
        {"opus", "opusenc ! oggmux"},
        {"webm", "opusenc ! webmmux"},
        {"flac", "flacenc"},
        {"aiff", "audio/x-raw,format=S24BE ! aiffmux"}};
    for (const auto& [ending, elements] : formats) {
        SCOPED_TRACE(ending);
        const std::string content = Encoded(elements, 0.5);
        ExpectSound(std::string("Door.") + ending, "Door.wav", content, 512ms);
    }
    const std::string mp3 = Encoded("lamemp3enc", 0.5);
    for (const std::string name : {"lies.wav", "lies.png", "lies.m4a", "lies"}) {
        SCOPED_TRACE(name);
        ExpectSound(name, "lies.wav", mp3, 512ms);
    }
}

TEST_F(ConverterTest, Mp3WithATagAndAPictureInFrontIsConverted) {
    std::string tag("ID3\x03\0\0\0\0\x07\x76", 10);
    tag.resize(10 + 7 * 128 + 0x76, '\0');
    ExpectSound("tagged.mp3", "tagged.wav", tag + Encoded("lamemp3enc", 0.5), 512ms);
}

TEST_F(ConverterTest, WavOfAnyKindBecomesAPlainOneAndAPlainOneStaysAsItIs) {
    for (const std::string format : {"F32LE", "S24LE", "U8", "F64LE"}) {
        SCOPED_TRACE(format);
        ExpectSound("any.wav", "any.wav", Encoded("audio/x-raw,format=" + format + " ! wavenc", 0.5), 512ms);
    }
    ExpectSound(
        "six.wav", "six.wav",
        Encoded("audioconvert ! audio/x-raw,format=S16LE,channels=6,channel-mask=(bitmask)0x3f ! wavenc",
                0.5),
        512ms);
    std::string streamed = Encoded("audio/x-raw,format=S16LE ! wavenc", 0.5);
    streamed.replace(40, 4, std::string("\x00\xf0\xff\x7f", 4));
    ExpectSound("streamed.wav", "streamed.wav", streamed, 512ms);

    const std::string plain = Encoded("audio/x-raw,format=S16LE ! wavenc", 0.5);
    const auto stored = m_shelf->Store("plain.mp3", plain);
    EXPECT_EQ(stored.description.name, "plain.wav");
    EXPECT_EQ(stored.description.isConverted, false);
    EXPECT_EQ(*m_shelf->Read("plain.wav").content, plain);
}

TEST_F(ConverterTest, PartIsCutOutToTheSample) {
    const std::string flac = Encoded("audio/x-raw,format=S16LE ! flacenc", 30);
    const std::string plain = Encoded("audio/x-raw,format=S16LE ! wavenc", 3);

    const auto stored = m_shelf->Store("part.flac", flac, {1000ms, 2500ms});
    EXPECT_EQ(stored.description.sound->duration, 1500ms);
    // Without loss, and so the very samples that stood there; as far as the conversion is one to the same.
    EXPECT_EQ(m_shelf->Read("part.wav").content->substr(44), plain.substr(44 + 192000, 288000));
    EXPECT_EQ(m_shelf->Store("part.wav", plain, {2s, std::nullopt}).description.sound->duration, 1008ms);
    EXPECT_EQ(m_shelf->Store("part.flac", flac, {std::nullopt, 20s}).description.sound->duration, 20s);
    EXPECT_EQ(m_shelf->Store("part.flac", flac, {25s, 45s}).description.sound->duration, 5016ms)
        << "to its own end";
}

TEST_F(ConverterTest, WhatIsTooLongIsRefusedWithItsLengthAndWhatToDo) {
    const std::string flac = Encoded("flacenc", 92);

    const MediaError whole = ErrorOf("song.flac", flac);
    EXPECT_STREQ(whole.what(), "song.flac lasts 1 min 32 s; at most 20 s can be played");
    EXPECT_EQ(whole.Right(),
              "a part of it: from_ms and to_ms (\"announce media add --from --to\") say which");
    EXPECT_EQ(whole.Code(), "too_long");
    ASSERT_TRUE(whole.Length());
    EXPECT_NEAR(static_cast<double>(whole.Length()->count()), 92000, 50);
    EXPECT_EQ(ErrorOf("song.flac", flac, {10s, std::nullopt}).Code(), "too_long");
    EXPECT_STREQ(ErrorOf("song.flac", flac, {10s, 31s}).what(),
                 "the wanted part of song.flac is 21.0 s long");
    EXPECT_STREQ(ErrorOf("song.flac", flac, {10s, 10s}).what(), "the wanted part of song.flac is empty");
    const MediaError behind = ErrorOf("song.flac", flac, {100s, 101s});
    EXPECT_STREQ(behind.what(), "song.flac lasts 1 min 32 s, and the wanted part begins behind that");
    EXPECT_EQ(behind.Code(), "nothing_there");
}

TEST_F(ConverterTest, WhatNoDecoderKnowsIsRefusedWithAWordForThePage) {
    const std::string unknown[] = {"just some text\n",
                                   "<html><body>page</body></html>",
                                   RandomBytes(100000, 1),
                                   std::string(5000, '\0'),
                                   "%PDF-1.4\n%...",
                                   "RIFF",
                                   "ID3"};
    for (const std::string& content : unknown) {
        const MediaError error = ErrorOf("what.m4a", content);
        EXPECT_EQ(error.What(), MediaError::Kind::Unsuitable);
        EXPECT_EQ(error.Code(), "cannot_decode") << error.what();
        EXPECT_EQ(std::string(error.what()).rfind("what.m4a ", 0), 0U) << error.what();
        EXPECT_NE(error.Right(), "");
    }
}

TEST_F(ConverterTest, WhatBreaksOffBeforeItsSoundBeginsIsRefusedAsSoonAsNothingComesAnyMore) {
    const std::string matroska = Encoded("vorbisenc ! matroskamux", 1).substr(0, 1000);
    std::string ogg = Encoded("vorbisenc ! oggmux", 1);
    ogg.replace(2000, std::string::npos, std::string(ogg.size() - 2000, '\0'));
    for (const std::string& content : {matroska, ogg}) {
        const MediaError error = ErrorOf("cut.ogg", content);
        EXPECT_EQ(error.Code(), "cannot_decode");
        // That would be what is said when 2 s have been waited in vain.
        EXPECT_EQ(std::string(error.what()).find("nothing could be decoded"), std::string::npos)
            << error.what();
    }
}

TEST_F(ConverterTest, FilesThatAreCutOrScatteredWithNonsenseAreTakenOrRefusedAndNothingElseHappens) {
    for (const char* elements : {"lamemp3enc", "voaacenc ! mp4mux", "opusenc ! oggmux", "flacenc"}) {
        const std::string whole = Encoded(elements, 1);
        for (unsigned seed = 0; seed < 4; ++seed) {
            std::string broken =
                whole.substr(0, seed % 2 == 0 ? whole.size() * (seed + 1) / 5 : whole.size());
            std::mt19937 random(seed);
            for (unsigned change = 0; change < seed * 20; ++change)
                broken[random() % broken.size()] = static_cast<char>(random());
            ExpectTakenOrRefused(broken);
            EXPECT_EQ(FilesInFolder(), 0U) << elements << seed;
        }
    }
}

TEST_F(ConverterTest, LengthThatIsOnlyClaimedIsNotBelieved) {
    std::string wav = Encoded("audio/x-raw,format=S24LE ! wavenc", 0.5);
    wav.replace(40, 4, std::string("\xff\xff\xff\xff", 4)).replace(4, 4, std::string("\xff\xff\xff\xff", 4));
    ExpectSound("claims.wav", "claims.wav", wav, 512ms);
}

TEST_F(ConverterTest, ConverterThatCrashesIsMissingHangsOrTalksNonsenseIsAClearErrorAndLeavesNothing) {
    struct Fault {
        std::string script;
        std::string words;
    };
    const Fault faults[] = {
        {"kill -SEGV $$", "was ended by the signal 11"},
        {"exit 7", "ended with the status 7"},
        {"echo '{\"frames\":' >&3", "told nothing"},
        {"echo '[1]' >&3", "told nothing"},
        {"echo '{\"frames\":48000,\"channels\":1}' >&3", "wrote something else than it said"},
        {"echo '{\"frames\":-1,\"channels\":1e9}' >&3", "wrote something else than it said"},
        {"head -c 5000 /dev/zero >&1; echo '{\"frames\":9999999,\"channels\":1}' >&3",
         "wrote something else than it said"},
        {"echo '{\"failed\":\"no memory\"}' >&3", "failed: no memory"}};
    for (const auto& [script, words] : faults) {
        UseProgram(script);
        const MediaError error = ErrorOf("x.mp3", "anything");
        EXPECT_EQ(error.what(), "x.mp3 could not be converted: the converter " + words) << script;
        EXPECT_EQ(error.Code(), "conversion_failed");
    }
    UseProgram("exec sleep 1000", 50ms);
    EXPECT_EQ(std::string(ErrorOf("x.mp3", "anything").what()),
              "x.mp3 could not be converted: the converter took longer than 0 s and was ended");
    m_shelf.emplace(m_folder.Path(), Converter({m_programs.Path() / "missing"}));
    EXPECT_EQ(ErrorOf("x.mp3", "anything").Code(), "conversion_failed");
}

TEST_F(ConverterTest, ConverterThatNothingHoldsIsComplainedOf) {
    UseProgram("printf '\\0\\0' >&1; echo '{\"frames\":1,\"channels\":1,\"held_by\":\"\"}' >&3");
    std::string complaint;
    const Converter converter({m_programs.Path() / "convert", 60s},
                              [&complaint](const std::string& text) { complaint = text; });

    EXPECT_EQ(converter.Sound("x", "anything", {}).size(), 46U);
    EXPECT_NE(complaint.find("neither seccomp nor Landlock"), std::string::npos) << complaint;
}

} // namespace controller
