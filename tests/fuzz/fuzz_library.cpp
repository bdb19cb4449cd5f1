#include "component/elffile.h"
#include "fuzzfile.h"
#include "fuzztarget.h"

// The headers of a component's library are read before it is loaded. Only a file with the headers of a library can be
// called an incomplete one.

using namespace panelhost;

int LLVMFuzzerInitialize(int *, char ***)
{
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static FuzzFile file("library.so");
    file.write(bytes, size);
    const bool isLibrary = file.content().startsWith("\x7f"
                                                     "ELF");
    if (isElfTruncated(file.path()) && !isLibrary)
        qFatal("a file without headers of a library is called an incomplete library");
    return 0;
}
