#include "config_lines.h"

#include <algorithm>

namespace ZLMIM::Validate
{

const std::vector<std::u16string>& TopKeys()
{
    static const std::vector<std::u16string> keys = {
        u"kuid",         u"kind",       u"username",       u"author",     u"description",
        u"zelmar-build", u"mesh-table", u"asset-filename", u"pantograph", u"bogey"};
    return keys;
}

const std::vector<std::u16string>& EntryKeyNames()
{
    static const std::vector<std::u16string> keys = {u"mesh", u"anim", u"att-parent", u"att", u"effects"};
    return keys;
}

bool IsTopKey(const std::u16string& key)
{
    return std::find(TopKeys().begin(), TopKeys().end(), key) != TopKeys().end() || key.starts_with(u"bogey");
}

bool IsEntryKey(const std::u16string& key)
{
    return std::find(EntryKeyNames().begin(), EntryKeyNames().end(), key) != EntryKeyNames().end();
}

} // namespace ZLMIM::Validate
