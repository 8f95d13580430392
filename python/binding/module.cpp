#include "binding.h"

PYBIND11_MODULE(_zlmim, module)
{
    using namespace ZLMIM::Python;
    module.doc() = "The object model in C++. Import zlmim instead.";
    BindErrors();
    BindMaterials(module);
    BindSkeleton(module);
    BindGeometry(module);
    BindMesh(module);
    BindAnim(module);
    BindModel(module);
}
