#include "zlmim/mesh/geometry.h"

namespace ZLMIM
{
namespace
{

template <class T>
bool CopyOut(const ElementStore<T>& store, std::int32_t index, T& element)
{
    const T* const found = store.Get(index);
    if (found)
        element = *found;
    return found != nullptr;
}

} // namespace

bool Geometry::GetVertex(std::int32_t index, Vertex& v) const { return CopyOut(mVertices, index, v); }

bool Geometry::GetVertexNormal(std::int32_t index, Vector& v) const { return CopyOut(mNormals, index, v); }

std::int32_t Geometry::GetIndex(std::int32_t index) const
{
    std::int32_t element = -1;
    static_cast<void>(CopyOut(mIndices, index, element)); // -1 outside the count
    return element;
}

} // namespace ZLMIM
