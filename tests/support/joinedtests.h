#pragma once

#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstring>
#include <initializer_list>

/// A test in a program with several tests.
struct JoinedTest
{
    const char *name;
    int (*main)(int, char **);
};

/// Runs the test with the name of the program's file, which is one of several links to the program. A process that the
/// test starts from the same file runs the same test, whatever its first argument is. Returns the status of the test,
/// or 2 if there is none with this name.
inline int runJoinedTest(std::initializer_list<JoinedTest> tests, int argc, char **argv)
{
    std::array<char, 4096> path{};
    if (::readlink("/proc/self/exe", path.data(), path.size() - 1) < 0)
        std::perror("/proc/self/exe");
    const char *slash = std::strrchr(path.data(), '/');
    const char *called = slash ? slash + 1 : path.data();
    for (const JoinedTest &test : tests) {
        if (std::strcmp(test.name, called) == 0)
            return test.main(argc, argv);
    }
    std::fprintf(stderr, "%s: run one of the links to this program, which have the names of its tests:\n", path.data());
    for (const JoinedTest &test : tests)
        std::fprintf(stderr, "  %s\n", test.name);
    return 2;
}
