#include "controller/agent/Guarded.h"

#include <exception>

namespace controller {

std::optional<Thrown> Guarded(const std::function<void()>& call) {
    try {
        call();
        return std::nullopt;
    } catch (const char* text) {
        return Thrown{"const char*", text != nullptr ? text : ""};
    } catch (const std::string& text) {
        return Thrown{"std::string", text};
    } catch (const std::exception& error) {
        return Thrown{"std::exception", error.what()};
    } catch (...) {
        return Thrown{"other", ""};
    }
}

std::string Describe(const Thrown& thrown, const std::string& what) {
    const std::string text =
        thrown.text.empty() ? "without a word of why (" + thrown.kind + ")" : thrown.text;
    return "The agent failed in " + what + ": " + text;
}

} // namespace controller
