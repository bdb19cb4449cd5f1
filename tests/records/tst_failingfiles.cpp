#include "prooflength.h"

#include <QtCore/QDirIterator>
#include <QtCore/QJsonDocument>
#include <QtCore/QProcess>
#include <QtTest/QtTest>

#include <memory>

namespace {

struct Result
{
    int status = -1;
    QString output;
    QString errors;
};

QString q(const char *text)
{
    return QString::fromLatin1(text);
}

}

/// One operation on a file of panelhost fails. What panelhost doesn't complain about is complete, and no file is half
/// written.
class FailingFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_directory->path()).mkdir(q("files")));
    }

    void everyOperationFailsOnce_data()
    {
        QTest::addColumn<int>("stride");
        QTest::newRow("write") << proofLength(300, 11, 1);
        QTest::newRow("sync") << proofLength(8, 1, 1);
        QTest::newRow("rename") << proofLength(4, 1, 1);
        QTest::newRow("open") << proofLength(12, 1, 1);
    }
    void everyOperationFailsOnce()
    {
        QFETCH(const int, stride);
        const Result undisturbed = play();
        QVERIFY2(undisturbed.status == 0 && undisturbed.errors.isEmpty(), qPrintable(undisturbed.errors));
        const QByteArray journal = linesOf(read(path("journal.jsonl")));
        QVERIFY(journal.count('\n') > 20);
        QVERIFY2(fault(undisturbed, journal).isEmpty(), qPrintable(fault(undisturbed, journal)));

        int failures = 0;
        const int first = 1 + static_cast<int>(proofSeed() % static_cast<quint32>(stride));
        for (int number = first;; number += stride) {
            init();
            const Result result = play(QTest::currentDataTag(), number);
            if (!QFile::exists(m_directory->filePath(q("mark"))))
                break;
            ++failures;
            const QString wrong = fault(result, journal);
            QVERIFY2(wrong.isEmpty(), qPrintable(q("operation %1: %2\n%3").arg(number).arg(wrong, result.errors)));
        }
        QVERIFY(failures > 0 || stride > 1);
    }

private:
    QString path(const char *name) const { return m_directory->filePath(q("files/") + q(name)); }
    QString store() const { return q("sqlite:") + path("runs.sqlite"); }

    static QByteArray read(const QString &name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Returns the lines of a journal without its first one, which has the time and the id of the session.
    static QByteArray linesOf(const QByteArray &journal)
    {
        return journal.startsWith("{\"session\":") ? journal.mid(journal.indexOf('\n') + 1) : journal;
    }
    Result panelhost(const QStringList &arguments, const QProcessEnvironment &environment) const
    {
        QProcess process;
        process.setWorkingDirectory(m_directory->path());
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(PANELHOST), arguments);
        if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
            return {};
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    /// Plays a scenario with all outputs. The operation with @p number fails.
    Result play(const char *call = "", int number = 0) const
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(q("LD_PRELOAD"), QStringLiteral(FAILING_FILES));
        environment.insert(q("FAILING_FILES_UNDER"), m_directory->filePath(q("files/")));
        environment.insert(q("FAILING_FILES_CALL"), q(call));
        environment.insert(q("FAILING_FILES_AT"), QString::number(number));
        environment.insert(q("FAILING_FILES_MARK"), m_directory->filePath(q("mark")));
        return panelhost({q("play"), QStringLiteral(LCD_SOURCE_DIR "/scenarios/machine-fail-0.yaml"), q("--journal"),
                          path("journal.jsonl"), q("--report"), path("report"), q("--records"), store()},
                         environment);
    }

    /// Returns what is wrong after a run of panelhost, and nothing if all is well.
    QString fault(const Result &result, const QByteArray &journal) const
    {
        if (result.status < 0)
            return q("panelhost has crashed");
        if (result.errors.isEmpty() && result.status != 0)
            return q("status %1").arg(result.status);
        for (const QString &wrong : {journalFault(result, journal), recordsFault(result), reportFault(result)}) {
            if (!wrong.isEmpty())
                return wrong;
        }
        QDirIterator partial(m_directory->path(), {q("*.part")}, QDir::Files, QDirIterator::Subdirectories);
        return partial.hasNext() ? partial.next() + q(" is left") : QString();
    }
    QString journalFault(const Result &result, const QByteArray &journal) const
    {
        const QByteArray whole = read(path("journal.jsonl"));
        const QByteArray lines = linesOf(whole);
        if (!result.errors.contains(q("journal.jsonl")) && lines != journal)
            return q("the journal isn't complete");
        if (!journal.startsWith(lines))
            return q("the journal has other lines");
        return whole.isEmpty() || whole.endsWith('\n') ? QString() : q("the journal ends within a line");
    }
    QString recordsFault(const Result &result) const
    {
        const bool complains = result.errors.contains(q("runs.sqlite"));
        if (!QFile::exists(path("runs.sqlite")))
            return complains ? QString() : q("there are no run records");
        const Result listed =
            panelhost({q("runs"), q("--json"), q("--records"), store()}, QProcessEnvironment::systemEnvironment());
        const int runs = listed.output.count(q("\"id\":"));
        if (!complains && (listed.status != 0 || runs != 1))
            return q("%1 runs are saved: %2%3").arg(runs).arg(listed.errors, listed.output);
        return runs <= 1 ? QString() : q("the run is saved twice");
    }
    QString reportFault(const Result &result) const
    {
        const QByteArray page = read(path("report/report.html"));
        if (page.isEmpty())
            return result.errors.contains(q("report")) ? QString() : q("there is no report");
        return page.trimmed().endsWith("</html>") ? QString() : q("the report isn't complete");
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

QTEST_GUILESS_MAIN(FailingFilesTest)
#include "tst_failingfiles.moc"
