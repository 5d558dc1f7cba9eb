#include "tests/controller/audio/TestSoundServer.h"

#include "tests/controller/audio/Sounds.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace controller::audio::test {

namespace {

constexpr const char* kProgram = "/usr/bin/pulseaudio";

} // namespace

TestSoundServer::TestSoundServer(std::string folder)
    : m_folder(std::move(folder))
    , m_socket(m_folder + "/native")
    , m_recording(m_folder + "/recording") {
    setenv("PULSE_SERVER", ("unix:" + m_socket).c_str(), 1); // NOLINT(concurrency-mt-unsafe): before threads
}

TestSoundServer::~TestSoundServer() {
    Kill();
}

bool TestSoundServer::IsInstalled() {
    return access(kProgram, X_OK) == 0;
}

void TestSoundServer::Start() {
    unlink(m_socket.c_str());
    const std::vector<std::string> words = {
        kProgram, "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1", "--disable-shm=yes",
        "--log-target=null", "--load=module-null-sink sink_name=heard rate=48000 channels=2",
        // The last one: who can connect finds the device.
        "--load=module-native-protocol-unix auth-anonymous=1 socket=" + m_socket};
    const std::vector<std::string> settings = {
        "HOME=" + m_folder, "XDG_RUNTIME_DIR=" + m_folder, "PULSE_RUNTIME_PATH=" + m_folder,
        "PULSE_STATE_PATH=" + m_folder, "DBUS_SESSION_BUS_ADDRESS=unix:path=/nowhere"};
    const auto pointers = [](const std::vector<std::string>& texts) {
        std::vector<char*> result;
        result.reserve(texts.size() + 1);
        for (const std::string& text : texts)
            result.push_back(const_cast<char*>(text.c_str())); // NOLINT(*-const-cast): posix_spawn's type
        result.push_back(nullptr);
        return result;
    };
    if (posix_spawn(&m_process, kProgram, nullptr, nullptr, pointers(words).data(),
                    pointers(settings).data()) != 0)
        throw std::runtime_error("the sound server does not start");
}

bool TestSoundServer::IsListening() const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    m_socket.copy(address.sun_path, sizeof address.sun_path - 1);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool isListening = connect(connection, reinterpret_cast<const sockaddr*>(&address),
                                     sizeof address) == 0; // NOLINT(*-reinterpret-cast)
    close(connection);
    return isListening;
}

void TestSoundServer::Kill() {
    if (m_process > 0) {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = 0;
    }
    if (m_recorder)
        (void)EndRecording();
}

void TestSoundServer::Pause() const {
    kill(m_process, SIGSTOP);
}

void TestSoundServer::Resume() const {
    kill(m_process, SIGCONT);
}

void TestSoundServer::Record() {
    unlink(m_recording.c_str());
    const std::string description = "pulsesrc device=heard.monitor ! audio/x-raw,format=S16LE ! "
                                    "filesink buffer-mode=unbuffered location=" +
                                    m_recording;
    m_recorder.reset(GST_ELEMENT(gst_object_ref_sink(gst_parse_launch(description.c_str(), nullptr))));
    gst_element_set_state(m_recorder.get(), GST_STATE_PLAYING);
}

bool TestSoundServer::IsRecording() const {
    std::error_code ignored; // No file is no recording.
    return std::filesystem::file_size(m_recording, ignored) > 0 && !ignored;
}

std::size_t TestSoundServer::EndRecording() {
    gst_element_set_state(m_recorder.get(), GST_STATE_NULL);
    m_recorder = nullptr;
    const std::string bytes = ReadBytes(m_recording);
    return bytes.size() - static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\0'));
}

} // namespace controller::audio::test
