#include "records/runderiver.h"

#include "records/agingruns.h"
#include "records/machineruns.h"
#include "records/repairruns.h"

namespace panelhost {

namespace {

/// One session with the runs of each kind.
struct SessionRuns
{
    SessionRuns(const SessionInfo &info, const RunDeriver::Listener &listener)
        : session(info, listener), machine(session), aging(session), repair(session)
    {
    }

    void add(const Journal::Entry &entry)
    {
        session.add(entry);
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

    DerivedSession session;
    MachineRuns machine;
    AgingRuns aging;
    RepairRuns repair;
};

}

class RunDeriver::Impl
{
public:
    explicit Impl(const Listener &runListener) : listener(runListener) {}

    Listener listener;
    std::unique_ptr<SessionRuns> current;
};

RunDeriver::RunDeriver(const Listener &listener) : d(std::make_unique<Impl>(listener))
{
}

RunDeriver::~RunDeriver() = default;

void RunDeriver::beginSession(const SessionInfo &info)
{
    endSession();
    d->current = std::make_unique<SessionRuns>(info, d->listener);
}

void RunDeriver::add(const Journal::Entry &entry)
{
    if (!d->current || (entry.sequence == 1 && d->current->session.lineCount() > 0))
        beginSession({});
    d->current->add(entry);
}

void RunDeriver::endSession()
{
    if (d->current)
        d->current->end();
    d->current.reset();
}

}
