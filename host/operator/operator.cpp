#include "operator/operator.h"

#include "operator/preparedaction.h"
#include "session/session.h"

namespace panelhost {

Operator::Operator(Session &session) : m_session(session)
{
}

bool Operator::perform(const OperatorAction &action, QString *error)
{
    const PreparedAction prepared = prepareAction(m_session, action);
    if (!prepared.run) {
        if (error)
            *error = prepared.error;
        return false;
    }
    const Milliseconds at = m_session.clock().now();
    m_session.journal().add(Journal::Kind::Action, actionName(action.kind),
                            QJsonObject::fromVariantMap(prepared.action.arguments));
    prepared.run();
    m_session.clock().settle();
    Q_EMIT performed(prepared.action, at);
    return true;
}

}
