#include "records/runextractor.h"

#include "records/agingtestruns.h"
#include "records/machinetestruns.h"
#include "records/repairpageruns.h"

namespace panelhost {

namespace {

/// One session with the runs of each kind.
struct RunsByKind
{
    RunsByKind(const SessionInfo &info, const RunExtractor::Listener &listener)
        : session(info, listener), machine(session), aging(session), repair(session)
    {
    }

    // A run belongs to one unit: the next unit ends what is still open.
    void add(const Journal::Entry &entry)
    {
        session.add(entry);
        if (entry.kind == Journal::Kind::Action && entry.name == QLatin1String("unit"))
            end();
        machine.add(entry);
        aging.add(entry);
        repair.add(entry);
    }

    void end()
    {
        machine.endSession();
        aging.endSession();
        repair.endSession();
    }

    SessionState session;
    MachineTestRuns machine;
    AgingTestRuns aging;
    RepairPageRuns repair;
};

}

class RunExtractor::Impl
{
public:
    explicit Impl(const Listener &runListener) : listener(runListener) {}

    Listener listener;
    std::unique_ptr<RunsByKind> current;
};

RunExtractor::RunExtractor(const Listener &listener) : d(std::make_unique<Impl>(listener))
{
}

RunExtractor::~RunExtractor() = default;

void RunExtractor::beginSession(const SessionInfo &info)
{
    endSession();
    d->current = std::make_unique<RunsByKind>(info, d->listener);
}

void RunExtractor::add(const Journal::Entry &entry)
{
    if (!d->current || (entry.sequence == 1 && d->current->session.lineCount() > 0))
        beginSession({});
    d->current->add(entry);
}

void RunExtractor::endSession()
{
    if (d->current)
        d->current->end();
    d->current.reset();
}

}
