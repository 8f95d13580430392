// A mesh file's bytes. By hand, behind `scripts/fuzz`, which builds it and writes its seeds:
//
//     build/fuzz/fuzz/mesh_fuzzer -dict=fuzz/blocks.dict -max_len=16384 -timeout=20 -rss_limit_mb=2048
//         -entropic_scale_per_exec_time=1 build/fuzz/corpus/mesh_fuzzer build/fuzz/seeds/mesh_fuzzer
//
// With an input's name instead of all that: runs that input.

#include "fuzz/load_attempt.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ZLMIM::Fuzzing::LoadTwice<ZLMIM::Mesh>(data, size);
    return 0;
}
