#include "framework/DriverModule.h"
#include "fuzz/Require.h"
#include "rehearsal/JsonTrace.h"
#include "rehearsal/RunScenario.h"

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <streambuf>
#include <string>

namespace {

/// Takes a text up to a limit, then fails: days of polling are not worth a fuzzer's time.
class LimitedText final : public std::streambuf {
public:
    [[nodiscard]] const std::string& Text() const { return m_text; }

private:
    static constexpr std::size_t kMost = std::size_t{1} << 20;

    std::streamsize xsputn(const char* text, std::streamsize size) override {
        if (m_text.size() > kMost)
            return 0;
        m_text.append(text, static_cast<std::size_t>(size));
        return size;
    }
    int_type overflow(int_type /*character*/) override { return traits_type::eof(); }

    std::string m_text;
};

/// The trace of the scenario, with how it ended.
std::string Run(const std::string& scenario, const DriverModule& module) {
    std::istringstream input(scenario);
    LimitedText text;
    std::ostream output(&text);
    JsonTrace trace(output);
    std::string end;
    try {
        RunScenario(
            input, [&](IInstanceManager& instances) { return module.Create(instances); }, trace, true);
        trace.Flush();
    } catch (const ScenarioError& error) {
        end = std::to_string(error.Line()) + ": " + error.what();
    } catch (const TraceError&) {
        end = "too long";
    }
    return text.Text() + end;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const DriverModule module(MODULE);
    const std::string scenario(data, data + size);
    Require(Run(scenario, module) == Run(scenario, module), "the same scenario gives the same trace");
    return 0;
}
