#ifndef VALIDATE_OUTPUT_H
#define VALIDATE_OUTPUT_H

#include "validate.h"

#include <ostream>

namespace ZLMIM::Validate
{

/// One line a finding, such as
///
///     wagon/body.im: chunk 2, index 17: error: vertex 99 of 24 vertices [index-outside]
///
/// without the place where it is the file as a whole. Characters that would steer a terminal are escaped.
void WriteText(const Result& result, std::ostream& out);

/// One JSON object, in ASCII:
///
///     {
///       "files": 10,       files that were judged
///       "errors": 1,       findings of either severity
///       "warnings": 0,
///       "findings": [      in the order of the text
///         {
///           "file": "wagon/body.im",
///           "place": "chunk 2, index 17",        "" for the file as a whole
///           "severity": "error",                 or "warning"
///           "code": "index-outside",             one of `Codes()`
///           "message": "vertex 99 of 24 vertices"
///         }
///       ]
///     }
void WriteJson(const Result& result, std::ostream& out);

} // namespace ZLMIM::Validate

#endif
