#include "tools/common/help.h"

#include "tools/common/text.h"

#include <algorithm>
#include <sstream>

namespace ZLMIM::Tools
{
namespace
{

constexpr std::size_t kWidth = 80;
constexpr std::size_t kTextColumn = 24;

/// Two columns: `left`, and to its right the wrapped `text`.
std::string Row(const std::string& left, const std::string& text)
{
    std::string row = "  " + left;
    if (row.size() + 2 > kTextColumn)
        row += "\n" + std::string(kTextColumn, ' ');
    else
        row.resize(kTextColumn, ' ');
    return row + Wrapped(text, kWidth, kTextColumn) + "\n";
}

std::string NamesOf(const Option& option)
{
    std::string names = option.Names;
    if (const std::size_t comma = names.find(','); comma != std::string::npos)
        names.insert(comma + 1, 1, ' ');
    return option.Value.empty() ? names : names + "=" + option.Value;
}

bool IsArgument(const Option& option) { return option.Names.front() != '-'; }

std::string Usage(const Verb& verb)
{
    std::string usage = "Usage: zlmim " + verb.Name + " [OPTION]...";
    for (const Option& option : verb.Options)
    {
        const bool isList = std::holds_alternative<std::vector<std::string>*>(option.Target);
        if (IsArgument(option))
            usage += " " + option.Names + (isList ? "..." : "");
    }
    return usage + "\n";
}

std::string TextOf(const Section& section)
{
    std::string text = "\n" + section.Title + ":\n";
    for (const std::string& paragraph : section.Paragraphs)
    {
        // A paragraph "left\ttext" is a row of two columns.
        const std::size_t tab = paragraph.find('\t');
        if (tab == std::string::npos)
            text += "  " + Wrapped(paragraph, kWidth, 2) + "\n";
        else
            text += Row(paragraph.substr(0, tab), paragraph.substr(tab + 1));
    }
    return text;
}

constexpr const char* kOptionHelp = "print this text and exit";

} // namespace

std::string HelpText(const std::vector<Verb>& verbs)
{
    std::string text =
        "Usage: zlmim VERB [OPTION]... PATH...\n" +
        Wrapped("Shows, checks, draws and exports 3D assets of the ZLM railway simulator: meshes (.im), "
                "animations (.kin) and asset descriptions (config.txt).",
                kWidth, 0) +
        "\n\nVerbs:\n";
    for (const Verb& verb : verbs)
        text += Row(verb.Name, verb.Summary);
    text += "\nOptions:\n" + Row("-h, --help", kOptionHelp) + Row("--version", "print the version and exit");
    text += TextOf({"Exit status",
                    {"0\tsuccess", "1\tsomething is wrong with the input",
                     "2\tthe command line is wrong, or the program couldn't do its work"}});
    return text + "\nRun 'zlmim VERB --help' or 'zlmim help VERB' for the options of a verb.\n";
}

std::string HelpText(const Verb& verb)
{
    std::string text = Usage(verb) + Wrapped(verb.Description, kWidth, 0) + "\n\nArguments:\n";
    for (const Option& option : verb.Options)
        text += IsArgument(option) ? Row(NamesOf(option), option.Help) : "";
    text += "\nOptions:\n";
    for (const Option& option : verb.Options)
        text += IsArgument(option) ? "" : Row(NamesOf(option), option.Help);
    text += Row("-h, --help", kOptionHelp);
    for (const Section& section : verb.Sections)
        text += TextOf(section);
    return text;
}

} // namespace ZLMIM::Tools
