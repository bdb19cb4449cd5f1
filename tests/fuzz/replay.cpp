#include "fuzztarget.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

// Usage: fuzz_NAME DIRECTORY. Runs the target with each file of a corpus.
int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s DIRECTORY\n", argv[0]);
        return 2;
    }
    const char *directory = argv[1];
    LLVMFuzzerInitialize(&argc, &argv);
    int files = 0;
    for (const auto &entry : std::filesystem::directory_iterator(directory)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        std::fprintf(stderr, "%s\n", entry.path().c_str());
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
        ++files;
    }
    std::fprintf(stderr, "%d files\n", files);
    return files > 0 ? 0 : 1;
}
