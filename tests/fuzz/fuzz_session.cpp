#include "drivercomparison.h"
#include "fuzztarget.h"

#include <QtWidgets/QApplication>

// Each pair of bytes is an operation and its value, for both drivers in turn. After each step, the driver must have
// done what its model has done.

namespace {

template <class Pair>
void run(const std::uint8_t *bytes, std::size_t size)
{
    std::vector<WalkStep> steps;
    for (std::size_t i = 0; i + 1 < size; i += 2)
        steps.push_back({static_cast<int>(bytes[i] % Pair::operations().size()), bytes[i + 1]});
    if (const auto difference = runWalk<Pair>(steps)) {
        fprintf(stderr, "step %zu: %s\n", difference->step + 1, qPrintable(difference->text));
        std::abort();
    }
}

}

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    VirtualTime::install();
    static const QApplication application(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    if (size == 0)
        return 0;
    if (bytes[0] % 2 == 0)
        run<AgePair>(bytes + 1, size - 1);
    else
        run<MachinePair>(bytes + 1, size - 1);
    return 0;
}
