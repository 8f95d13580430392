#include "zlmim/component/generator/generate.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace
{

/// Writes a file, or only checks that it has this text.
bool WriteOrCheck(const std::filesystem::path& file, const std::string& text, bool isCheck)
{
    std::ifstream old(file, std::ios::binary);
    const std::string present{std::istreambuf_iterator<char>(old), {}};
    if (present == text)
        return true;
    if (isCheck)
    {
        std::cerr << file
                  << " differs from what class_tables.h generates: build the target component_files\n";
        return false;
    }
    std::ofstream stream(file, std::ios::binary);
    return static_cast<bool>(stream.write(text.data(), static_cast<std::streamsize>(text.size())).flush());
}

} // namespace

int main(int argc, char** argv)
{
    const bool isCheck = argc == 3 && std::string(argv[1]) == "--check";
    if (argc != 2 && !isCheck)
    {
        std::cerr << "zlmim_component_files [--check] FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = argv[argc - 1];
    bool isDone = WriteOrCheck(folder / "host.h", ZLMIM::Component::GenerateHostHeader(), isCheck);
    isDone &= WriteOrCheck(folder / "ZLMIM.idl", ZLMIM::Component::GenerateIdl(), isCheck);
    isDone &= WriteOrCheck(folder / "ZLMIMFile.rc", ZLMIM::Component::GenerateResources(), isCheck);
    return isDone ? 0 : 1;
}
