#include "operator/operator.h"

#include "operator/operatortarget.h"
#include "operator/preparedaction.h"

namespace panelhost {

Operator::Operator(OperatorTarget &target) : m_target(target)
{
}

bool Operator::perform(const OperatorAction &action, QString *error)
{
    const PreparedAction prepared = prepareAction(m_target, action);
    if (!prepared.perform) {
        if (error)
            *error = prepared.error;
        return false;
    }
    const Milliseconds at = m_target.clock().now();
    m_target.journal().add(Journal::Kind::Action, actionName(action.kind),
                           QJsonObject::fromVariantMap(prepared.action.arguments));
    prepared.perform();
    m_target.clock().settle();
    Q_EMIT performed(prepared.action, at);
    return true;
}

}
