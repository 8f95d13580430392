#pragma once

#include "zlmim/config/config_line.h"
#include "zlmim/config/line_reader.h"

namespace ZLMIM
{

/// The keys of one entry of a mesh table. A key that the entry doesn't have is an empty line. If it has a key
/// twice, the last one counts.
/// \ingroup inside
struct MeshTableKeys
{
    /// The line whose key is the entry's name.
    ConfigLine Name;
    ConfigLine Mesh;      ///< `mesh`
    ConfigLine Anim;      ///< `anim`
    ConfigLine AttParent; ///< `att-parent`
    ConfigLine Att;       ///< `att`
};

/// Parses the block `mesh-table` of a config file. Calls the derived class at each key and at each entry's
/// closing brace. It may change the keys.
/// \ingroup inside
class MeshTableParser
{
public:
    virtual ~MeshTableParser() = default;

    /// Parses the block from the line after `mesh-table` to its closing brace, or to the end of the file.
    /// @throws FileSystemError as `ReadConfigLine`, also if the file ends with the line `effects`.
    /// @throws BoundsError as `ReadConfigLine`.
    void Parse(LineReader& lines);

protected:
    /// Called for each line of an open entry, known key or not, except in `effects` and for braces.
    virtual void OnKey(MeshTableKeys&, const ConfigLine&) {}
    /// Called at an entry's closing brace.
    virtual void OnEntry(MeshTableKeys& keys) = 0;
    /// Called at the end of the file for an entry that isn't closed.
    virtual void OnOpenEntry(MeshTableKeys&) {}
};

} // namespace ZLMIM
