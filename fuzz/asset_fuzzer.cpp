// Loads a tree of assets, written as a text (see fuzz/asset_tree.h): first the config file of the working
// folder, assets/wagon, then the first file. Meshes and animations of the sample are on the disk. Run
// `scripts/fuzz` first, which builds it and writes its seeds, then:
//
//     build/fuzz/fuzz/asset_fuzzer -dict=fuzz/config.dict -max_len=4096 -timeout=20 -rss_limit_mb=2048
//         -entropic_scale_per_exec_time=1 build/fuzz/corpus/asset_fuzzer build/fuzz/seeds/asset_fuzzer
//
// To run one input, pass its name instead of all that.

#include "fuzz/asset_tree.h"
#include "fuzz/load_attempt.h"
#include "fuzz/memory_file_system.h"
#include "fuzz/model_walk.h"
#include "fuzz/sample_folder.h"
#include "zlmim/model/text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace ZLMIM::Fuzzing;
    static const SampleFolder sample;
    const auto tree = ReadTree(Text(data, size));
    if (tree.empty())
        return 0;
    const auto inSample = [](const TreeFile& file)
    { return sample.Name() + ZLMIM::FromWindows1252(file.name); };
    const auto files = std::make_shared<MemoryFileSystem>(sample.Name() + u"assets\\wagon");
    for (const TreeFile& file : tree)
        files->Add(inSample(file), file.bytes, file.isReadable);
    LoadTwice(files, u"config.txt", inSample(tree.front()));
    return 0;
}
