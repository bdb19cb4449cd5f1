#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtSql/QSqlDatabase>
#include <QtSql/QSqlQuery>
#include <QtTest/QtTest>

/// The command runs as a shell sees it.
class RunsCommandTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTable();
    void wideColumnsAreAligned();
    void jsonHasOneObjectALine();
    void csvHasALineOfNames();
    void aJournalWithoutRuns();
    void whatCanNotBeRead();
    void whatIsPlayedIsSaved();
    void everyScenarioGivesTheSameRunsFromItsJournal();
    void theUnitOfAScenario();
    void aRunWithItsJournal();
    void playSavesOnlyWhereItIsTold();
    void aPlaceThatIsNone_data();
    void aPlaceThatIsNone();
    void aDamagedFileIsLeftAsItIs();
    void oldRunsAreCopiedAndDeleted();
    void nothingIsDeletedWithoutAnAnswer();
    void nothingIsDeletedWithoutItsCopy();
    void wrongValuesOfPrune_data();
    void wrongValuesOfPrune();

private:
    struct Result
    {
        int status = -1;
        QStringList out;
        QString err;
    };
    static Result run(const QStringList &arguments)
    {
        return panelhost(QStringList{QStringLiteral("runs")} + arguments);
    }
    static Result panelhost(const QStringList &arguments, const QString &variable = {}, const QString &home = {});
    static Result play(const QString &records, const QStringList &options = {});
    static QStringList withoutAttempts(const QStringList &lines);
    static QString journal(const char *name)
    {
        return QStringLiteral(LCD_SOURCE_DIR "/tests/e2e/journals/%1.jsonl").arg(QLatin1String(name));
    }
};

RunsCommandTest::Result RunsCommandTest::panelhost(const QStringList &arguments, const QString &variable,
                                                   const QString &home)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("PANELHOST_RECORDS"));
    if (!variable.isEmpty())
        environment.insert(QStringLiteral("PANELHOST_RECORDS"), variable);
    // Never the runs of the user who runs the tests.
    static const QTemporaryDir emptyHome;
    environment.insert(QStringLiteral("XDG_DATA_HOME"), home.isEmpty() ? emptyHome.path() : home);
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(PANELHOST), arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    const QString out = QString::fromUtf8(process.readAllStandardOutput());
    return {process.exitCode(), out.split(QLatin1Char('\n'), Qt::SkipEmptyParts),
            QString::fromUtf8(process.readAllStandardError())};
}

void RunsCommandTest::aTable()
{
    const Result result = run({QStringLiteral("--from"), journal("machine-retest")});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.err, QString());
    QCOMPARE(result.out.size(), 4);
    QVERIFY(result.out.at(0).startsWith(QStringLiteral("BEGIN (UTC)")));
    QVERIFY2(result.out.at(1).contains(QStringLiteral("machine  failed       0:20.0  brightness ")),
             qPrintable(result.out.at(1)));
    QVERIFY2(result.out.at(2).contains(QStringLiteral("machine  passed       1:10.6  -")),
             qPrintable(result.out.at(2)));
}

// A very long duration, and the longest serial number.
void RunsCommandTest::wideColumnsAreAligned()
{
    QTemporaryDir directory;
    const QString store = directory.filePath(QStringLiteral("runs.sqlite"));
    QCOMPARE(play(store, {QStringLiteral("--station"), QStringLiteral("S3")}).status, 0);
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("wide"));
        database.setDatabaseName(store);
        QVERIFY(database.open());
        QVERIFY(QSqlQuery(database).exec(QStringLiteral("UPDATE run SET device_end = device_begin + 18000000000000, "
                                                        "unit = substr(unit || hex(zeroblob(50)), 1, 100) "
                                                        "WHERE outcome = 'passed'")));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("wide"));
    const QStringList lines = run({QStringLiteral("--records"), QStringLiteral("sqlite:") + store}).out;
    QCOMPARE(lines.size(), 5);
    QCOMPARE(lines.filter(QStringLiteral("  5000000:00:00.0  ")).size(), 1);
    const int idColumn = lines.first().size() - 2;
    QCOMPARE(lines.first().mid(idColumn), QStringLiteral("ID"));
    for (const QString &line : lines.mid(1))
        QVERIFY2(line.size() == idColumn + 36 && line.at(idColumn - 1) == QLatin1Char(' '), qPrintable(line));
}

