#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace ZLMIM::Tools
{

/// Exit statuses of all verbs.
constexpr int kGood = 0;
/// Something is wrong with the input.
constexpr int kBadInput = 1;
/// A wrong command line, or an internal failure.
constexpr int kCannotRun = 2;

/// A wrong command line, found by a verb.
class UsageError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// An option or argument. It is written to `Target` when the command line has it.
struct Option
{
    /// "-r,--recursive", or "PATH" for an argument that has no dashes.
    std::string Names;
    /// How the help text calls the value, such as "FILE"; empty for a flag and an argument.
    std::string Value;
    std::string Help;
    std::variant<bool*, std::string*, std::vector<std::string>*, std::optional<std::int64_t>*,
                 std::optional<double>*>
        Target;
    /// The only values allowed; any if empty.
    std::vector<std::string> Choices = {};
};

/// Text below the options in the help and the man page.
struct Section
{
    std::string Title;
    std::vector<std::string> Paragraphs;
};

/// What `zlmim NAME` does.
struct Verb
{
    std::string Name;
    /// One line, for the list of verbs.
    std::string Summary;
    std::string Description;
    std::vector<Option> Options;
    std::vector<Section> Sections;
    /// Runs on the options' targets, and returns the exit status.
    std::function<int()> Run;
};

/// Parses the command line, then runs its verb. Prints help texts, the version, and what is wrong with the
/// command line. Returns the exit status.
[[nodiscard]] int RunProgram(const std::vector<Verb>& verbs, const std::vector<std::string>& arguments);

} // namespace ZLMIM::Tools
