#pragma once

#include <cstdint>
#include <string>

/// The host's registry of shared objects, found and published by GUID text: braces, 36 characters, case as
/// given (identifiers are compared to the letter).
///
/// An object is published and fetched as a `void*` to exactly the interface that its GUID names: convert to
/// that interface first, and to `void*` from there. `FindService` does it for look-ups.
///
/// All operations are called on the driver thread. Strings are copied by whoever keeps them.
class IInstanceManager {
public:
    /// Stores in `out` the object published under `guid`, or null when nothing is. Services found here are
    /// borrowed: the host keeps them alive as long as the driver lives, and nobody releases them.
    virtual void QueryInterface(const std::string& guid, void** out) const = 0;

    /// Publishes `object` under `guid`, in place of what was published there before. The object stays its
    /// owner's and must be withdrawn before it dies. `version` is 1.
    virtual void RegisterInterface(const std::string& guid, void* object, std::uint32_t version) = 0;

    /// Withdraws what is published under `guid`; nothing happens when nothing is. Destructors call it, and
    /// drop what it throws.
    virtual void UnregisterInterface(const std::string& guid) = 0;

protected:
    ~IInstanceManager() = default;
};
