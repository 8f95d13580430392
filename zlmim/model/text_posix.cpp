#include "zlmim/model/text.h"

namespace ZLMIM
{

std::u16string FromAnsi(std::string_view bytes) { return FromWindows1252(bytes); }

} // namespace ZLMIM
