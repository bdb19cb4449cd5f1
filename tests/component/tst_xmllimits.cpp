#include "emulation.h"
#include "factorymenuconfigparser.h"
#include "menufixture.h"

#include <QtTest/QtTest>

#include <pthread.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

using namespace LCD::FactoryModeImpl;

// Hostile files, each read in a process of its own and on a thread with a small stack.

namespace {

constexpr int StackBytes = 256 * 1024;
// A sanitizer needs much more memory.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr long MemoryKib = 4 * 1024 * 1024;
#else
constexpr long MemoryKib = 64 * 1024;
#endif
// Limits of processor time, in times of an ordinary document: it takes longer if the component is built without
// optimization, with a sanitizer or with counters, and so does a hostile one. Without the component's limits a hostile
// document would take thousands of times.
constexpr double HostileTimes = 40;
constexpr double CostliestTimes = 120;

double ordinary = 0; // seconds of processor time for an ordinary document

struct Attempt
{
    std::function<bool(QList<FactoryMenuLevel1Item> &)> load;
    bool loaded = false;
    bool kept = false;
    QStringList warnings;
    double seconds = 0;
    long grownKib = 0;
};

long peakKib()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

// Returns the processor time of this thread, which doesn't depend on the load of the machine.
double threadSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

void *runAttempt(void *argument)
{
    auto &attempt = *static_cast<Attempt *>(argument);
    FactoryMenuLevel1Item earlier;
    earlier.key = QStringLiteral("earlier");
    QList<FactoryMenuLevel1Item> items{earlier};
    const LogCapture log;
    const long before = peakKib();
    const double start = threadSeconds();
    attempt.loaded = attempt.load(items);
    attempt.seconds = threadSeconds() - start;
    attempt.grownKib = peakKib() - before;
    attempt.kept = items.count() == 1 && items.first().key == earlier.key;
    attempt.warnings = log.warnings();
    return nullptr;
}

void onSmallStack(Attempt &attempt)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, StackBytes);
    pthread_t thread{};
    if (pthread_create(&thread, &attributes, runAttempt, &attempt) == 0)
        pthread_join(thread, nullptr);
}

/// Returns the shortest time that a document with a mebibyte of text has taken.
double ordinarySeconds()
{
    const QByteArray document = "<LCD><MenuBar><MenuItem/></MenuBar>" + QByteArray(1024 * 1024, 'x') + "</LCD>";
    double shortest = 3600;
    for (int i = 0; i < 5; ++i) {
        Attempt attempt;
        attempt.load = [&document](QList<FactoryMenuLevel1Item> &items) {
            return FactoryMenuConfigParser().parseDocument(document, QStringLiteral("path"), items);
        };
        onSmallStack(attempt);
        shortest = std::min(shortest, attempt.seconds);
    }
    return shortest;
}

// A bit for each thing that is wrong.
int faultsOf(Attempt &attempt, double times)
{
    onSmallStack(attempt);
    const bool warned = attempt.warnings.count() == 1
        && attempt.warnings.constFirst().startsWith(
            QStringLiteral("[FactoryMenuConfigParser] Failed to parse XML: \""));
    fprintf(stderr, "%.3f s, %.1f times, %ld KiB: %s\n", attempt.seconds, attempt.seconds / ordinary, attempt.grownKib,
            qPrintable(attempt.warnings.join(QLatin1Char(';')).left(300)));
    return (attempt.loaded ? 1 : 0) | (attempt.kept ? 0 : 2) | (warned ? 0 : 4) | (attempt.grownKib < MemoryKib ? 0 : 8)
        | (attempt.seconds < times * ordinary ? 0 : 16);
}

/// Returns 0 if @p load refuses its file at low cost and keeps the list unchanged, and -1 if it crashes.
int refusedInChild(const std::function<bool(QList<FactoryMenuLevel1Item> &)> &load, double times = HostileTimes)
{
    Attempt attempt;
    attempt.load = load;
    if (isEmulated())
        return faultsOf(attempt, times);
    const pid_t child = fork();
    if (child == 0)
        _exit(faultsOf(attempt, times));
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

QByteArray repeated(int count, const QByteArray &text)
{
    return text.repeated(count);
}

QByteArray numbered(int count, const QByteArray &before, const QByteArray &after)
{
    QByteArray all;
    for (int i = 0; i < count; ++i)
        all += before + QByteArray::number(i) + after;
    return all;
}

QByteArray withEntities(const QByteArray &declarations, const QByteArray &content)
{
    return "<!DOCTYPE LCD [" + declarations + "]><LCD>" + content + "</LCD>";
}

QByteArray encoded(const char *codec, const QByteArray &text)
{
    return QTextCodec::codecForName(codec)->fromUnicode(QString::fromUtf8(text));
}

}

