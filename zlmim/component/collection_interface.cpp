#include "zlmim/component/collection_interface.h"

namespace ZLMIM::Component
{

std::int32_t ToNumber(const VARIANT& index)
{
    VARIANT given = index;
    const auto type = static_cast<VARTYPE>(Dereferenced(given).vt & ~VT_BYREF);
    Variant number;
    if (type == VT_BSTR || FAILED(Coerce(number, Dereferenced(given), VT_I4)))
        throw Failure{E_INVALIDARG};
    return static_cast<std::int32_t>(number.lVal);
}

void RefuseKey(const VARIANT& argument)
{
    VARIANT given = argument;
    if (!IsLeftOut(Dereferenced(given)))
        throw Failure{E_INVALIDARG};
}

} // namespace ZLMIM::Component
