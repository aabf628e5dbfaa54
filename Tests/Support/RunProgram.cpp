#include "Support/RunProgram.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace testsupport
{

namespace
{

/// A file without a name, so that neither output can fill a pipe while the other is read.
std::FILE* MakeOutputFile()
{
    std::FILE* file = std::tmpfile();
    if (file == nullptr)
        throw std::runtime_error("cannot make a temporary file");
    return file;
}

std::string TakeText(std::FILE* file)
{
    std::rewind(file);
    std::string text;
    std::array<char, 4096> chunk;
    while (const std::size_t size = std::fread(chunk.data(), 1, chunk.size(), file))
        text.append(chunk.data(), size);
    std::fclose(file);
    return text;
}

[[noreturn]] void Become(
    const std::vector<std::string>& words,
    const std::string& folder,
    std::FILE* output,
    std::FILE* errors)
{
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);

    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    dup2(fileno(output), STDOUT_FILENO);
    dup2(fileno(errors), STDERR_FILENO);
    if (chdir(folder.c_str()) == 0)
        execvp(arguments[0], arguments.data());
    std::perror(arguments[0]);
    std::_Exit(127);
}

} // namespace

SProgramResult RunProgram(const std::vector<std::string>& words, const std::string& folder)
{
    std::FILE* output = MakeOutputFile();
    std::FILE* errors = MakeOutputFile();

    const pid_t child = fork();
    if (child < 0)
        throw std::runtime_error("cannot fork");
    if (child == 0)
        Become(words, folder, output, errors);

    int status;
    rusage usage;
    if (wait4(child, &status, 0, &usage) != child)
        throw std::runtime_error("cannot wait for " + words[0]);

    SProgramResult result;
    result.output = TakeText(output);
    result.errors = TakeText(errors);
    if (WIFEXITED(status))
        result.exitStatus = WEXITSTATUS(status);
    else
        result.signal = WTERMSIG(status);
    result.peakKilobytes = usage.ru_maxrss;
    return result;
}

} // namespace testsupport
