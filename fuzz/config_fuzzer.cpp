// Loads a text as a config file, as config lines, and as a level-of-detail list. Run `scripts/fuzz` first,
// which builds it and writes its seeds, then:
//
//     build/fuzz/fuzz/config_fuzzer -dict=fuzz/config.dict -max_len=4096 -timeout=20 -rss_limit_mb=2048
//         -entropic_scale_per_exec_time=1 build/fuzz/corpus/config_fuzzer build/fuzz/seeds/config_fuzzer
//
// To run one input, pass its name instead of all that.

#include "fuzz/load_attempt.h"
#include "fuzz/memory_file_system.h"
#include "fuzz/model_walk.h"
#include "zlmim/config/config_line.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace ZLMIM::Fuzzing;
    const auto files = std::make_shared<MemoryFileSystem>(u"\\none\\assets\\wagon");
    files->Add(u"config.txt", Text(data, size));
    files->Add(u"levels.lm.txt", Text(data, size));
    files->Add(u"levels.txt", "mesh-table\na\nmesh Levels.LM\n}\n}\n");
    LoadTwice(files, u"levels.txt", u"\\none\\assets\\wagon\\config.txt");

    Attempt(
        [&]
        {
            const auto stream = files->OpenTextFile(u"config.txt");
            ZLMIM::LoadBudget budget;
            ZLMIM::LineReader lines(*stream, budget);
            for (ZLMIM::ConfigLine line; !lines.AtEndOfStream();)
                ZLMIM::ReadConfigLine(lines, line);
        });
    return 0;
}
