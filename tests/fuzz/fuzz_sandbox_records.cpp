#include "fuzz_input.h"
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *, size_t)
{
    return 0;
}