class tst_XmlLimits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { ordinary = ordinarySeconds(); }

    void hostileDocuments_data()
    {
        QTest::addColumn<QByteArray>("document");
        const QByteArray deep = repeated(100000, "<LCD>") + repeated(100000, "</LCD>");
        const QByteArray longEntity = "<!ENTITY e '" + QByteArray(4000, 'x') + "'>";
        QTest::newRow("100,000 levels") << deep;
        QTest::newRow("100,000 levels, UTF-16") << encoded("UTF-16", deep);
        QTest::newRow("100,000 levels, UTF-32") << encoded("UTF-32", deep);
        QTest::newRow("100,000 levels, UTF-7")
            << QByteArray("<?xml version='1.0' encoding='UTF-7'?>") + QByteArray(deep).replace("<", "+ADw-");
        QTest::newRow("only opened") << repeated(100000, "<a>");
        QTest::newRow("deep brackets") << withEntities("<!ELEMENT a " + QByteArray(100000, '(') + ">", "");
        QTest::newRow("entity many times") << withEntities(longEntity, repeated(100000, "&e;"));
        QTest::newRow("entity many times, with a name like others")
            << withEntities("<!ENTITY eX-.a ''><!ENTITY eX-.b '" + QByteArray(4000, 'x') + "'><!ENTITY eX-.c ''>",
                            repeated(100000, "&eX-.b;"));
        QTest::newRow("entity many times in an attribute")
            << withEntities(longEntity, "<a b='" + repeated(100000, "&e;") + "'/>");
        QTest::newRow("entity many times in a default")
            << withEntities(longEntity + "<!ATTLIST a b CDATA '" + repeated(100000, "&e;") + "'>", "");
        QTest::newRow("entities within entities") << withEntities(
            "<!ENTITY a 'xxxxxxxxxx'>"
                + QByteArray("<!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'>"
                             "<!ENTITY c '&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;'><!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;'>"
                             "<!ENTITY e '&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;'>"),
            repeated(1000, "&e;"));
        QTest::newRow("entity of itself") << withEntities("<!ENTITY a '&a;&a;'>", "&a;");
        QTest::newRow("parameter entity many times")
            << withEntities("<!ENTITY % p '" + QByteArray(4000, ' ') + "'>" + repeated(100000, "%p;"), "");
        QTest::newRow("depth out of entities")
            << withEntities("<!ENTITY e '" + repeated(100, "<a>") + "'>", repeated(1000, "&e;"));
        QTest::newRow("depth out of numbered characters")
            << withEntities("<!ENTITY e '" + repeated(100, "&#60;a>") + "'>", repeated(1000, "&e;"));
        QTest::newRow("elements out of entities")
            << withEntities("<!ENTITY e '" + repeated(100, "<a/>") + "'>", repeated(100000, "&e;"));
        QTest::newRow("entities without end") << withEntities(numbered(100000, "<!ENTITY e", " 'x'>"), "");
        QTest::newRow("millions of elements") << "<LCD>" + repeated(3000000, "<a/>") + "</LCD>";
        QTest::newRow("a million elements") << "<LCD>" + repeated(1000000, "<a/>") + "</LCD>";
        QTest::newRow("a million elements, cut") << "<LCD>" + repeated(1000000, "<a/>");
        QTest::newRow("millions of attributes") << "<LCD " + numbered(2000000, "a", "='' ") + "/>";
        QTest::newRow("100,000 attributes") << "<LCD " + numbered(100000, "a", "='' ") + "/>";
        QTest::newRow("elements with attributes") << "<LCD>" + repeated(300000, "<a b=''/>") + "</LCD>";
        QTest::newRow("prefixes") << "<LCD" + numbered(3000, " xmlns:n", "='u'") + ">"
                + repeated(1000, "<a xmlns:x='u'/>") + "</LCD>";
        QTest::newRow("comments") << "<LCD>" + repeated(500000, "<!---->") + "</LCD>";
        QTest::newRow("quotes across an entity")
            << withEntities("<!ENTITY q '<a b=\"'>", "&q;\"/>" + repeated(100000, "<a>"));
        QTest::newRow("attributes with long names")
            << "<LCD" + numbered(1500, " " + QByteArray(1000, 'a'), "=''") + "/>";
        QTest::newRow("tags with many attributes")
            << "<LCD>" + repeated(60, "<a" + numbered(1000, " a", "=''") + "/>") + "</LCD>";
        QTest::newRow("prefixes with long names")
            << "<LCD" + numbered(10, " xmlns:" + QByteArray(10000, 'n'), "='u'") + ">" + repeated(30000, "<a/>");
        QTest::newRow("prefixes below one another")
            << repeated(500, "<a" + numbered(20, " xmlns:n", "='u'") + ">") + repeated(100000, "<a/>");
        QTest::newRow("prefix out of an entity") << withEntities(
            "<!ENTITY e '<a xm'>", "&e;lns:b=''" + numbered(3000, " xmlns:n", "='u'") + ">" + repeated(1000, "<a/>"));
        QTest::newRow("entities with long names")
            << withEntities(numbered(1500, "<!ENTITY " + QByteArray(1000, 'e'), " 'x'>"), "");
        QTest::newRow("entities and a long one") << withEntities(
            numbered(900, "<!ENTITY e", " 'x'>") + "<!ENTITY e '" + repeated(100000, "&e1;y") + "'>", "");
        QTest::newRow("a chain of entities") << withEntities(
            [] {
                QByteArray chain;
                for (int i = 0; i < 800; ++i)
                    chain += "<!ENTITY e" + QByteArray::number(i) + " '&e" + QByteArray::number(i + 1) + ";'>";
                return chain;
            }(),
            repeated(100000, "&e0;"));
        QTest::newRow("empty entity") << withEntities("<!ENTITY e ''>", repeated(500000, "&e;"));
        QTest::newRow("empty parameter entity") << withEntities("<!ENTITY % e ''>" + repeated(500000, "%e;"), "");
        QTest::newRow("parameter entity of a predefined name")
            << withEntities("<!ENTITY % lt \"<!ENTITY e '" + repeated(100, "<a>") + "'>\">%lt;", repeated(100, "&e;"));
        QTest::newRow("brackets out of an entity") << withEntities(
            "<!ENTITY % p '" + QByteArray(4000, '(') + "'><!ELEMENT a " + repeated(1000, "%p;") + ">", "");
        QTest::newRow("depth behind a comment's dash") << "<LCD>" + repeated(10000, "<a><!---></a>-->");
        QTest::newRow("depth behind a bracket in a section") << "<LCD>" + repeated(10000, "<a><![CDATA[]></a>]]>");
        QTest::newRow("depth behind a quote in an entity")
            << withEntities("<!ENTITY q \"'/>\">", repeated(10000, "<a b='&q;</a>'>"));
        QTest::newRow("names of a declaration") << withEntities("<!ELEMENT a " + repeated(900000, "b ") + ">", "");
        QTest::newRow("names of a tag") << "<LCD " + repeated(1000000, "x ") + ">";
        QTest::newRow("notations") << withEntities(numbered(100000, "<!NOTATION a", " SYSTEM ''>"), "");
        QTest::newRow("external entities") << withEntities(numbered(80000, "<!ENTITY a", " SYSTEM ''>"), "");
        QTest::newRow("instructions") << "<LCD>" + repeated(400000, "<?a?>") + "</LCD>";
        QTest::newRow("undeclared entities") << "<LCD>" + repeated(600000, "&x;") + "</LCD>";
        QTest::newRow("two mebibytes of a name") << "<" + QByteArray(2000000, 'x');
        for (const char *codec : {"UTF-8", "UTF-16", "UTF-7", "SCSU", "GB18030", "ISO-2022-JP", "Shift_JIS"})
            QTest::newRow(codec) << "<?xml version='1.0' encoding='" + QByteArray(codec) + "'?><LCD>"
                    + QByteArray(4100000, '\xa4');
        QTest::newRow("half a file") << QByteArray("<LCD version=\"1.0\"><MenuBar><MenuItem Key=\"em.fac");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("zeros") << QByteArray(100000, '\0');
        QByteArray noise;
        for (quint32 state = 1; noise.size() < 1000000;) {
            state = state * 1664525U + 1013904223U;
            noise += static_cast<char>(state >> 24U);
        }
        QTest::newRow("noise") << noise;
    }
    void hostileDocuments()
    {
        QFETCH(QByteArray, document);
        QCOMPARE(refusedInChild([&document](QList<FactoryMenuLevel1Item> &items) {
                     return FactoryMenuConfigParser().parseDocument(document, QStringLiteral("path"), items);
                 }),
                 0);
    }

    // Documents that use the limits as far as possible and have an error at the end. Refusing them takes the parser as
    // long as parsing a valid document of the same size.
    void costliestDocuments_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::newRow("elements") << "<LCD>" + repeated(130000, "<a/>") + QByteArray(1500000, 'x');
        QTest::newRow("elements with an attribute")
            << "<LCD>" + repeated(32000, "<a b=''/>") + QByteArray(1700000, 'x');
        QTest::newRow("elements and text") << "<LCD>" + repeated(65000, "<a/>x") + QByteArray(1700000, 'x');
        QTest::newRow("elements in scope of prefixes")
            << "<LCD" + numbered(4, " xmlns:n", "='u'") + ">" + repeated(110000, "<a/>");
        QTest::newRow("elements with prefixes") << "<LCD>" + repeated(16000, "<x:a xmlns:x='u' x:b=''/>");
        QTest::newRow("nested elements") << "<LCD>" + repeated(250, repeated(500, "<a>") + repeated(500, "</a>"));
        QTest::newRow("attributes") << "<LCD" + numbered(1400, " a", "=''");
        QTest::newRow("entities") << withEntities(numbered(850, "<!ENTITY e", " 'x'>"), "<a>");
        QTest::newRow("entity in text") << withEntities("<!ENTITY e '" + QByteArray(4000, 'x') + "'>",
                                                        repeated(500, "&e;") + "<a>");
        QTest::newRow("predefined characters") << "<LCD>" + repeated(500000, "&lt;");
        QTest::newRow("512 levels of depth") << repeated(512, "<a>");
    }
    void costliestDocuments()
    {
        QFETCH(QByteArray, document);
        QCOMPARE(refusedInChild(
                     [&document](QList<FactoryMenuLevel1Item> &items) {
                         return FactoryMenuConfigParser().parseDocument(document, QStringLiteral("path"), items);
                     },
                     CostliestTimes),
                 0);
    }

    void hostileFiles_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("FIFO") << m_dir.filePath(QStringLiteral("fifo"));
        QTest::newRow("gigabyte") << m_dir.filePath(QStringLiteral("gigabyte"));
        QTest::newRow("endless device") << QStringLiteral("/dev/zero");
        QTest::newRow("empty device") << QStringLiteral("/dev/null");
    }
    void hostileFiles()
    {
        QFETCH(QString, path);
        mkfifo(QFile::encodeName(m_dir.filePath(QStringLiteral("fifo"))).constData(), 0600);
        QFile gigabyte(m_dir.filePath(QStringLiteral("gigabyte")));
        QVERIFY(gigabyte.open(QIODevice::WriteOnly) && gigabyte.resize(qint64(1) << 30));
        QCOMPARE(refusedInChild([&path](QList<FactoryMenuLevel1Item> &items) {
                     return FactoryMenuConfigParser().loadFromFile(path, items);
                 }),
                 0);
    }
    void directoryCannotBeOpened()
    {
        QList<FactoryMenuLevel1Item> items;
        const LogCapture log;
        QVERIFY(!FactoryMenuConfigParser().loadFromFile(m_dir.path(), items));
        QVERIFY(log.warnings().constFirst().startsWith(
            QStringLiteral("[FactoryMenuConfigParser] Failed to open config file: \"%1\" Error: ").arg(m_dir.path())));
    }
    void externalEntitiesAreNotRead()
    {
        QTemporaryFile secret;
        QVERIFY(secret.open());
        secret.write("secret");
        secret.close();
        QList<FactoryMenuLevel1Item> items;
        const QByteArray document = "<!DOCTYPE LCD [<!ENTITY s SYSTEM 'file://" + secret.fileName().toUtf8()
            + "'>]><LCD><MenuBar><MenuItem Key='a&s;b'/>&s;</MenuBar></LCD>";
        FactoryMenuConfigParser().parseDocument(document, QString(), items);
        for (const FactoryMenuLevel1Item &item : qAsConst(items))
            QVERIFY(!item.key.contains(QStringLiteral("secret")));
    }

    // In this process, so that a debugger and the counters of the branches see them.
    void whereTheLimitIsReached_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QString>("reason");
        const QString levels = QStringLiteral("the document needs more than 512 levels");
        const QString characters = QStringLiteral("the document needs more than 2097152 characters");
        const QString nodes = QStringLiteral("the document needs more than 131072 nodes");
        QTest::newRow("hexadecimal characters")
            << withEntities("<!ENTITY e '" + repeated(10, "&#x3C;a>") + "'>", repeated(60, "&e;")) << levels;
        QTest::newRow("decimal characters")
            << withEntities("<!ENTITY e '" + repeated(10, "&#60;a>") + "'>", repeated(60, "&e;")) << levels;
        QTest::newRow("a text that is too long") << "<LCD>" + QByteArray(2500000, 'x') << characters;
        QTest::newRow("a text in an entity")
            << withEntities("<!ENTITY e '" + QByteArray(40000, 'x') + "'>", repeated(60, "&e;")) << characters;
        QTest::newRow("brackets that stay open, within the limit")
            << withEntities(repeated(600, "<!ELEMENT a (>"), "")
            << QStringLiteral("\"unexpected character\" at line 1 column 29");
        QTest::newRow("references that don't end, within the limit")
            << "<LCD>" + repeated(70000, "&x ")
            << QStringLiteral("\"error occurred while parsing reference\" at line 1 column 8");
        QTest::newRow("brackets that close nothing")
            << withEntities("<!ELEMENT a )))>" + repeated(50000, "<!-x>"), "") << nodes;
    }
    void whereTheLimitIsReached()
    {
        QFETCH(const QByteArray, document);
        QFETCH(const QString, reason);
        QList<FactoryMenuLevel1Item> items;
        const LogCapture log;
        QVERIFY(!FactoryMenuConfigParser().parseDocument(document, QStringLiteral("path"), items));
        QCOMPARE(log.warnings().size(), 1);
        QVERIFY2(log.warnings().constFirst().contains(reason), qPrintable(log.warnings().constFirst()));
    }

    // 1024 attributes and 16384 characters, at 16 Mi comparisons.
    void theLastComparisonIsAllowed_data()
    {
        QTest::addColumn<int>("sizeOfTag");
        QTest::addColumn<QString>("error");
        QTest::newRow("at the limit") << 1023 << QStringLiteral("Root element is not LCD");
        QTest::newRow("beyond it") << 1024
                                   << QStringLiteral(
                                          "\"the document needs more than 16777216 comparisons of names\" at line 1");
    }
    void theLastComparisonIsAllowed()
    {
        QFETCH(const int, sizeOfTag);
        QFETCH(const QString, error);
        QByteArray document = "<" + QByteArray(sizeOfTag, 'a');
        for (int i = 0; i < 1024; ++i)
            document += " a" + QByteArray::number(i).rightJustified(12, '0') + "=''";
        QList<FactoryMenuLevel1Item> items;
        const LogCapture log;
        QVERIFY(!FactoryMenuConfigParser().parseDocument(document + "/>", QStringLiteral("path"), items));
        QCOMPARE(log.warnings().size(), 1);
        QVERIFY2(log.warnings().constFirst().contains(error), qPrintable(log.warnings().constFirst().left(300)));
    }

    void ordinaryDocuments_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("500 levels") << repeated(500, "<a>") + repeated(500, "</a>");
        QTest::newRow("512 levels") << repeated(511, "<a>") + repeated(511, "</a>");
        QTest::newRow("a mebibyte of items") << repeated(31000, "<MenuItem Key='em.factorytest.X'/>");
        QTest::newRow("a mebibyte of text") << QByteArray(1024 * 1024, 'x');
        QTest::newRow("a mebibyte of comment") << "<!--" + QByteArray(1024 * 1024, '<') + "-->";
        QTest::newRow("brackets in character data") << "<![CDATA[" + repeated(100000, "<a>&x;") + "]]>";
        QTest::newRow("brackets in an instruction") << "<?x " + repeated(100000, "<a>") + "?>";
        QTest::newRow("brackets in a value") << "<a b=\"" + repeated(100000, "'/>") + "\"/>";
        QTest::newRow("siblings") << repeated(50000, "<a></a>") + repeated(50000, "<a/>");
        QTest::newRow("1000 attributes") << "<a" + numbered(1000, " a", "='x'") + "/>";
    }
    void ordinaryDocuments()
    {
        QFETCH(QByteArray, content);
        const QByteArray document = "<LCD><MenuBar><MenuItem/></MenuBar>" + content + "</LCD>";
        Attempt attempt;
        attempt.load = [&document](QList<FactoryMenuLevel1Item> &items) {
            return FactoryMenuConfigParser().parseDocument(document, QStringLiteral("path"), items);
        };
        onSmallStack(attempt);
        QCOMPARE(attempt.warnings, QStringList());
        QVERIFY(attempt.loaded);
    }

private:
    QTemporaryDir m_dir;
};

QTEST_GUILESS_MAIN(tst_XmlLimits)
#include "tst_xmllimits.moc"