void RunsCommandTest::jsonHasOneObjectALine()
{
    const Result result = run({QStringLiteral("--json"), QStringLiteral("--from"), journal("machine-retest")});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out.size(), 3);
    const QJsonObject object = QJsonDocument::fromJson(result.out.at(1).toUtf8()).object();
    for (const char *key :
         {"id", "unit", "station", "operator", "kind", "outcome", "begin", "end", "phases", "deviceBegin"})
        QVERIFY2(object.contains(QLatin1String(key)), key);
    QCOMPARE(object.value(QStringLiteral("outcome")).toString(), QStringLiteral("passed"));
    QCOMPARE(object.value(QStringLiteral("deviceEnd")).toInt(), 90670);
}

void RunsCommandTest::csvHasALineOfNames()
{
    const Result result = run({QStringLiteral("--csv"), QStringLiteral("--from"), journal("aging")});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out.size(), 2);
    const QStringList names = result.out.at(0).split(QLatin1Char(','));
    const QStringList values = result.out.at(1).split(QLatin1Char(','));
    QCOMPARE(values.size(), names.size());
    QCOMPARE(values.at(names.indexOf(QStringLiteral("kind"))), QStringLiteral("aging"));
    QCOMPARE(values.at(names.indexOf(QStringLiteral("rounds"))), QStringLiteral("2"));
}

void RunsCommandTest::aJournalWithoutRuns()
{
    QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("empty.jsonl")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QCOMPARE(run({QStringLiteral("--from"), file.fileName()}).out, QStringList{QStringLiteral("No runs.")});
    const Result csv = run({QStringLiteral("--csv"), QStringLiteral("--from"), file.fileName()});
    QCOMPARE(csv.out.size(), 1);
    QCOMPARE(csv.status, 0);
}

