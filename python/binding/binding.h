#pragma once

#include <pybind11/pybind11.h>

namespace ZLMIM::Python
{

// Each binds the classes of one subject.
void BindErrors();
void BindMaterials(pybind11::module_& module);
void BindGeometry(pybind11::module_& module);
void BindSkeleton(pybind11::module_& module);
void BindMesh(pybind11::module_& module);
void BindAnim(pybind11::module_& module);
void BindModel(pybind11::module_& module);

} // namespace ZLMIM::Python
