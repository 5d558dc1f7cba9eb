#pragma once

#include "controller/audio/ISoundAddresses.h"
#include "controller/audio/Mailbox.h"
#include "controller/audio/WholeSound.h"
#include "controller/audio/page/IPageSpeakers.h"
#include "controller/driver/IScheduler.h"

#include <chrono>
#include <memory>
#include <optional>
#include <utility>

namespace controller::audio {

/// What the rooms that play on pages share. Driver thread, but for `Post`.
class PageDesk final {
public:
    /// So long a sound can be fetched.
    static constexpr std::chrono::seconds kLife{60};

    explicit PageDesk(std::shared_ptr<Mailbox> mailbox) : m_mailbox(std::move(mailbox)) {}
    PageDesk(const PageDesk&) = delete;
    PageDesk& operator=(const PageDesk&) = delete;
    ~PageDesk() = default;

    /// Without this no page plays. All are borrowed until `Close`.
    void Begin(IScheduler& driver, IPageSpeakers& speakers, ISoundAddresses& addresses);
    void Close();

    /// Null: no page plays.
    [[nodiscard]] IPageSpeakers* Speakers() const { return m_speakers; }

    /// Of one that has begun.
    [[nodiscard]] IScheduler& Driver() const { return *m_driver; }

    /// Gives the sound under which pages find the file: the former one for what is the same to the byte, so
    /// that they fetch it once. Nothing when there is no way to that.
    [[nodiscard]] std::optional<PageSound> Offer(const WholeSound::File& file);

    /// Runs the task on the driver thread, unless the engine has ended.
    void Post(Mailbox::Task task) { m_mailbox->Post(std::move(task)); }

private:
    const std::shared_ptr<Mailbox> m_mailbox;
    IScheduler* m_driver = nullptr;
    IPageSpeakers* m_speakers = nullptr;
    ISoundAddresses* m_addresses = nullptr;
    WholeSound::File m_file;
    PageSound m_sound; ///< of that file
    IScheduler::Duration m_offered{0};
};

} // namespace controller::audio