// What was derived before the error is printed all the same.
void RunsCommandTest::whatCanNotBeRead()
{
    QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("cut.jsonl"));
    QVERIFY(QFile::copy(journal("machine-fail-0"), path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    const int lines = file.readAll().count('\n');
    file.write("{\"seq\":145,");
    file.close();
    const Result cut = run({QStringLiteral("--from"), path});
    QCOMPARE(cut.status, 2);
    QCOMPARE(cut.out.size(), 2);
    QVERIFY2(cut.err.startsWith(QStringLiteral("panelhost: %1:%2: expected a JSON object").arg(path).arg(lines + 1)),
             qPrintable(cut.err));
    QCOMPARE(run({QStringLiteral("--from"), directory.path()}).err,
             QStringLiteral("panelhost: %1: not a file\n").arg(directory.path()));
    QCOMPARE(run({QStringLiteral("--json"), QStringLiteral("--csv")}).status, 2);
    QCOMPARE(run({}).status, 2);
}

RunsCommandTest::Result RunsCommandTest::play(const QString &records, const QStringList &options)
{
    const QString scenarios = QStringLiteral(LCD_SOURCE_DIR "/scenarios/");
    return panelhost(QStringList{QStringLiteral("play"), scenarios + QStringLiteral("machine-fail-0.yaml"),
                                 scenarios + QStringLiteral("machine-retest.yaml"), QStringLiteral("--records"),
                                 QStringLiteral("sqlite:") + records, QStringLiteral("--unit"), QStringLiteral("A1")}
                     + options);
}

QStringList RunsCommandTest::withoutAttempts(const QStringList &lines)
{
    QStringList list;
    for (const QString &line : lines) {
        QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
        object.remove(QStringLiteral("attempt"));
        list << QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
    }
    return list;
}

// The journal file gives the same runs as the session has.
void RunsCommandTest::whatIsPlayedIsSaved()
{
    QTemporaryDir directory;
    const QString store = directory.filePath(QStringLiteral("runs.sqlite"));
    const QString lines = directory.filePath(QStringLiteral("played.jsonl"));
    const Result played = play(store,
                               {QStringLiteral("--journal"), lines, QStringLiteral("--station"), QStringLiteral("S3"),
                                QStringLiteral("--operator"), QStringLiteral("Kim")});
    QCOMPARE(played.status, 0);
    QCOMPARE(played.err, QString());
    const QStringList records{QStringLiteral("--json"), QStringLiteral("--records"), QStringLiteral("sqlite:") + store};
    const Result saved = run(records);
    QCOMPARE(saved.out.size(), 4);
    QCOMPARE(withoutAttempts(saved.out),
             withoutAttempts(run({QStringLiteral("--json"), QStringLiteral("--from"), lines}).out));
    const QJsonObject second = QJsonDocument::fromJson(saved.out.at(2).toUtf8()).object();
    QCOMPARE(second.value(QStringLiteral("unit")).toString(), QStringLiteral("A1"));
    QCOMPARE(second.value(QStringLiteral("station")).toString(), QStringLiteral("S3"));
    QCOMPARE(second.value(QStringLiteral("operator")).toString(), QStringLiteral("Kim"));
    QCOMPARE(second.value(QStringLiteral("attempt")).toInt(), 3);
    QCOMPARE(second.value(QStringLiteral("configuration")).toString().size(), 64);
    QCOMPARE(second.value(QStringLiteral("component")).toString(), QStringLiteral("1.0.0"));
    QCOMPARE(run(records + QStringList{QStringLiteral("--outcome"), QStringLiteral("failed")}).out.size(), 2);
    QCOMPARE(run(records + QStringList{QStringLiteral("--since"), QStringLiteral("2999-01-01")}).out.size(), 0);
    QCOMPARE(run(records + QStringList{QStringLiteral("--unit"), QStringLiteral("B2")}).out.size(), 0);
    QCOMPARE(run(records + QStringList{QStringLiteral("--outcome"), QStringLiteral("good")}).status, 2);
    QCOMPARE(run(records + QStringList{QStringLiteral("--since"), QStringLiteral("monday")}).status, 2);
}

void RunsCommandTest::everyScenarioGivesTheSameRunsFromItsJournal()
{
    QTemporaryDir directory;
    const QString records = QStringLiteral("sqlite:") + directory.filePath(QStringLiteral("runs.sqlite"));
    const QString lines = directory.filePath(QStringLiteral("played.jsonl"));
    const QDir scenarios(QStringLiteral(LCD_SOURCE_DIR "/scenarios"));
    QStringList arguments{QStringLiteral("play")};
    for (const QString &name : scenarios.entryList({QStringLiteral("*.yaml")}))
        arguments << scenarios.filePath(name);
    QVERIFY(arguments.size() > 30);
    const Result played = panelhost(arguments
                                    + QStringList{QStringLiteral("--records"), records, QStringLiteral("--journal"),
                                                  lines, QStringLiteral("--unit"), QStringLiteral("A1")});
    QCOMPARE(played.status, 0);
    const QStringList json{QStringLiteral("--json")};
    QStringList saved = withoutAttempts(run(json + QStringList{QStringLiteral("--records"), records}).out);
    QStringList derived = withoutAttempts(run(json + QStringList{QStringLiteral("--from"), lines}).out);
    QVERIFY(saved.size() > 30);
    saved.sort();
    derived.sort();
    QCOMPARE(saved, derived);
}

// An option says it with more weight.
void RunsCommandTest::theUnitOfAScenario()
{
    QTemporaryDir directory;
    const QString records = QStringLiteral("sqlite:") + directory.filePath(QStringLiteral("runs.sqlite"));
    const QString scenario = directory.filePath(QStringLiteral("unit.yaml"));
    QFile file(scenario);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("unit: B7\nsteps:\n  - open: RepairMode/USB\n  - soft: right\n  - wait: 1s\n  - soft: left\n"
               "  - unit: C8\n  - soft: right\n  - wait: 1s\n  - soft: left\n");
    file.close();
    const QStringList command{QStringLiteral("play"), scenario, QStringLiteral("--records"), records};
    QCOMPARE(panelhost(command).status, 0);
    QCOMPARE(panelhost(command + QStringList{QStringLiteral("--unit"), QStringLiteral("A1")}).status, 0);
    QStringList units;
    const QStringList runs = run({QStringLiteral("--json"), QStringLiteral("--records"), records}).out;
    for (const QString &line : runs)
        units << QJsonDocument::fromJson(line.toUtf8()).object().value(QStringLiteral("unit")).toString();
    units.sort();
    QCOMPARE(units.join(QLatin1Char(' ')), QStringLiteral("A1 B7 C8 C8"));
}

// The journal of the first run of a session gives that run again.
void RunsCommandTest::aRunWithItsJournal()
{
    QTemporaryDir directory;
    const QString store = directory.filePath(QStringLiteral("runs.sqlite"));
    QCOMPARE(play(store).status, 0);
    const QStringList records{QStringLiteral("--records"), QStringLiteral("sqlite:") + store};
    const QStringList saved = run(records + QStringList{QStringLiteral("--json")}).out;
    const QString id = QJsonDocument::fromJson(saved.at(0).toUtf8()).object().value(QStringLiteral("id")).toString();
    const Result lines = panelhost(QStringList{QStringLiteral("run"), id, QStringLiteral("--journal")} + records);
    QCOMPARE(lines.status, 0);
    QFile file(directory.filePath(QStringLiteral("one.jsonl")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(lines.out.join(QLatin1Char('\n')).toUtf8() + '\n');
    file.close();
    const Result again = run({QStringLiteral("--json"), QStringLiteral("--from"), file.fileName()});
    QCOMPARE(again.status, 0);
    QCOMPARE(withoutAttempts(again.out), withoutAttempts(saved.mid(0, 1)));
    const Result all = panelhost(QStringList{QStringLiteral("run"), id} + records);
    QVERIFY(all.out.contains(QStringLiteral("    \"unit\": \"A1\",")));
    QCOMPARE(all.out.mid(all.out.size() - lines.out.size()), lines.out);
    const QString nobody = QStringLiteral("0d7f2a34-53b1-4b6c-9f4e-0c1d2e3f4a5b");
    QCOMPARE(panelhost(QStringList{QStringLiteral("run"), nobody} + records).err,
             QStringLiteral("panelhost: There is no run %1 in %2.\n").arg(nobody, store));
    QCOMPARE(panelhost(QStringList{QStringLiteral("run"), QStringLiteral("7")} + records).status, 2);
}

void RunsCommandTest::playSavesOnlyWhereItIsTold()
{
    QTemporaryDir home;
    const QString scenario = QStringLiteral(LCD_SOURCE_DIR "/scenarios/machine-fail-0.yaml");
    const QStringList played{QStringLiteral("play"), scenario};
    QCOMPARE(panelhost(played, {}, home.path()).status, 0);
    QCOMPARE(QDir(home.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    const QString store = home.filePath(QStringLiteral("line.sqlite"));
    QCOMPARE(panelhost(played, QStringLiteral("sqlite:") + store, home.path()).status, 0);
    QCOMPARE(run({QStringLiteral("--json"), QStringLiteral("--records"), QStringLiteral("sqlite:") + store}).out.size(),
             1);
    // Without a place, the runs of the user's data directory are printed.
    QVERIFY(QDir(home.path()).mkdir(QStringLiteral("panelhost")));
    QVERIFY(QFile::copy(store, home.filePath(QStringLiteral("panelhost/runs.sqlite"))));
    QCOMPARE(panelhost({QStringLiteral("runs"), QStringLiteral("--json")}, {}, home.path()).out.size(), 1);
}

void RunsCommandTest::aPlaceThatIsNone_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("none") << QStringLiteral("none")
                          << QStringLiteral("There are no run records: --records or PANELHOST_RECORDS is none.");
    QTest::newRow("other") << QStringLiteral("file")
                           << QStringLiteral("--records is \"file\", expected sqlite:FILE, "
                                             "postgresql://USER@HOST/DATABASE or none.");
    QTest::newRow("no file") << QStringLiteral("sqlite:")
                             << QStringLiteral("--records is \"sqlite:\", expected sqlite:FILE, "
                                               "postgresql://USER@HOST/DATABASE or none.");
    QTest::newRow("missing") << QStringLiteral("sqlite:/no/such/file")
                             << QStringLiteral("There are no run records at /no/such/file.");
}

void RunsCommandTest::aPlaceThatIsNone()
{
    QFETCH(QString, place);
    QFETCH(QString, sentence);
    const Result result = run({QStringLiteral("--records"), place});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.err, QStringLiteral("panelhost: %1\n").arg(sentence));
}

void RunsCommandTest::aDamagedFileIsLeftAsItIs()
{
    QTemporaryDir directory;
    const QString store = directory.filePath(QStringLiteral("runs.sqlite"));
    const QString next = directory.filePath(QStringLiteral("runs-2.sqlite"));
    QFile file(store);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("hello");
    file.close();
    const Result played = play(store);
    QCOMPARE(played.status, 0);
    QCOMPARE(played.err,
             QStringLiteral("panelhost: %1 is damaged, or no file of run records. It is left as it is; runs "
                            "are saved to %2.\n")
                 .arg(store, next));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("hello"));
    QCOMPARE(run({QStringLiteral("--json"), QStringLiteral("--records"), QStringLiteral("sqlite:") + next}).out.size(),
             4);
    QCOMPARE(run({QStringLiteral("--records"), QStringLiteral("sqlite:") + store}).status, 2);
}

// The runs of the file that is handed over began before 2027.
static QString oldRuns(const QTemporaryDir &directory)
{
    const QString path = directory.filePath(QStringLiteral("runs.sqlite"));
    QFile::copy(QStringLiteral(LCD_SOURCE_DIR "/tests/records/data/schema-1.sqlite"), path);
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return path;
}

static QStringList pruneArguments(const QString &store, const QString &archive)
{
    return {QStringLiteral("prune"), QStringLiteral("--records"), QStringLiteral("sqlite:") + store,
            QStringLiteral("--archive"), archive};
}

void RunsCommandTest::oldRunsAreCopiedAndDeleted()
{
    QTemporaryDir directory;
    const QString store = oldRuns(directory);
    const QString archive = directory.filePath(QStringLiteral("old.sqlite"));
    // The unit's runs began a hundred years before: they are moved in time, so that only they are old.
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("old"));
        database.setDatabaseName(store);
        QVERIFY(database.open());
        QVERIFY(QSqlQuery(database).exec(
            QStringLiteral("UPDATE run SET begin = '1990' || substr(begin, 5) WHERE kind <> 'machine'")));
        QVERIFY(QSqlQuery(database).exec(
            QStringLiteral("UPDATE run SET begin = '2999' || substr(begin, 5) WHERE kind = 'machine'")));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("old"));
    const QStringList json{QStringLiteral("--json"), QStringLiteral("--records")};
    const QStringList before = run(json + QStringList{QStringLiteral("sqlite:") + store}).out;
    QCOMPARE(before.size(), 7);
    const QStringList options{QStringLiteral("--older-than"), QStringLiteral("5y"), QStringLiteral("--yes")};
    const Result none = panelhost(pruneArguments(store, archive) + options
                                  + QStringList{QStringLiteral("--unit"), QStringLiteral("B2")});
    QCOMPARE(none.out, QStringList{QStringLiteral("There are no such runs.")});
    QVERIFY(!QFile::exists(archive));

    const Result pruned = panelhost(pruneArguments(store, archive) + options);
    QCOMPARE(pruned.err, QString());
    QCOMPARE(pruned.out, QStringList{QStringLiteral("Deleted 2 runs; copies are in %1.").arg(archive)});
    const QStringList left = run(json + QStringList{QStringLiteral("sqlite:") + store}).out;
    const QStringList archived = run(json + QStringList{QStringLiteral("sqlite:") + archive}).out;
    QCOMPARE(left.size(), 5);
    QCOMPARE(archived.size(), 2);
    QStringList both = left + archived;
    both.sort();
    QStringList sorted = before;
    sorted.sort();
    QCOMPARE(both, sorted);
    const QString id =
        QJsonDocument::fromJson(archived.first().toUtf8()).object().value(QStringLiteral("id")).toString();
    const Result journal = panelhost({QStringLiteral("run"), id, QStringLiteral("--journal"),
                                      QStringLiteral("--records"), QStringLiteral("sqlite:") + archive});
    QVERIFY(journal.out.size() > 20);
    QCOMPARE(QDir(directory.path()).entryList({QStringLiteral("old*")}, QDir::Files),
             QStringList{QStringLiteral("old.sqlite")});

    const Result again = panelhost(pruneArguments(store, archive) + options);
    QCOMPARE(again.out, QStringList{QStringLiteral("There are no such runs.")});
}

