// The program of one target, for libFuzzer, which has the main function.

#include "Targets.h"
#include "support/TestApplication.h"

#include <cstddef>
#include <cstdint>

// No input is worth waiting for a disk. The settings are written for every one.
extern "C" int fsync(int /*descriptor*/)
{
    return 0;
}

extern "C" int fdatasync(int /*descriptor*/)
{
    return 0;
}

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // It lives as long as the process, which may end anywhere.
    static auto* const application = new Test::TestApplication(*argc, *argv);
    return application == nullptr ? 1 : 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Fuzz::KESTOBOARD_FUZZ_TARGET(std::string(reinterpret_cast<const char*>(data), size));
    return 0;
}
