#include "tools/common/arguments.h"
#include "tools/common/terminal.h"
#include "tools/verbs.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    using namespace ZLMIM::Tools;
    try
    {
        SetUpOutput();
        return RunProgram({InspectVerb(), ValidateVerb(), PictureVerb(), ExportVerb(),
#ifdef ZLMIM_HAS_VIEW
                           ViewVerb(),
#endif
                           SampleVerb()},
                          Arguments(argc, argv));
    }
    catch (const std::exception& error)
    {
        std::cerr << "zlmim: " << error.what() << '\n';
        return kCannotRun;
    }
}
