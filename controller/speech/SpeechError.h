#pragma once

#include <stdexcept>

namespace controller {

/// An engine has not spoken; the text says why.
class SpeechError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace controller
