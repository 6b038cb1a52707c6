#include "ui/shell/CommandLine.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>
#include <utility>

namespace tallyfold {

namespace {

using Task = CommandLine::Task;

constexpr std::array<std::pair<std::string_view, Task>, 5> options{{
    {"--help", Task::help},
    {"-h", Task::help},
    {"--version", Task::version},
    {"-v", Task::version},
    {"--service", Task::service},
}};

std::filesystem::path absolute(const char *name)
{
    std::error_code error;
    const std::filesystem::path file = std::filesystem::absolute(name, error);
    return error ? std::filesystem::path(name) : file;
}

bool isAnswered(Task task)
{
    return task == Task::help || task == Task::version;
}

} // namespace

CommandLine CommandLine::of(std::span<const char *const> arguments)
{
    CommandLine line;
    bool areFilesOnly = false;
    for (const char *argument : arguments) {
        const std::string_view text = argument;
        if (areFilesOnly || !text.starts_with('-')) {
            line.files.push_back(absolute(argument));
        } else if (text == "--") {
            areFilesOnly = true;
        } else if (const auto *option =
                       std::ranges::find(options, text, &std::pair<std::string_view, Task>::first);
                   option == options.end()) {
            if (line.unknown.empty()) {
                line.unknown = text;
            }
        } else if (!isAnswered(line.task)) {
            line.task = option->second;
        }
    }
    if (!line.unknown.empty() && !isAnswered(line.task)) {
        line.task = Task::usage;
    }
    return line;
}

const char *CommandLine::help()
{
    return "Usage: tallyfold [OPTION...] [FILE OR FOLDER...]\n"
           "Puts Bates numbers on copies of PDF files. What is named is added to the list of the window "
           "that\n"
           "is open already, or of a new one.\n"
           "\n"
           "  -h, --help      say this\n"
           "  -v, --version   say the version\n"
           "  --service       wait for the session to ask for the window (used by D-Bus)\n"
           "  --              what follows are names, whatever they begin with\n";
}

} // namespace tallyfold
