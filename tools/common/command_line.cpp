// The only source that compiles CLI11.
#include "tools/common/help.h"
#include "tools/common/verb.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <new>

namespace ZLMIM::Tools
{
namespace
{

void AddOption(CLI::App& app, const Option& option)
{
    CLI::Option* const added = std::visit(
        [&](auto* target) -> CLI::Option*
        {
            if constexpr (std::is_same_v<decltype(target), bool*>)
                return app.add_flag(option.Names, *target);
            else
                return app.add_option(option.Names, *target);
        },
        option.Target);
    if (option.Names.front() != '-')
        added->required();
    else if (std::holds_alternative<std::vector<std::string>*>(option.Target))
        added->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    if (!option.Choices.empty())
        added->check(CLI::IsMember(option.Choices));
}

int Fail(const std::string& where, const char* what)
{
    std::cout.flush();
    std::cerr << where << ": " << what << '\n';
    return kCannotRun;
}

int Run(const Verb& verb)
{
    const std::string where = "zlmim " + verb.Name;
    try
    {
        const int status = verb.Run();
        return std::cout.flush() ? status : Fail(where, "the output can't be written");
    }
    catch (const UsageError& error)
    {
        Fail(where, error.what());
        std::cerr << "Run '" << where << " --help' for more information.\n";
        return kCannotRun;
    }
    catch (const std::bad_alloc&)
    {
        return Fail(where, "there isn't enough memory");
    }
    catch (const std::exception& error)
    {
        return Fail(where, error.what());
    }
}

} // namespace

int RunProgram(const std::vector<Verb>& verbs, const std::vector<std::string>& arguments)
{
    constexpr const char* kVersion = "zlmim " ZLMIM_VERSION;
    CLI::App app("", "zlmim");
    app.set_version_flag("--version", kVersion);
    app.require_subcommand(1);
    for (const Verb& verb : verbs)
    {
        CLI::App* const command = app.add_subcommand(verb.Name);
        command->set_version_flag("--version", kVersion)->group("");
        for (const Option& option : verb.Options)
            AddOption(*command, option);
    }
    // CLI11 expects them in reverse order, without the program's name.
    std::vector<std::string> reversed(arguments.rbegin(), arguments.rend());
    reversed.pop_back();
    const auto chosen = [&]() -> const Verb*
    {
        for (const Verb& verb : verbs)
            if (app.got_subcommand(verb.Name))
                return &verb;
        return nullptr;
    };
    try
    {
        app.parse(std::move(reversed));
    }
    catch (const CLI::CallForHelp&)
    {
        const Verb* const verb = chosen();
        std::cout << (verb ? HelpText(*verb) : HelpText(verbs)) << std::flush;
        return kGood;
    }
    catch (const CLI::CallForVersion&)
    {
        std::cout << kVersion << std::endl;
        return kGood;
    }
    catch (const CLI::ParseError& error)
    {
        const Verb* const verb = chosen();
        const std::string where = verb ? "zlmim " + verb->Name : "zlmim";
        const bool isUnknownVerb = !verb && arguments.size() > 1 && arguments[1].front() != '-';
        Fail(where, arguments.size() < 2 ? "a verb is missing"
                    : isUnknownVerb      ? ("there is no verb '" + arguments[1] + "'").c_str()
                                         : error.what());
        std::cerr << "Run '" << where << " --help' for more information.\n";
        return kCannotRun;
    }
    return Run(*chosen());
}

} // namespace ZLMIM::Tools
