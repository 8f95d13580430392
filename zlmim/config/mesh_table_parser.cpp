#include "zlmim/config/mesh_table_parser.h"

namespace ZLMIM
{
namespace
{

/// Skips the block of the line `effects`. Returns false if the file ends first; the last line doesn't count.
bool SkipEffects(LineReader& lines, const ConfigLine& effects)
{
    ConfigLine line;
    // The block's own brace may be on the next non-empty line.
    bool mayBeOwnBrace = effects.Value != u"{";
    for (std::int64_t depth = 1; depth > 0;)
    {
        ReadConfigLine(lines, line);
        if (lines.AtEndOfStream())
            return false;
        if (line.Key.empty() && line.Value.empty())
            continue;
        if (line.Key == u"}")
            --depth;
        else if (line.Value == u"{" || (line.IsLoneBrace() && !mayBeOwnBrace))
            ++depth;
        mayBeOwnBrace = false;
    }
    return true;
}

ConfigLine* KeyOf(MeshTableKeys& keys, const ConfigLine& line)
{
    if (line.Key == u"anim")
        return &keys.Anim;
    if (line.Key == u"att-parent")
        return &keys.AttParent;
    if (line.Key == u"mesh")
        return &keys.Mesh;
    return line.Key == u"att" ? &keys.Att : nullptr;
}

} // namespace

void MeshTableParser::Parse(LineReader& lines)
{
    ConfigLine line;
    MeshTableKeys keys;
    // No entry is open while its name is empty.
    const std::u16string& name = keys.Name.Key;
    while (!lines.AtEndOfStream())
    {
        ReadConfigLine(lines, line);
        if (name.empty())
        {
            if (line.Key == u"}")
                return;
            // A table may have its braces on lines of their own.
            if (!line.IsLoneBrace())
                keys.Name = line;
        }
        else if (line.Key == u"}")
        {
            OnEntry(keys);
            keys = {};
        }
        else if (line.Key == u"effects")
        {
            if (!SkipEffects(lines, line))
                break;
        }
        else
        {
            if (ConfigLine* const key = KeyOf(keys, line))
                *key = line;
            OnKey(keys, line);
        }
    }
    if (!name.empty())
        OnOpenEntry(keys);
}

} // namespace ZLMIM
