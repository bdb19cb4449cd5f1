#include "device/board/slidercalibration.h"
#include "fuzzfile.h"
#include "fuzztarget.h"
#include "records/serveraddress.h"

#include <initializer_list>

// The calibration of a slider, the address of a server and the file with its password are read, or refused with a
// message. No message contains the password of an address.

using namespace panelhost;

namespace {

void checkSlider(const QString &path)
{
    QString error;
    const auto ends = loadSliderEnds(path, &error);
    if (ends.has_value() != error.isEmpty())
        qFatal("read with an error, or refused without");
    if (!ends)
        return;
    for (const int value : {ends->bottom, ends->top, 0}) {
        const double position = sliderPosition(*ends, value);
        if (!(position >= 0 && position <= 1))
            qFatal("a position of %f", position);
    }
}

void checkPassword(const QString &path)
{
    QString error;
    const auto password = readPasswordFile(path, &error);
    if (password.has_value() != error.isEmpty())
        qFatal("read with an error, or refused without");
}

void checkAddress(const QString &text)
{
    QString error;
    const auto address = readServerAddress(text, &error);
    if (address.has_value() != error.isEmpty())
        qFatal("read with an error, or refused without: %s", qPrintable(error));
    if (address && (address->port < 0 || address->port > 65535))
        qFatal("port %d", address->port);
}

}

int LLVMFuzzerInitialize(int *, char ***)
{
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static FuzzFile file("state");
    file.write(bytes, size);
    checkSlider(file.path());
    checkPassword(file.path());
    checkAddress(QString::fromUtf8(reinterpret_cast<const char *>(bytes), static_cast<int>(size)));
    return 0;
}
