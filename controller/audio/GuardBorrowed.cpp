// The guard's own process.
#include "controller/audio/BorrowGuard.h"
#include "controller/audio/BorrowedText.h"
#include "controller/audio/Borrowings.h"
#include "controller/audio/pulse/PulseDesk.h"
#include "controller/audio/snapcast/SnapcastDesk.h"
#include "controller/driver/Alarm.h"
#include "controller/driver/DriverThread.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <signal.h>
#include <unistd.h>

namespace controller::audio {

namespace {

/// So long it tries, at most: then it is for the controller's next start to do.
constexpr std::chrono::seconds kGuardPatience{5};
constexpr std::chrono::milliseconds kGuardPace{20};
/// What the controller sent last may be taken by a server as late as this.
constexpr std::chrono::milliseconds kLastWords{300};

/// What is borrowed when nobody writes any more.
std::vector<Borrowed> ReadUntilClosed(int input, Borrowings& known) {
    std::string text;
    std::array<char, 4096> piece{};
    for (;;) {
        const ssize_t read = ::read(input, piece.data(), piece.size());
        if (read < 0 && errno == EINTR)
            continue;
        if (read <= 0)
            return known.All();
        text.append(piece.data(), static_cast<std::size_t>(read));
        std::vector<Borrowed> entries;
        while (auto entry = borrowed_text::TakeFirst(text))
            entries.push_back(std::move(*entry));
        known.Put(entries);
    }
}

void WriteNowhere(const std::vector<Borrowed>& /*entries*/, const Borrowings::Done& done) {
    done("");
}

/// Whether all is given back, as far as servers answer.
bool GiveBack(const std::vector<Borrowed>& entries, Log& log) {
    DriverThread driver(log);
    Borrowings borrowings(driver, log, WriteNowhere, entries);
    const auto mailbox = std::make_shared<Mailbox>(driver);
    const auto desk = std::make_shared<PulseDesk>(mailbox);
    desk->Begin(driver, borrowings);
    SnapcastDesk rooms(mailbox);
    rooms.Begin(driver, log, borrowings);
    Alarm patience(driver, "the end of the guard's patience");
    Alarm look(driver, "looking whether all is given back");
    patience.Start(kGuardPatience, [&driver] { driver.Stop(); });
    const std::function<void()> check = [&] {
        if (desk->HasGivenBack() && rooms.HasGivenBack())
            driver.Stop();
        else
            look.Start(kGuardPace, check);
    };
    check();
    driver.Run();
    desk->Close();
    rooms.Close();
    mailbox->Close();
    return borrowings.All().empty();
}

} // namespace

int GuardBorrowed(int input) {
    // Whoever ends the controller ends what belongs to it, too; this one ends when the pipe does.
    for (const int ending : {SIGTERM, SIGINT, SIGHUP, SIGPIPE})
        (void)::signal(ending, SIG_IGN); // cannot fail for these
    Log log(STDERR_FILENO, Severity::Notice, Log::FormOfStandardError());
    DriverThread driver(log);
    Borrowings known(driver, log, WriteNowhere, {});
    const std::vector<Borrowed> entries = ReadUntilClosed(input, known);
    if (entries.empty())
        return 0;
    (void)GiveBack(entries, log);
    std::this_thread::sleep_for(kLastWords);
    return GiveBack(entries, log) ? 0 : 1;
}

} // namespace controller::audio
