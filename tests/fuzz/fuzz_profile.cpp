#include "fuzzfile.h"
#include "fuzztarget.h"
#include "profile/boardprofile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRegularExpression>

// The profile of a board is either read or refused with messages that name a place in the file.

using namespace panelhost;

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static const QCoreApplication application(*argc, *argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    static FuzzFile file("board.yaml");
    file.write(bytes, size);
    Session::Options options;
    options.share = QStringLiteral(LCD_SOURCE_DIR "/share");
    QStringList errors;
    const bool isRead = readBoardProfile(file.path(), file.directory(), options, &errors);
    if (isRead != errors.isEmpty() || isRead != options.board.has_value())
        qFatal("read with errors, or refused without");
    static const QRegularExpression place(QStringLiteral("^[^\n]*board\\.yaml:\\d+:\\d+: error: ."));
    for (const QString &error : qAsConst(errors)) {
        if (!place.match(error).hasMatch())
            qFatal("a message without a place: %s", qPrintable(error));
    }
    return 0;
}
