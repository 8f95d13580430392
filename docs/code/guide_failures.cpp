#include "zlmim/mesh/mesh.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <cstddef>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <string>

namespace
{

/// The file's first `size` bytes.
std::string Beginning(const char* name, std::size_t size)
{
    std::ifstream file(name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {}).substr(0, size);
}

template <class Load>
void Report(const char* what, ZLMIM::Mesh& mesh, Load load)
{
    std::cout << what << ": ";
    try
    {
        mesh.ErrorMessage.clear();
        if (load())
            std::cout << "loaded";
        else if (mesh.ErrorMessage.empty())
            std::cout << "missing, unreadable or empty";
        else
            std::cout << ZLMIM::ToUtf8(mesh.ErrorMessage);
    }
    catch (const std::exception& error) // BoundsError, OverflowError, std::bad_alloc
    {
        std::cout << error.what();
    }
    std::cout << ", chunks: " << (mesh.Chunks ? mesh.Chunks->Count() : 0) << '\n';
}

} // namespace

int main()
{
    ZLMIM::Mesh mesh;
    Report("no such file", mesh, [&] { return mesh.Load(u"nowhere.im"); });
    Report("not a mesh", mesh, [&] { return mesh.Load(u"config.txt"); });
    const std::string bytes = Beginning("load/load_near.im", 4'000);
    Report("cut off", mesh, [&] { return mesh.LoadBytes(std::as_bytes(std::span(bytes))); });
    Report("whole", mesh, [&] { return mesh.Load(u"load\\load_near.im"); });
    Report("no such file", mesh, [&] { return mesh.Load(u"nowhere.im"); });
}