// There is no terminal.
void RunsCommandTest::nothingIsDeletedWithoutAnAnswer()
{
    QTemporaryDir directory;
    const QString store = oldRuns(directory);
    const QString archive = directory.filePath(QStringLiteral("old.sqlite"));
    QVERIFY(QFile::copy(store, directory.filePath(QStringLiteral("copy.sqlite"))));
    const auto runsOfAll = [&store] {
        return run({QStringLiteral("--json"), QStringLiteral("--records"), QStringLiteral("sqlite:") + store}).out;
    };
    const QStringList before = runsOfAll();
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("old"));
        database.setDatabaseName(store);
        QVERIFY(database.open());
        QVERIFY(QSqlQuery(database).exec(QStringLiteral("UPDATE run SET begin = '1990' || substr(begin, 5)")));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("old"));
    const QStringList arguments =
        pruneArguments(store, archive) + QStringList{QStringLiteral("--older-than"), QStringLiteral("30d")};
    const Result refused = panelhost(arguments);
    QCOMPARE(refused.status, 2);
    QCOMPARE(refused.err,
             QStringLiteral("panelhost: Nothing was deleted: the standard input is no terminal. Give --yes to delete "
                            "without being asked.\n"));
    QVERIFY(!QFile::exists(archive));
    QCOMPARE(runsOfAll().size(), before.size());

    // With a terminal: script gives it one.
    const auto answer = [&arguments](const QByteArray &text) {
        QProcess process;
        process.start(QStringLiteral("script"),
                      {QStringLiteral("-qec"), QStringLiteral(PANELHOST " ") + arguments.join(QLatin1Char(' ')),
                       QStringLiteral("/dev/null")});
        process.write(text);
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardOutput());
    };
    QVERIFY(answer("n\n").contains(QStringLiteral("Nothing was deleted.")));
    QCOMPARE(runsOfAll().size(), before.size());
    const QString yes = answer("y\n");
    QVERIFY2(yes.contains(QStringLiteral("7 runs in %1 began before ").arg(store)), qPrintable(yes));
    QVERIFY2(yes.contains(QStringLiteral("Deleted 7 runs")), qPrintable(yes));
    QCOMPARE(runsOfAll(), QStringList());
}

