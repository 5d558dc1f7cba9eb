#pragma once

#include <boost/enable_shared_from_this.hpp>

#include <cstdint>

/// What owns timers of the `ITimerManager` derives from this. An owner held by a `boost::shared_ptr` can give
/// a shared pointer to itself: the ability stands here, so that an owner needs no second base for it.
class ITimerManagerCallback : public boost::enable_shared_from_this<ITimerManagerCallback> {
public:
    /// The one-shot timer with this id has expired. The second argument is the host's and means nothing to
    /// owners.
    virtual void OnTimerExpired(std::uint32_t timerId, std::int32_t context) = 0;

protected:
    ~ITimerManagerCallback() = default;
};
