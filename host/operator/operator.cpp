#include "operator/operator.h"

#include "operator/deed.h"
#include "session.h"

namespace panelhost {

Operator::Operator(Session &session) : m_session(session)
{
}

bool Operator::perform(const Action &action, QString *error)
{
    const Deed deed = prepareDeed(m_session, action);
    if (!deed.run) {
        if (error)
            *error = deed.error;
        return false;
    }
    const Milliseconds at = m_session.clock().now();
    m_session.journal().add(Journal::Kind::Action, actionName(action.kind),
                            QJsonObject::fromVariantMap(deed.action.arguments));
    deed.run();
    m_session.clock().settle();
    Q_EMIT performed(deed.action, at);
    return true;
}

}
