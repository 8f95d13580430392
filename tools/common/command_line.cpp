// The only source that compiles CLI11.
#include "tools/common/help.h"
#include "tools/common/verb.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <new>
#include <optional>
#include <string>

namespace ZLMIM::Tools
{
namespace
{

/// Gives a better message than the conversion.
template <class Number>
CLI::Validator IsNumber(const std::string& what)
{
    return CLI::Validator(
        [what](const std::string& text)
        {
            Number number = 0;
            return CLI::detail::lexical_cast(text, number) ? std::string() : "'" + text + "' isn't " + what;
        },
        "");
}

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
    if (std::holds_alternative<std::optional<std::int64_t>*>(option.Target))
        added->check(IsNumber<std::int64_t>("a whole number"));
    if (std::holds_alternative<std::optional<double>*>(option.Target))
        added->check(IsNumber<double>("a number"));
}

int Fail(const std::string& where, const std::string& what)
{
    std::cout.flush();
    std::cerr << where << ": " << what << '\n';
    return kCannotRun;
}

constexpr const char* kCannotWrite = "the output can't be written";

/// Prints a text that was requested. Returns the exit status.
int Print(const std::string& text)
{
    return (std::cout << text).flush() ? kGood : Fail("zlmim", kCannotWrite);
}

/// What is wrong with a verb's options.
std::string Describe(const CLI::ParseError& error)
{
    const std::string what = error.what();
    if (!dynamic_cast<const CLI::ArgumentMismatch*>(&error))
        return what;
    const std::string option = what.substr(0, what.find(':'));
    return option +
           (what.find("At Most") != std::string::npos ? " is given more than once" : " needs a value");
}

int Run(const Verb& verb)
{
    const std::string where = "zlmim " + verb.Name;
    try
    {
        const int status = verb.Run();
        return std::cout.flush() ? status : Fail(where, kCannotWrite);
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
    if (!reversed.empty() && reversed.back() == "help") // help VERB is VERB --help
    {
        reversed.pop_back();
        reversed.insert(reversed.begin(), "--help");
    }
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
        if (!verb && arguments.size() > 2 && arguments[1] == "help")
            return Fail("zlmim", "there is no verb '" + arguments[2] + "'");
        return Print(verb ? HelpText(*verb) : HelpText(verbs));
    }
    catch (const CLI::CallForVersion&)
    {
        return Print(std::string(kVersion) + '\n');
    }
    catch (const CLI::ParseError& error)
    {
        const Verb* const verb = chosen();
        const std::string where = verb ? "zlmim " + verb->Name : "zlmim";
        const std::string first = arguments.size() > 1 ? arguments[1] : "";
        Fail(where, verb                     ? Describe(error)
                    : first.empty()          ? "a verb is missing"
                    : first.starts_with("-") ? "'" + first + "' is no option of zlmim; a verb comes first"
                                             : "there is no verb '" + first + "'");
        std::cerr << "Run '" << where << " --help' for more information.\n";
        return kCannotRun;
    }
    return Run(*chosen());
}

} // namespace ZLMIM::Tools
