// An animation file's bytes. By hand, behind `scripts/fuzz`, which builds it and writes its seeds:
//
//     build/fuzz/fuzz/anim_fuzzer -dict=fuzz/blocks.dict -max_len=16384 -timeout=20 -rss_limit_mb=2048
//         -entropic_scale_per_exec_time=1 build/fuzz/corpus/anim_fuzzer build/fuzz/seeds/anim_fuzzer
//
// With an input's name instead of all that: runs that input.

#include "fuzz/load_attempt.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ZLMIM::Fuzzing::LoadTwice<ZLMIM::Anim>(data, size);
    return 0;
}
