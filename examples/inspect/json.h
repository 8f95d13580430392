#ifndef INSPECT_JSON_H
#define INSPECT_JSON_H

#include "examples/asset.h"

#include <iosfwd>

namespace ZLMIM::Inspect
{

/// Writes every property of the object that a host can read, as one JSON object on one line, behind a first
/// key "Load": what its load answered, or the name of what it raised.
void WriteJson(const Examples::Asset& asset, std::ostream& out);

} // namespace ZLMIM::Inspect

#endif