void RunsCommandTest::nothingIsDeletedWithoutItsCopy()
{
    QTemporaryDir directory;
    const QString store = oldRuns(directory);
    const QStringList options{QStringLiteral("--older-than"), QStringLiteral("1d"), QStringLiteral("--yes")};
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("old"));
        database.setDatabaseName(store);
        QVERIFY(database.open());
        QVERIFY(QSqlQuery(database).exec(QStringLiteral("UPDATE run SET begin = '1990' || substr(begin, 5)")));
    }
    QSqlDatabase::removeDatabase(QStringLiteral("old"));
    const QString existing = directory.filePath(QStringLiteral("existing"));
    QFile file(existing);
    QVERIFY(file.open(QIODevice::WriteOnly));
    const Result exists = panelhost(pruneArguments(store, existing) + options);
    QCOMPARE(exists.status, 2);
    QCOMPARE(exists.err, QStringLiteral("panelhost: %1 exists; give a new file for the copies.\n").arg(existing));
    QCOMPARE(panelhost(pruneArguments(store, existing + QStringLiteral("/old.sqlite")) + options).status, 2);
    QCOMPARE(panelhost(pruneArguments(store, QStringLiteral("/dev/full/old.sqlite")) + options).status, 2);
    QCOMPARE(run({QStringLiteral("--json"), QStringLiteral("--records"), QStringLiteral("sqlite:") + store}).out.size(),
             7);
}

