#include "program.h"

#include <array>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr double MebibyteInKibibytes = 1024;

double secondsOf(const timeval &time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

QByteArray readAll(int descriptor)
{
    QByteArray text;
    std::array<char, 4096> block{};
    for (ssize_t size = 0; (size = read(descriptor, block.data(), block.size())) > 0;)
        text.append(block.data(), static_cast<int>(size));
    return text;
}

}

Usage runProgram(std::vector<QByteArray> arguments)
{
    std::vector<char *> argv;
    for (QByteArray &argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    std::array<int, 2> pipes{};
    if (pipe(pipes.data()) != 0)
        return {};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipes[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, pipes[0]);
    posix_spawn_file_actions_addclose(&actions, pipes[1]);
    pid_t child = 0;
    const bool hasStarted = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(pipes[1]);
    Usage usage;
    usage.output = readAll(pipes[0]);
    close(pipes[0]);
    int status = -1;
    rusage used = {};
    if (!hasStarted || wait4(child, &status, 0, &used) != child)
        return usage;
    usage.hasSucceeded = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    usage.seconds = secondsOf(used.ru_utime) + secondsOf(used.ru_stime);
    usage.mebibytes = static_cast<double>(used.ru_maxrss) / MebibyteInKibibytes;
    return usage;
}
