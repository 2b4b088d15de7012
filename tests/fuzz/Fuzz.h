/// What the fuzz targets share.
#ifndef TESTS_FUZZ_H
#define TESTS_FUZZ_H

#include <cstdint>
#include <string>
#include <string_view>

namespace fuzz {

/// Ends the process with a report when the condition does not hold.
void demand(bool holds, const char* what, std::string_view shown = {});

/// Takes an input apart.
class Input {
public:
    Input(const uint8_t* data, size_t size)
        : m_rest(reinterpret_cast<const char*>(data), size)
    {
    }

    bool empty() const { return m_rest.empty(); }
    /// @return a number below @p limit, 0 at the end
    unsigned int number(unsigned int limit);
    /// @return what is before the next byte 0x1F, which separates texts; no NUL is in it
    std::string text();
    /// @return everything
    std::string rest();

private:
    std::string_view m_rest;
};

bool isUtf8(std::string_view text);

/// Keeps what the target and its libraries print off the report, which goes where it went.
void silenceOutput();

/// Makes folders of this process's own, removed at its end, the ones of the settings store.
/// @return the folder of the keys "db/…"
std::string useOwnStore();

/// Starts the toolkit without a screen; its error messages end the process from now on.
void startToolkit();

} // namespace fuzz

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

#endif