void RunsCommandTest::wrongValuesOfPrune_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("sentence");
    const QString age = QStringLiteral("--older-than is \"%1\", expected an age such as 5y, 6m, 10w or 30d.");
    for (const char *wrong : {"5", "y", "0y", "-1y", "5 years", "999999d"})
        QTest::newRow(wrong) << QStringList{QStringLiteral("--older-than=") + QLatin1String(wrong),
                                            QStringLiteral("--archive"), QStringLiteral("x")}
                             << age.arg(QLatin1String(wrong));
    QTest::newRow("no age") << QStringList{QStringLiteral("--archive"), QStringLiteral("x")}
                            << QStringLiteral("Give --older-than AGE, such as 5y.");
    QTest::newRow("no archive") << QStringList{QStringLiteral("--older-than"), QStringLiteral("5y")}
                                << QStringLiteral(
                                       "Give --archive FILE, a new file for copies of the runs that are deleted.");
}

void RunsCommandTest::wrongValuesOfPrune()
{
    QFETCH(QStringList, options);
    QFETCH(QString, sentence);
    const Result result = panelhost(QStringList{QStringLiteral("prune")} + options);
    QCOMPARE(result.status, 2);
    QCOMPARE(result.err, QStringLiteral("panelhost: %1\n").arg(sentence));
}

QTEST_GUILESS_MAIN(RunsCommandTest)

#include "tst_runscommand.moc"
