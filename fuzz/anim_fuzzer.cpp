// Loads an animation file's bytes. Run `scripts/fuzz` first, which builds it and writes its seeds, then:
//
//     build/fuzz/fuzz/anim_fuzzer -dict=fuzz/blocks.dict -max_len=16384 -timeout=20 -rss_limit_mb=2048
//         -entropic_scale_per_exec_time=1 build/fuzz/corpus/anim_fuzzer build/fuzz/seeds/anim_fuzzer
//
// To run one input, pass its name instead of all that.

#include "fuzz/load_attempt.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ZLMIM::Fuzzing::LoadTwice<ZLMIM::Anim>(data, size);
    return 0;
}
