#include "device/calibrationcommand.h"
#include "device/faults.h"
#include "hosttest.h"

#include <QtCore/QFile>

using namespace panelhost;

/// Tables and numbers of docs/panelhost.md against those of the code.
class tst_Documents : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QFile file(q(LCD_SOURCE_DIR "/docs/panelhost.md"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        document = QString::fromUtf8(file.readAll());
    }

    // Row by row, so that a fault that stands on one side only is named.
    void theTableOfFaults()
    {
        QStringList expected;
        for (const FaultInfo &fault : Faults::all())
            expected << row({code(fault.name), parameters(fault), fault.description, fault.where});
        const QStringList found = tableBelow(q("| Fault | Parameter | What happens | Where |"));
        for (const QString &line : expected)
            QVERIFY2(found.contains(line), qPrintable(q("not in docs/panelhost.md: ") + line));
        for (const QString &line : found)
            QVERIFY2(expected.contains(line), qPrintable(q("not in the code: ") + line));
        QCOMPARE(found, expected);
    }

    void theTableOfCalibrationSteps()
    {
        QStringList expected;
        for (const int number : {2, 1, 0, 4}) {
            const CalibrationCommand &command = *findCalibrationCommand(number);
            expected << row({QString::number(number), QString::fromLatin1(command.name),
                             command.position ? q("at the ") + tbarEndName(*command.position) : q("anywhere"),
                             command.next ? q("the ") + tbarEndName(*command.next) : QString()});
        }
        QCOMPARE(tableBelow(q("| Command | Step | The bar must be | Next, the operator moves it to |")), expected);
    }

    void theTolerance()
    {
        const QString sentence = q("with a tolerance of %1 %.").arg(TBarState::DefaultTolerance * 100);
        QVERIFY2(document.contains(sentence), qPrintable(sentence));
        TBarState bar;
        bar.position = 0.5;
        QVERIFY(document.contains(q("    step 2 (top) failed: ") + calibrationProblem(bar, 1) + q("\n")));
    }

private:
    static QString code(const QString &text) { return QLatin1Char('`') + text + QLatin1Char('`'); }

    static QString parameters(const FaultInfo &fault)
    {
        QStringList all;
        for (const QString &argument : fault.arguments) {
            QStringList values;
            for (const QString &value : Faults::allowedValues(argument))
                values << code(value);
            const bool isKey = argument == q("key");
            all << code(argument) + q(": ")
                    + (isKey ? q("a key of the panel, by name or hal key") : values.join(q(", ")));
        }
        return all.join(q("; "));
    }

    static QString row(const QStringList &cells)
    {
        QString line;
        for (const QString &cell : cells)
            line += cell.isEmpty() ? q("| ") : q("| ") + cell + q(" ");
        return line + q("|");
    }

    // The rows below the heading and its rule.
    QStringList tableBelow(const QString &heading) const
    {
        const QStringList lines = document.split(QLatin1Char('\n'));
        QStringList rows;
        for (int line = lines.indexOf(heading) + 2; line > 1 && lines.value(line).startsWith(QLatin1Char('|')); ++line)
            rows << lines.at(line);
        return rows;
    }

    QString document;
};

PANELHOST_TEST_MAIN(tst_Documents)
#include "tst_documents.moc"
