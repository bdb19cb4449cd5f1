#include "behaviorpage.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>

#include <algorithm>
#include <vector>

namespace {

/// The tests that cover one statement of the page.
struct Coverage
{
    const char *heading;
    /// Each as "topic/function", for a function in tests/component/tst_<topic>.cpp.
    std::vector<const char *> tests;
    /// The test of these that reads the table of the statement.
    const char *tableTest = nullptr;
};

const std::vector<Coverage> &coverage()
{
    // clang-format off
    static const std::vector<Coverage> all = {
        // Aging test
        {"A link change restarts a stopped test",
         {"agetestlinks/aLinkChangeRevivesAStoppedTest", "agetestlinks/aUsbChangeRevivesAStoppedTest",
          "agetestlinks/anotherStartAndStopDoesNotKeepATestFromBeingRevived",
          "agetestlinks/stoppedBeforeTheFirstNetStepItStaysStopped",
          "agetestlinks/beforeTheFirstNetStepNobodyListensToLinks",
          "agetestthreads/aResultFromAnotherThreadRevivesAStoppedTest",
          "agetestwidget/aLinkChangeRevivesTheTestOfAPageThatWasLeft"}},
        {"The test goes on to the next step when a link changes",
         {"agetestlinks/aLinkChangeEndsWhateverStepItMeets", "agetesttimeline/threeRounds"}},
        {"The net and USB steps wait without a time limit",
         {"agetestlinks/aPortStepWaitsForEver", "behavioraging/theUsbStepWaitsForEver",
          "agetestlinks/theReportSubscriptionIsNotHeard", "agetestbiz/stopAtEachStep",
          "agetestbiz/stopAtTheUsbStepTouchesNoPortTest"}},
        {"Either service can end a port step",
         {"agetestlinks/aNetChangeEndsTheUsbStep", "agetestlinks/aLinkChangeEndsWhateverStepItMeets",
          "behavioraging/beforeTheFirstUsbStepNobodyListensToUsbLinks"}},
        {"A failure is shown for one round",
         {"agetestlinks/oneDownPortFailsTheFamily", "agetestlinks/aFailureIsForgottenAtTheNextPass",
          "agetestlinks/twoFailuresInARowAreOne", "agetestbiztext/failuresStandInTheRedLine",
          "behavioraging/thePageDoesNotShowWhichPortFailed"}},
        {"An empty event can pass or fail",
         {"agetestlinks/anEmptyReportPasses", "behavioraging/anEmptyNetEventPassesAlsoWhenPortsWereSeen",
          "behavioraging/anEmptyUsbEventPassesWhileNoPortIsKnown",
          "behavioraging/anEmptyUsbEventFailsOnceAPortIsKnown",
          "behavioraging/aUsbEventFailsWithoutAPortThatIsKnown",
          "behavioraging/theUsbStepForgetsThePortsWhenItStarts"}},
        {"The red line is always there", {"behavioraging/everyUpdateWritesAWhiteAndARedLine"}},
        {"Recount only clears the recorded failures",
         {"agetestbiztext/recountForgetsTheFailuresAndWritesNoRedLine",
          "agetestbiztext/recountAtEachStepLeavesTheStepAlone", "agetestbiztext/recountAtAPortStepLeavesItWaiting",
          "agetestwidget/leftRecountsWhileTheTestRuns"}},
        {"The percentage differs between rounds",
         {"agetestbiztext/theFirstRoundNamesTheLevelFromTheStart", "agetesttimeline/threeRounds",
          "agetestbiztext/laterRoundsNameNoLevelUntilTheFirstTick",
          "agetestbiztext/afterAStopTheFirstLineNamesTenPercentAgain",
          "agetestlinks/aStepThatWasCutShortShowsItsLevelAtTheNextStart",
          "behavioraging/aKeyLightStepThatWasCutShortShowsItsLevelAtTheNextStart"}},
        {"The pattern step doesn't update its line", {"agetestbiztext/noTickOfTheBadPixelStepWrites"}},
        {"Stopping restores the screens but not the key LEDs", {"agetestbiz/stopAtEachStep"}},
        {"The page has no button after a stop",
         {"agetestwidget/rightAgainStopsWithoutAsking",
          "agetestwidget/backAfterTheStopLeadsToTheMenuAndANewEntryPreparesANewRun"}},
        {"Leaving the page doesn't stop the test",
         {"pagesinmenu/anAgingRunGoesOnWhenTheHostLeaves", "agetestwidget/backLeavesARunGoing"}},
        {"Back doesn't work on a page that is opened again during a run",
         {"pagesinmenu/backIsDeadOnTheAgingPageThatWasPreparedDuringARun", "agetestwidget/enteringLeavesARunGoing",
          "agetestwidget/aPageEnteredDuringARunStartsItAnew"}},
        {"A link change just before a start or a stop takes effect after it",
         {"agetestthreads/aQueuedResultRevivesTheTestThatIsBeingStopped",
          "agetestthreads/aQueuedResultEndsTheFirstStepOfTheNextRun"}},
        {"A port step can end during its subscription",
         {"agetestlinks/aServiceThatAnswersAtOnceNestsTheSteps"}},

        // Complete machine test
        {"A net report can pass or fail another phase",
         {"behaviortables/aNetReportInEachPhase", "behaviortables/everyKindOfNetReportDoesTheSame",
          "behaviortables/aNetReportInAFailedRunDoesTheSame",
          "completemachinesequence/aLatePassOfTheNetTestIsTakenByThePresentPhase",
          "completemachinesequence/aLateFailureOfTheNetTestFailsAnyPhase",
          "completemachinethreads/reportsFromAnotherThreadDoTheSame"},
         "behaviortables/aNetReportInEachPhase"},
        {"A net report can show the result before the test has started",
         {"completemachinelate/aNetReportBeforeTheStartOfALaterRunShowsTheVerdict",
          "completemachinelate/leftOnThatVerdictFailsOnce",
          "behaviormachine/aNetReportBeforeTheFirstStartOfTheNetTestIsNotHeard"}},
        {"A net report that passes the pattern phase leaves the pattern on the screens",
         {"behaviormachine/thePatternStaysOnTheScreensWhenANetReportPassesItsPhase"}},
        {"A link report covers the fail screen of its phase",
         {"completemachinelate/aNetReportPutsTheResultOverTheFailScreen",
          "completemachinelate/fromThereTheRightButtonLeadsOnWithTheRunFailed",
          "completemachinelate/fromThereTheLeftButtonTestsAgain",
          "completemachinelate/aUsbReportPutsTheResultOverTheFailScreen",
          "behaviormachine/aNetReportAfterAFailureBeforeTheStartAnnouncesNoFailure",
          "behaviormachine/aLinkReportCoversTheEntryScreenAfterAFailure"}},
        {"The log isn't cleared between runs", {"pagesinmenu/theLogKeepsTheLinesOfEarlierRuns"}},
        {"\"Test failed\" often appears twice",
         {"completemachinebuttons/leftFailsThePhase", "completemachinebuttons/leftWhileTheNetTestWaitsForAReport"}},
        {"A failed run stays in its phase and still counts as running",
         {"behaviortables/rightAfterAFailure", "behaviortables/aFailedRunStaysFailedUntilItEndsOnThePassScreen",
          "completemachinetestbiz/aFailedRunStaysOnItsPhase", "completemachinetestbiz/startAfterAFailureBeginsAgain",
          "completemachinebuttons/rightAfterAFailureByEyeGoesOnAndCanStillPass"},
         "behaviortables/rightAfterAFailure"},
        {"The T-Bar phase passes without a log line",
         {"completemachinetbar/theTBarPressByPress", "completemachinebuttons/aFailedCalibrationStillPassesThePhase",
          "completemachinesequence/laterPhasesStart"}},
        {"The T-Bar phase marks each line one press late",
         {"completemachinetbar/theTBarPressByPress", "completemachinetestwidget/theTBarMarksItsLinesAndKeepsThem"}},
        {"Any key ends the key walk at its last key", {"behaviormachine/anyKeyEndsTheWalkAtItsLastKey"}},
        {"Hal key 27 disables the left button",
         {"completemachinetestwidget/aPartialRecordChangesTheNoPassButtonAlone",
          "completemachinesequence/theKeyWalkTellsEachKey"}},
        {"A key event that is being delivered still counts after a failure",
         {"completemachinelate/aKeyEventOnItsWaySendsItsRecordBehindTheFailScreen",
          "pagesinmenu/aLateKeyBeforeTheNoPassKeyLeavesOnlyBackOnTheFailScreen",
          "completemachinelate/theLastKeyOnItsWayPutsTheVerdictOverTheFailScreen"}},
        {"The key walk continues after a net report has failed the run",
         {"behaviormachine/theWalkGoesOnAfterANetReportHasFailedTheRun",
          "behaviormachine/theLeftButtonStopsTheWalk"}},
        {"Brightness and key light pass without a log line", {"completemachinesequence/theLevelsRunByTheClock"}},
        {"The icon of a port phase doesn't decide the verdict",
         {"completemachinelinks/theVerdictIsTheOperatorsWhateverTheIcon"}},
        {"The net test checks only two ports, and the USB test checks all known ports",
         {"completemachinelinks/theNetResult", "completemachinelinks/theUsbResult",
          "behaviormachine/aKnownUsbPortThatAReportLacksIsDown"}},
        {"An empty report doesn't always show an icon",
         {"completemachinelinks/anEmptyReportLeavesTheScreen",
          "behaviormachine/anEmptyNetReportIsIgnoredAlsoWhenPortsWereSeen",
          "behaviormachine/anEmptyUsbReportShowsTheNoPassIconOnceAPortIsKnown"}},
        {"The USB test remembers links by position",
         {"usbporttestbiz/linkedOnceIsLinkedWhileTheListenerHearsTheReport",
          "usbporttestbiz/bitsStayAtTheirPlaceWhenAPortComesBefore"}},
        {"A report during the start of a port test can get lost",
         {"completemachinelinks/aNetReportDuringTheStartIsReplacedAtOnce",
          "completemachinelinks/aUsbReportDuringTheStartIsReplacedAtOnce",
          "behaviormachine/aNetReportFromAnotherThreadDuringTheStartShowsItsIcon",
          "behaviormachine/aUsbReportFromAnotherThreadDuringTheStartShowsItsIcon"}},
        {"Phase 8 is missing",
         {"completemachinesequence/theAdapterPhaseIsNeverSeen",
          "completemachinetestbiz/thePhasesComeInOrderWithoutTheEighth"}},
        {"The pass screen keeps the icon of the last phase",
         {"completemachinetestwidget/thePassScreenKeepsTheIconOfTheLastPhase",
          "completemachinetestwidget/leftDuringARunFailsIt"}},
        {"Back is ignored during a run",
         {"completemachinetestwidget/backLeavesWhenNoRunIsUnderWay",
          "completemachinetestwidget/comingBackAfterAPassShowsTheEntryScreen"}},
        {"The entry screen doesn't end a run",
         {"completemachinetestwidget/aPageEnteredDuringARunIsWrittenOverByTheClock",
          "completemachinetestwidget/aPageEnteredDuringTheKeyWalkKeepsItsKeysAndTheBlockedButton",
          "pagesinmenu/theLevelsWriteOverTheEntryScreenOfTheMachineTest",
          "pagesinmenu/theFrameIgnoresKeysOnTheEntryScreenDuringTheKeyWalk"}},
        {"An empty text keeps what is shown",
         {"behaviormachine/aScreenWithoutATextLeavesTheOneBefore",
          "behaviormachine/theIconOfANetPhaseIsSetBeforeItIsShown",
          "completemachinetestwidget/thePassScreenKeepsTheIconOfTheLastPhase"}},

        // Both tests
        {"Missing services are skipped",
         {"agetestbiz/withoutAnyServiceTheVisualStepsStillRun",
          "completemachinebuttons/missingPortServicesDoNotMakeTheRunWait",
          "behaviormachine/withoutPortServicesNoIconIsShown",
          "behaviormachine/withoutAKeyboardServiceTheWalkCanOnlyBeFailed",
          "completemachinebuttons/theTBarGoesOnWithoutACalibrationServiceNowhere"}},
        {"Texts are translated when they are written",
         {"agetestbiztext/aNewLanguageShowsAtTheNextUpdate", "completemachinesequence/aNewLanguageShowsOnTheNextScreen"}},
        {"Log lines are always in English",
         {"completemachinesequence/theTitleOfTheTBarIsNotTranslated",
          "completemachinesequence/aNewLanguageShowsOnTheNextScreen"}},
    };
    // clang-format on
    return all;
}

QString sourceDirectory()
{
    return QStringLiteral(LCD_SOURCE_DIR "/tests/component/");
}

QString readSource(const QString &name)
{
    QFile file(sourceDirectory() + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// Returns the test functions in @p name, without the functions for data rows and setup.
QStringList testFunctionsIn(const QString &name)
{
    static const QRegularExpression slot(QStringLiteral("^    void (\\w+)\\(\\)"), QRegularExpression::MultilineOption);
    QStringList result;
    QRegularExpressionMatchIterator match = slot.globalMatch(
        readSource(name).section(QStringLiteral("private Q_SLOTS:"), 1).section(QStringLiteral("\nprivate:"), 0, 0));
    while (match.hasNext()) {
        const QString function = match.next().captured(1);
        if (!function.endsWith(QStringLiteral("_data")) && !function.startsWith(QStringLiteral("init"))
            && !function.startsWith(QStringLiteral("cleanup")))
            result << function;
    }
    return result;
}

bool exists(const QString &test)
{
    const QString file = QStringLiteral("tst_%1.cpp").arg(test.section(QLatin1Char('/'), 0, 0));
    return testFunctionsIn(file).contains(test.section(QLatin1Char('/'), 1));
}

bool holds(const Coverage &statement, const QString &test)
{
    return std::any_of(statement.tests.begin(), statement.tests.end(),
                       [&](const char *name) { return test == QLatin1String(name); });
}

}

/// Checks that each statement and each table of docs/behavior.md has a test.
class BehaviorPageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void thePageConsistsOfStatements()
    {
        QVERIFY2(page.problems.isEmpty(), qPrintable(page.problems.join(QLatin1Char('\n'))));
        QVERIFY(!page.statements.empty());
    }

    void everyStatementHasItsTests()
    {
        QStringList covered;
        for (const Coverage &statement : coverage())
            covered << QString::fromUtf8(statement.heading);
        const QStringList headings = page.headings();
        for (const QString &heading : headings)
            QVERIFY2(covered.contains(heading), qPrintable(QStringLiteral("no test holds: ") + heading));
        for (const QString &heading : qAsConst(covered))
            QVERIFY2(headings.contains(heading), qPrintable(QStringLiteral("not on the page any more: ") + heading));
        QCOMPARE(covered, headings);
        for (const Coverage &statement : coverage())
            QVERIFY2(!statement.tests.empty(), statement.heading);
    }

    void everyTableIsReadByATest()
    {
        for (const Coverage &statement : coverage()) {
            const bool hasTable = !page.table(QString::fromUtf8(statement.heading)).isEmpty();
            QVERIFY2(hasTable == (statement.tableTest != nullptr), statement.heading);
            if (hasTable)
                QVERIFY2(holds(statement, QString::fromUtf8(statement.tableTest)), statement.heading);
        }
    }

    void everyTestExists()
    {
        for (const Coverage &statement : coverage()) {
            for (const char *test : statement.tests)
                QVERIFY2(exists(QString::fromUtf8(test)), test);
        }
    }

    void everyTestWrittenForThePageIsForAStatement()
    {
        for (const QString &topic :
             {QStringLiteral("behavioraging"), QStringLiteral("behaviormachine"), QStringLiteral("behaviortables")}) {
            const QStringList functions = testFunctionsIn(QStringLiteral("tst_%1.cpp").arg(topic));
            QVERIFY2(!functions.isEmpty(), qPrintable(topic));
            for (const QString &function : functions) {
                const QString test = topic + QLatin1Char('/') + function;
                QVERIFY2(std::any_of(coverage().begin(), coverage().end(),
                                     [&](const Coverage &statement) { return holds(statement, test); }),
                         qPrintable(test));
            }
        }
    }

private:
    const BehaviorPage page = readBehaviorPage();
};

QTEST_APPLESS_MAIN(BehaviorPageTest)
#include "tst_behaviorpage.moc"
